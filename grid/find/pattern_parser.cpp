#include <algorithm>

#include "grid/find/pattern_program.h"

// Patterns by recursive descent, a function for each rule. What is read becomes a piece of a program at once:
//
//   choice: row { "|" row }      row: { atom [ repeat ] }      repeat: ( "*" "+" "?" "{m,n}" ) [ "?" ]
//   atom: code, ".", "^", "$", set, escape, "(" choice ")"

namespace lorv {

namespace {

using Kind = PatternStepKind;
using Piece = std::vector<PatternStep>;

constexpr int kMostRepeats = 1000;
constexpr int kEndless = -1;
constexpr char32_t kLastCode = 0x10FFFF;

CodeSet Digits() {
  return {{{U'0', U'9'}}};
}

CodeSet Words() {
  return {{{U'0', U'9'}, {U'A', U'Z'}, {U'_', U'_'}, {U'a', U'z'}}};
}

CodeSet Blanks() {
  return {{{U'\t', U'\r'}, {U' ', U' '}, {0xA0, 0xA0}, {0x3000, 0x3000}}};
}

// The set of "\d" and its like; "\D" is all others.
std::optional<CodeSet> NamedSet(char32_t letter) {
  CodeSet set;
  switch (FoldedCode(letter)) {
    case U'd':
      set = Digits();
      break;
    case U'w':
      set = Words();
      break;
    case U's':
      set = Blanks();
      break;
    default:
      return std::nullopt;
  }
  set.others = letter != FoldedCode(letter);
  return set;
}

bool IsLetterOrDigit(char32_t code) {
  return (FoldedCode(code) >= U'a' && FoldedCode(code) <= U'z') || (code >= U'0' && code <= U'9');
}

int HexDigit(char32_t code) {
  if (code >= U'0' && code <= U'9') return static_cast<int>(code - U'0');
  const char32_t folded = FoldedCode(code);
  return folded >= U'a' && folded <= U'f' ? static_cast<int>(folded - U'a') + 10 : -1;
}

class Parser {
 public:
  Parser(TextView pattern, bool match_case) : text_(pattern), match_case_(match_case) {}

  std::optional<PatternProgram> Parse() {
    if (text_.size() > kMostPatternUnits) return std::nullopt;
    Piece all = Choice(0);
    // A bracket that nothing opened ends the choice too early.
    if (failed_ || at_ < text_.size()) return std::nullopt;
    all.push_back({Kind::kMatched});
    program_.steps = std::move(all);
    return std::move(program_);
  }

 private:
  bool More() const { return !failed_ && at_ < text_.size(); }
  bool Sees(TCHAR unit) const { return More() && text_[at_] == unit; }
  bool Takes(TCHAR unit) {
    const bool there = Sees(unit);
    if (there) ++at_;
    return there;
  }
  char32_t TakeCode() {
    const CodeAt next = CodeOf(text_, at_);
    at_ += next.units;
    return next.code;
  }
  void Fail() { failed_ = true; }
  void Append(Piece& piece, const Piece& more) {
    if (piece.size() + more.size() > kMostPatternSteps) return Fail();
    piece.insert(piece.end(), more.begin(), more.end());
  }

  Piece Choice(int depth) {
    if (depth > kMostPatternDepth) Fail();
    Piece choice = Row(depth);
    if (!Takes(_T('|'))) return choice;
    const Piece other = Choice(depth);
    // The first that leads on is taken.
    Piece both{{Kind::kSplit, 1, static_cast<int>(choice.size()) + 2}};
    Append(both, choice);
    both.push_back({Kind::kJump, static_cast<int>(other.size()) + 1});
    Append(both, other);
    return both;
  }

  Piece Row(int depth) {
    Piece row;
    while (More() && !Sees(_T('|')) && !Sees(_T(')'))) {
      const Piece atom = Atom(depth);
      if (!failed_) Append(row, Repeated(atom));
    }
    return row;
  }

  Piece Repeated(const Piece& atom) {
    int least = 1;
    int most = 1;
    if (Takes(_T('*')))
      least = 0, most = kEndless;
    else if (Takes(_T('+')))
      most = kEndless;
    else if (Takes(_T('?')))
      least = 0;
    else if (!Takes(_T('{')))
      return atom;
    else if (!ReadBounds(least, most))
      Fail();
    const bool lazy = Takes(_T('?'));
    // Repeats of repeats are written with brackets.
    if (Sees(_T('*')) || Sees(_T('+')) || Sees(_T('?')) || Sees(_T('{'))) Fail();
    return failed_ ? Piece() : Repeat(atom, least, most, lazy);
  }

  // "m}", "m,}" or "m,n}".
  bool ReadBounds(int& least, int& most) {
    if (!ReadCount(least)) return false;
    most = least;
    if (Takes(_T(','))) {
      most = kEndless;
      if (!Sees(_T('}')) && (!ReadCount(most) || most < least)) return false;
    }
    return Takes(_T('}'));
  }

  bool ReadCount(int& count) {
    const std::size_t first = at_;
    for (count = 0; More() && text_[at_] >= _T('0') && text_[at_] <= _T('9'); ++at_)
      count = std::min(kMostRepeats + 1, count * 10 + (text_[at_] - _T('0')));
    return at_ > first && count <= kMostRepeats;
  }

  static PatternStep Split(int preferred, int other, bool lazy) {
    return lazy ? PatternStep{Kind::kSplit, other, preferred} : PatternStep{Kind::kSplit, preferred, other};
  }

  Piece Repeat(const Piece& atom, int least, int most, bool lazy) {
    Piece piece;
    const auto size = static_cast<int>(atom.size());
    for (int i = 0; i < least && !failed_; ++i) Append(piece, atom);
    if (most == kEndless) {
      piece.push_back(Split(1, size + 2, lazy));
      Append(piece, atom);
      piece.push_back({Kind::kJump, -size - 1});
    }
    for (int left = most - least; left > 0 && !failed_; --left) {
      // Out of all that is left.
      piece.push_back(Split(1, left * (size + 1), lazy));
      Append(piece, atom);
    }
    return piece;
  }

  Piece Atom(int depth) {
    if (Takes(_T('('))) return Group(depth);
    if (Takes(_T('['))) return Set();
    if (Takes(_T('\\'))) return Escape();
    if (Takes(_T('.'))) return {{Kind::kAny}};
    if (Takes(_T('^'))) return {{Kind::kBegin}};
    if (Takes(_T('$'))) return {{Kind::kEnd}};
    // A repeat of nothing.
    if (Sees(_T('*')) || Sees(_T('+')) || Sees(_T('?')) || Sees(_T('{'))) Fail();
    return failed_ ? Piece() : Code(TakeCode());
  }

  Piece Code(char32_t code) const {
    return {{Kind::kCode, static_cast<int>(match_case_ ? code : FoldedCode(code))}};
  }

  Piece OneOf(CodeSet set) {
    if (!match_case_) AddOtherCase(set);
    program_.sets.push_back(std::move(set));
    return {{Kind::kOneOf, static_cast<int>(program_.sets.size()) - 1}};
  }

  // Texts are looked at folded.
  static void AddOtherCase(CodeSet& set) {
    const std::size_t count = set.ranges.size();
    for (std::size_t i = 0; i < count; ++i) {
      const char32_t first = std::max(set.ranges[i].first, U'A');
      const char32_t last = std::min(set.ranges[i].second, U'Z');
      if (first <= last) set.ranges.emplace_back(FoldedCode(first), FoldedCode(last));
    }
  }

  Piece Group(int depth) {
    bool named = true;
    if (Takes(_T('?'))) {
      named = false;
      if (!Takes(_T(':'))) Fail();
    }
    const int number = named && program_.groups < kMostPatternGroups ? ++program_.groups : 0;
    Piece inner = Choice(depth + 1);
    if (!Takes(_T(')'))) Fail();
    if (number == 0) return inner;
    Piece piece{{Kind::kSave, 2 * number}};
    Append(piece, inner);
    piece.push_back({Kind::kSave, 2 * number + 1});
    return piece;
  }

  Piece Escape() {
    if (!More()) Fail();
    if (failed_) return {};
    const char32_t letter = TakeCode();
    if (letter == U'b') return {{Kind::kEdge}};
    if (letter == U'B') return {{Kind::kNoEdge}};
    if (auto set = NamedSet(letter)) return OneOf(std::move(*set));
    return Code(EscapedCode(letter));
  }

  char32_t EscapedCode(char32_t letter) {
    switch (letter) {
      case U't':
        return U'\t';
      case U'n':
        return U'\n';
      case U'r':
        return U'\r';
      case U'u':
        return FourDigits();
      default:
        // Letters are kept for what patterns may mean one day.
        if (IsLetterOrDigit(letter)) Fail();
        return letter;
    }
  }

  char32_t FourDigits() {
    char32_t code = 0;
    for (int i = 0; i < 4; ++i) {
      const int digit = More() ? HexDigit(text_[at_]) : -1;
      if (digit < 0) Fail();
      if (failed_) return 0;
      code = code * 16 + static_cast<char32_t>(digit);
      ++at_;
    }
    return code;
  }

  Piece Set() {
    CodeSet set;
    set.others = Takes(_T('^'));
    while (More() && !Sees(_T(']'))) AddToSet(set);
    if (!Takes(_T(']'))) Fail();
    return failed_ ? Piece() : OneOf(std::move(set));
  }

  void AddToSet(CodeSet& set) {
    char32_t first = 0;
    if (!ReadSetCode(set, first)) return;
    char32_t last = first;
    // A sign of ranges in front of the end stands for itself.
    const bool range = Sees(_T('-')) && at_ + 1 < text_.size() && text_[at_ + 1] != _T(']');
    if (range) ++at_;
    if (range && !ReadSetCode(set, last)) return Fail();
    if (last < first) return Fail();
    set.ranges.emplace_back(first, last);
  }

  // False: what stood there is a set of its own, and has been added.
  bool ReadSetCode(CodeSet& set, char32_t& code) {
    const bool escaped = Takes(_T('\\'));
    if (!More()) Fail();
    if (failed_) return false;
    code = TakeCode();
    if (!escaped) return true;
    if (const auto named = NamedSet(code)) {
      AddNamed(set, *named);
      return false;
    }
    code = EscapedCode(code);
    return !failed_;
  }

  static void AddNamed(CodeSet& set, const CodeSet& named) {
    if (!named.others) {
      set.ranges.insert(set.ranges.end(), named.ranges.begin(), named.ranges.end());
      return;
    }
    // All but its ranges, which ascend.
    char32_t from = 0;
    for (const auto& [first, last] : named.ranges) {
      if (from < first) set.ranges.emplace_back(from, first - 1);
      from = last + 1;
    }
    set.ranges.emplace_back(from, kLastCode);
  }

  TextView text_;
  bool match_case_;
  std::size_t at_ = 0;
  bool failed_ = false;
  PatternProgram program_;
};

}  // namespace

bool CodeSet::Holds(char32_t code) const {
  const bool within = std::any_of(ranges.begin(), ranges.end(), [code](const auto& range) {
    return code >= range.first && code <= range.second;
  });
  return within != others;
}

CodeAt CodeOf(TextView text, std::size_t place) {
  const auto unit = static_cast<char32_t>(text[place]);
  const bool high = unit >= 0xD800 && unit < 0xDC00;
  if (!high || place + 1 >= text.size()) return {unit, 1};
  const auto low = static_cast<char32_t>(text[place + 1]);
  if (low < 0xDC00 || low > 0xDFFF) return {unit, 1};
  return {0x10000 + ((unit - 0xD800) << 10U) + (low - 0xDC00), 2};
}

std::optional<PatternProgram> ParsePattern(TextView pattern, bool match_case) {
  return Parser(pattern, match_case).Parse();
}

}  // namespace lorv
