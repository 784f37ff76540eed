#include "TEXPRESSCAL/direct/direct_evaluator.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <span>

#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "TEXPRESSCAL/arithmetic/square_root.h"
#include "TEXPRESSCAL/evaluate/number_functions.h"
#include "TEXPRESSCAL/evaluate/number_rules.h"
#include "TEXPRESSCAL/function_table.h"
#include "TEXPRESSCAL/language/formula_number.h"
#include "TEXPRESSCAL/language/operators.h"
#include "TEXPRESSCAL/text/replace_rule.h"
#include "TEXPRESSCAL/values/substitution.h"
#include "TEXPRESSCAL/values/value_reading.h"

// The direct evaluation: one walk over the text, names looked up as they come. It is used for a formula that
// a calculator has for the first time. Equal to the text way by refusing: each rule covers the clear case
// only, and whatever may be anything else ends the walk, after which nothing has changed.

namespace lorv {
namespace {

constexpr std::size_t kNoEntry = ~std::size_t{0};

// Where a pass stands once it has refused: everything then finds the end of the text.
constexpr TCHAR kEnd = 0;

constexpr NameWord kPiName = FinishWord('p' << 8 | 'i', 2);

// The units of names in capitals as their words hold them; 0 for all others.
constexpr std::array<unsigned char, 128> NameUnits() {
  std::array<unsigned char, 128> units{};
  for (std::size_t i = 0; i < units.size(); ++i) {
    const auto c = static_cast<TCHAR>(i);
    if (IsNameChar(c) && c == ToUpper(c)) units[i] = static_cast<unsigned char>(ToLower(c));
  }
  return units;
}

constexpr auto kNameUnits = NameUnits();

// They head the table of operators.
constexpr std::span kTwoUnitComparisons(kOperators.begin(), 7);
static_assert(std::all_of(kTwoUnitComparisons.begin(), kTwoUnitComparisons.end(), [](const Operator& each) {
  return IsComparison(each.kind) && each.typed.size() == 2;
}));
static_assert(kOperators[kTwoUnitComparisons.size()].typed.size() == 1);

constexpr bool IsCapital(TCHAR c) {
  return c >= 'A' && c <= 'Z';
}

// A bit in the byte of each unit that is a letter behind a digit. Bits 5 and 6 distinguish the kinds of
// units.
constexpr std::uint64_t LettersBehindDigits(std::uint64_t units) {
  constexpr std::uint64_t kEveryByte = 0x0101010101010101;
  const std::uint64_t letters = (units >> 5) & (units >> 6);
  const std::uint64_t digits = (units >> 5) & ~(units >> 6);
  return letters & (digits >> 8) & kEveryByte;
}

}  // namespace

// Names that could be found where this evaluation looks for none rule it out before it begins.
DirectEvaluator::DirectEvaluator(LPCTSTR formula, const CMapValue& values, ValuePlaces& places)
    : text_(formula),
      at_(formula),
      words_(values.Words().data()),
      count_(values.size()),
      entries_(values.begin()),
      places_(places),
      refused_(count_ > ValuePlaces::kMaxEntries || values.HasOddNames()) {
  places_.Clear();
}

bool DirectEvaluator::Evaluate(double& result) {
  if (refused_) return false;
  // A few names are compared faster than a table is made.
  if (count_ > kFewEntries) HashNames();
  const double value = Joined();
  // A replacement that stops at its limit might leave names; the sign of a NaN is not kept here.
  if (refused_ || by_zero_ || *at_ != 0 || name_units_ > kMaxSubstitutions || std::isnan(value)) return false;
  result = value;
  return true;
}

// All rules then find the end of a text and come back at once, so that none has to ask after each call.
double DirectEvaluator::Refuse() {
  refused_ = true;
  at_ = &kEnd;
  return 0;
}

bool DirectEvaluator::Take(TCHAR c) {
  if (*at_ != c) {
    Refuse();
    return false;
  }
  ++at_;
  return true;
}

// { compared && | || }. What the truth on the left has decided is evaluated all the same, but leaves no
// error.
double DirectEvaluator::Joined() {
  double value = Compared();
  while (*at_ == '&' || *at_ == '|') {
    const TCHAR sign = *at_;
    if (!TakeJoin(sign)) return 0;
    const bool is_decided = IsTruth(value) == (sign == '|');
    const bool by_zero = by_zero_;
    const double right = Compared();
    if (is_decided) by_zero_ = by_zero;
    value = is_decided ? (sign == '|' ? 1 : 0) : (IsTruth(right) ? 1 : 0);
  }
  return value;
}

// Three signs in a row are rewritten from the left, which leaves one over: such texts are mistakes.
bool DirectEvaluator::TakeJoin(TCHAR sign) {
  if (at_[1] != sign || at_[2] == sign || ++operators_ > kMaxReplacements) {
    Refuse();
    return false;
  }
  at_ += 2;
  return true;
}

double DirectEvaluator::Compared() {
  double value = Sum();
  while ((*at_ >= '<' && *at_ <= '>') || *at_ == '!') {
    const unsigned short kind = TakeComparison();
    if (kind == 0) return 0;
    value = NumbersCompare(kind, value, Sum()) ? 1 : 0;
  }
  return value;
}

// The kind of the comparison here, which must be one of the clear ones and stand alone.
unsigned short DirectEvaluator::TakeComparison() {
  const auto is_sign = [](TCHAR c) { return (c >= '<' && c <= '>') || c == '!'; };
  unsigned short kind = 0;
  int length = 1;
  if (!is_sign(at_[1])) {
    kind = *at_ == '=' ? kEqual : *at_ == '!' ? 0 : *at_;
  } else if (!is_sign(at_[2])) {
    length = 2;
    for (const Operator& each : kTwoUnitComparisons) {
      if (each.typed[0] == at_[0] && each.typed[1] == at_[1]) kind = each.kind;
    }
  }
  if (kind == 0 || EndsChainLink() || ++operators_ > kMaxReplacements) {
    Refuse();
    return 0;
  }
  at_ += length;
  last_comparison_ = at_;
  return kind;
}

// Whether all that stands behind the last comparison may be a literal once values stand in it.
bool DirectEvaluator::EndsChainLink() const {
  if (last_comparison_ == nullptr) return false;
  LPCTSTR at = last_comparison_;
  while (IsNameChar(*at) || *at == '.' || *at == '-') ++at;
  return at == at_;
}

// Sums and products run side by side, without a call for each level. -0 is what changes no first term.
double DirectEvaluator::Sum() {
  LPCTSTR at = at_;
  double sum = -0.0;
  for (bool negative = false;;) {
    double product = Factor(at);
    for (; *at == '*' || *at == '/';) {
      const bool divides = *at++ == '/';
      const double factor = Factor(at);
      // A bit and no branch, as this runs for every division.
      by_zero_ |= divides & (factor == 0);
      product = divides ? Quotient(product, factor) : product * factor;
    }
    sum += negative ? -product : product;
    negative = *at == '-';
    if (!negative && *at != '+') break;
    ++at;
  }
  at_ = at;
  return sum;
}

inline double DirectEvaluator::Factor(LPCTSTR& at) {
  double value = 0;
  if (IsDigit(*at)) {
    value = ReadFormulaNumber(at);
  } else if (IsCapital(*at)) {
    value = Name(at);
  } else {
    at_ = at;
    value = Unnamed();
    at = at_;
  }
  if (*at != '^') return value;
  at_ = at;
  value = Power(value);
  at = at_;
  return value;
}

double DirectEvaluator::Unnamed() {
  if (*at_ == '(') return Bracket();
  return *at_ == '-' || *at_ == '+' ? Signed() : Refuse();
}

double DirectEvaluator::Bracket() {
  ++at_;
  const double value = Joined();
  return Take(')') ? value : 0;
}

// To the left, and the sign of a base belongs to it: "-2^2" is 4.
double DirectEvaluator::Power(double base) {
  while (*at_ == '^') {
    ++at_;
    base = arithmetic::Power(base, Signed());
  }
  return base;
}

// { - } [ + ] operand. Behind the "+" no value with a sign of its own may follow.
double DirectEvaluator::Signed() {
  bool negative = false;
  for (; *at_ == '-'; ++at_) negative = !negative;
  const bool plus = *at_ == '+';
  if (plus) ++at_;
  const bool named = IsCapital(*at_);
  double value = 0;
  if (named || IsDigit(*at_)) {
    LPCTSTR at = at_;
    value = named ? Name(at) : ReadFormulaNumber(at);
    at_ = at;
  } else if (*at_ == '(') {
    value = Bracket();
  } else {
    return Refuse();
  }
  // In the text "+-2" is no operand, so there it is a mistake.
  if (plus && named && std::signbit(value)) return Refuse();
  return negative ? -value : value;
}

// A function's name may have a value, too: values come first.
inline double DirectEvaluator::Name(LPCTSTR& at) {
  const LPCTSTR start = at;
  std::uint64_t units = 0;
  LPCTSTR end = start;
  for (; *end < kNameUnits.size() && kNameUnits[*end] != 0; ++end) units = units << 8 | kNameUnits[*end];
  const auto length = static_cast<std::size_t>(end - start);
  name_units_ += length;
  const bool is_short = length <= kNameWordUnits;
  const std::size_t entry = is_short ? EntryOf(FinishWord(units, static_cast<int>(length))) : kNoEntry;
  at_ = end;
  double value = 0;
  if (entry != kNoEntry) {
    value = HasNamedTail(units) ? Refuse() : Value(entry, start, length);
  } else {
    value = is_short ? Unvalued(units, length) : Refuse();
  }
  at = at_;
  return value;
}

inline std::size_t DirectEvaluator::EntryOf(NameWord word) const {
  if (count_ > kFewEntries) return FoundByHash(word);
  std::size_t found = kNoEntry;
  for (std::size_t i = 0; i < count_; ++i) found = words_[i] == word ? i : found;
  return found;
}

// Never full: there are twice as many slots as entries.
std::size_t DirectEvaluator::FoundByHash(NameWord word) const {
  for (std::size_t slot = SlotOf(word);; slot = (slot + 1) % kSlots) {
    if (slots_[slot] == 0) return kNoEntry;
    const std::size_t entry = slots_[slot] - std::size_t{1};
    if (words_[entry] == word) return entry;
  }
}

// For each evaluation anew, as the map may have changed; that still pays from some twenty names on.
void DirectEvaluator::HashNames() {
  slots_.fill(0);
  for (std::size_t entry = 0; entry < count_; ++entry) {
    if (words_[entry] == 0) continue;
    std::size_t slot = SlotOf(words_[entry]);
    while (slots_[slot] != 0) slot = (slot + 1) % kSlots;
    slots_[slot] = static_cast<std::uint8_t>(entry + 1);
  }
}

// Noted so that the text can be written later.
inline double DirectEvaluator::Value(std::size_t entry, LPCTSTR start, std::size_t length) {
  const double value = entries_[static_cast<std::ptrdiff_t>(entry)].second;
  double reading = 0;
  if (!ReadsPlainly(value, reading)) return Refuse();
  std::uint64_t& seen = seen_[entry / 64];
  const std::uint64_t bit = std::uint64_t{1} << entry % 64;
  // A value that is shorter by one unit moves the search onto the unit behind it, which begins no name.
  if (length > 2 && (seen & bit) != 0 && IsTooNear(entry, start, length)) return Refuse();
  seen |= bit;
  places_.Add(static_cast<std::size_t>(start - text_), length, entry, value);
  return reading;
}

// A letter behind a digit begins a name of its own for a replacement.
inline bool DirectEvaluator::HasNamedTail(std::uint64_t units) const {
  std::uint64_t tails = LettersBehindDigits(units);
  for (; tails != 0; tails &= tails - 1) {
    // The lowest bit is that of the shortest tail.
    const int length = std::countr_zero(tails) / 8 + 1;
    if (EntryOf(FinishWord(units, length)) != kNoEntry) return true;
  }
  return false;
}

// Whether the replacement of the name's last place might go on behind the beginning of this one: it does so
// as many units late as the value is shorter than the name. What other values leave between is not known
// here, but at least a unit of each, and a value has at least one unit as well.
bool DirectEvaluator::IsTooNear(std::size_t entry, LPCTSTR start, std::size_t length) const {
  const ValuePlaces::Place& last = places_.LastOf(entry);
  std::size_t between = 0;
  for (LPCTSTR at = text_ + last.start + last.length; at < start; ++at) {
    if (!IsNameChar(*at) || !IsNameChar(at[-1])) ++between;
    if (between + 1 >= length) return false;
  }
  const ValueText value(entries_[static_cast<std::ptrdiff_t>(entry)].second);
  return value.Plain().size() + between < length;
}

// A keyword without a value counts 0, but whether a name is one is asked where texts are evaluated.
double DirectEvaluator::Unvalued(std::uint64_t units, std::size_t length) {
  if (*at_ != '(') return FinishWord(units, static_cast<int>(length)) == kPiName ? kPi : Refuse();
  const unsigned short kind = FunctionKind(units, length);
  return kind == 0 ? Refuse() : Call(kind);
}

// A call has at least the arguments it uses, and those of one argument have no more than that.
double DirectEvaluator::Call(unsigned short kind) {
  ++at_;
  if (kind == kMax || kind == kMin) return Extreme(kind);
  if (kind == kIif) return Choose();
  if (kind == kLen || kind == kFind) return Refuse();
  const double x = Joined();
  if (!Take(')')) return 0;
  // Outside the domain is an error that is 0 to callers; only a division by zero before it would differ.
  if (kind == kSqrt) return x >= 0 ? arithmetic::SquareRoot(x) : 0;
  if (kind == kLog) return x > 0 ? arithmetic::Logarithm(x) : 0;
  return NumberFunction(kind, x);
}

// All arguments first, compared from the last to the first: with a NaN among them the order matters.
double DirectEvaluator::Extreme(unsigned short kind) {
  std::array<double, 8> values;
  values[0] = Joined();
  std::size_t count = 1;
  for (; *at_ == ','; ++count) {
    if (count == values.size()) return Refuse();
    ++at_;
    values[count] = Joined();
  }
  if (!Take(')')) return 0;
  double best = values[--count];
  while (count > 0) {
    --count;
    best = kind == kMax ? Larger(values[count], best) : Smaller(values[count], best);
  }
  return best;
}

// Both branches are evaluated; the one not taken leaves no error.
double DirectEvaluator::Choose() {
  const bool holds = Joined() > 0;
  if (!Take(',')) return 0;
  const bool by_zero = by_zero_;
  const double yes = Joined();
  const bool yes_by_zero = by_zero_;
  by_zero_ = by_zero;
  if (!Take(',')) return 0;
  const double no = Joined();
  if (holds) by_zero_ = yes_by_zero;
  return !Take(')') ? 0 : holds ? yes : no;
}

}  // namespace lorv
