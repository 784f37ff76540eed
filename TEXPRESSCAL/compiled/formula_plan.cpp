#include "TEXPRESSCAL/compiled/formula_plan.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "TEXPRESSCAL/compiled/placeholder_edit.h"
#include "TEXPRESSCAL/compiled/plan_reader.h"
#include "TEXPRESSCAL/text/operator_rewriting.h"
#include "TEXPRESSCAL/values/substitution.h"

// A plan from a formula's text: placeholders in place of the names, by the same replacement that writes
// values, then the same parser, then the compiler. Because both are the engine's own, a plan can differ from
// the text way only through a value's length, sign or thirds; these limits are found here and checked for
// each value.

namespace lorv {
namespace {

// What stands for every value while a plan is made: its text is longer than any name, so that no hit is
// missed behind it, and it has digits at both ends, as the text of every value that fits.
constexpr double kPlaceholder = 1e20;
// In the search for gaps: farther than any name reaches.
constexpr std::size_t kNoGap = 1000;
// The length of the text of a third.
constexpr std::size_t kThirdText = 3;

// A name whose hits cannot begin inside the text of a value, and that holds no sign of the grammar.
bool IsPlainName(TextView name) {
  if (IsDigit(name.front())) return false;
  return std::all_of(name.begin(), name.end(), [](TCHAR c) { return IsNameChar(c) || c >= 0x80; });
}

// Puts placeholders in place of every name, and finds out for each how long the text of a value must be at
// least for the same hits to be found; false if a plan cannot be made for these names.
bool PutPlaceholders(PlaceholderEdit& edit, const CMapValue& values, std::vector<std::size_t>& least_texts) {
  for (const auto& [key, value] : values) {
    const TextView name(static_cast<LPCTSTR>(key));
    least_texts.push_back(0);
    if (name.empty()) continue;
    if (!IsPlainName(name)) return false;
    edit.BeginName(least_texts.size() - 1);
    SubstituteValue(edit, name, kPlaceholder);
    const std::size_t gap = edit.LeastGap(name, kNoGap);
    // A shorter value would let the replacement step over the beginning of the name's next hit.
    if (gap < name.size()) least_texts.back() = name.size() - gap;
  }
  edit.EndNames();
  return !edit.IsDoubtful();
}

}  // namespace

bool FormulaPlan::Make(TextView formula, const CMapValue& values, Thirds thirds) {
  takes_thirds_ = thirds == Thirds::kFit;
  slots_.clear();
  close_slots_.clear();
  places_.clear();
  PlaceholderEdit edit(formula);
  std::vector<std::size_t> least_texts;
  if (IsPlainNumber(formula) || !PutPlaceholders(edit, values, least_texts)) return false;
  RewriteOperators(edit);
  // A chained comparison writes a term twice, and perhaps a value in it: one place of the formula would then
  // be two leaves.
  if (edit.CopiesText()) return false;

  PlanReader reader({edit.Text(), edit.Length()}, edit.Places());
  if (!reader.Read()) return false;
  MakeSlots(reader, least_texts);
  if (!takes_thirds_) return MakeProgram(reader);
  PlanReader divided = reader.WithDivisors();
  // Only where "/1" behind a value leaves the tree as it was may a third be a division there.
  return divided.Read() && reader.IsSameBut(divided) && MakeProgram(divided);
}

// The divisors of a plan with thirds are variables beside the numbers, in the same order.
bool FormulaPlan::MakeProgram(const PlanReader& reader) {
  const std::size_t cells = values_.size() * (takes_thirds_ ? 2 : 1);
  const bool is_made = program_.Make(reader.Root(), cells, [&](const ExprNode* leaf) {
    if (const std::size_t* name = reader.NameOf(leaf)) return SlotOf(*name);
    const std::size_t* const divisor = reader.DivisorOf(leaf);
    return divisor == nullptr ? -1 : static_cast<int>(values_.size()) + SlotOf(*divisor);
  });
  scattered_ = {places_.data(), places_.size(), values_.data(), program_.Slots()};
  return is_made;
}

// A name has one slot however often it occurs, and a value must fit all of its places. The values are read
// in whole strides of the processor, so the last place is repeated to the end of one; the results of the
// repetitions are not used.
void FormulaPlan::MakeSlots(const PlanReader& reader, const std::vector<std::size_t>& least_texts) {
  std::map<std::size_t, Slot> by_name;
  for (const PlaceholderEdit::Place& place : reader.Places()) {
    Slot& slot =
        by_name.try_emplace(place.name, Slot{place.name, least_texts[place.name], true, true}).first->second;
    slot.takes_negative = slot.takes_negative && reader.TakesNegative(place);
    slot.takes_third = slot.takes_third && reader.TakesDivisor(place);
  }
  for (const auto& [name, slot] : by_name) {
    slots_.push_back(slot);
    if (!IsFree(slot)) close_slots_.push_back(slots_.size() - 1);
  }
  for (const Slot& slot : slots_)
    places_.push_back(slot.entry * sizeof(CMapValue::value_type) + offsetof(CMapValue::value_type, second));
  const BlockLoops* loops = nullptr;
  UsableBlockLoops(&loops, 1);
  while (places_.size() % loops->lanes != 0) places_.push_back(places_.back());
  values_.resize(places_.size());
  read_ = places_.size() == loops->lanes ? loops->read_stride : loops->read_places;
}

int FormulaPlan::SlotOf(std::size_t name) const {
  const auto at =
      std::find_if(slots_.begin(), slots_.end(), [=](const Slot& slot) { return slot.entry == name; });
  return static_cast<int>(at - slots_.begin());
}

// One by one: plans with thirds are rare, and the values are kept even where one does not fit, as the other
// reading does it.
bool FormulaPlan::ReadWithThirds(const char* first) {
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    values_[i] = *reinterpret_cast<const double*>(first + places_[i]);
    if (!Reads(slots_[i], values_[i], program_.Slots()[i], program_.Slots()[FirstDivisor() + i]))
      return false;
  }
  return true;
}

// A third is written as "1/3" or "2/3": three units without a sign.
bool FormulaPlan::Reads(const Slot& slot, double value, double& number, double& divisor) {
  number = ThirdsOf(value);
  divisor = number == 0 ? 1 : 3;
  if (number == 0) return Fits(slot, value, number);
  return slot.takes_third && slot.least_text <= kThirdText;
}

// Most plans have no such slots, so most evaluations do not come here.
bool FormulaPlan::AllFitClosely() const {
  return std::all_of(close_slots_.begin(), close_slots_.end(),
                     [this](std::size_t i) { return FitsClosely(slots_[i], values_[i]); });
}

bool FormulaPlan::FitsClosely(const Slot& slot, double value) {
  if (!slot.takes_negative && std::signbit(value)) return false;
  return slot.least_text <= 1 || ValueText(value).Plain().size() >= slot.least_text;
}

}  // namespace lorv
