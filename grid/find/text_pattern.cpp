#include "grid/find/text_pattern.h"

#include <vector>

#include "grid/find/pattern_program.h"

// All ways through the program at once, a code of the text after the other: a way that comes to a step where
// another one is already gives up, as that one is preferred. So no pattern costs more than its length for
// each code, and nothing is called within itself.

namespace lorv {

namespace {

using Kind = PatternStepKind;

constexpr std::size_t kPlaces = 2 * (kMostPatternGroups + 1);
using Saved = std::array<int, kPlaces>;

struct Way {
  int step = 0;
  Saved saved;
};

// The ways that stand in front of one code, those preferred first.
struct Front {
  std::vector<Way> ways;
  std::vector<std::size_t> seen;  // by step: the turn in which it was come to

  explicit Front(std::size_t steps) : seen(steps) { ways.reserve(steps); }
};

bool IsWord(TextView text, std::size_t place) {
  if (place >= text.size()) return false;
  const auto unit = static_cast<char32_t>(text[place]);
  const char32_t folded = FoldedCode(unit);
  return (folded >= U'a' && folded <= U'z') || (unit >= U'0' && unit <= U'9') || unit == U'_';
}

bool IsLineBreak(char32_t code) {
  return code == U'\n' || code == U'\r' || code == 0x2028 || code == 0x2029;
}

}  // namespace

// Serves one text after the other: cells are short, and its room would cost more than the search in one.
class TextPattern::Run {
 public:
  Run(const PatternProgram& program, bool match_case)
      : program_(program), match_case_(match_case), here_(program.steps.size()), next_(program.steps.size()) {
    std::size_t first = 0;
    while (program.steps[first].kind == Kind::kSave) ++first;
    if (program.steps[first].kind == Kind::kCode) begins_with_ = &program.steps[first];
  }

  bool Find(TextView text, std::size_t from, Saved& found) {
    Forget(text);
    bool any = false;
    Saved fresh;
    fresh.fill(-1);
    for (std::size_t at = from;; at += CodeOf(text_, at).units) {
      // Where no way stands yet, none can begin before the code that all begin with.
      if (!any && here_.ways.empty() && begins_with_ != nullptr) at = NextBegin(at);
      // Where nothing was found yet it may begin here, after all that began before.
      if (!any) {
        fresh[0] = static_cast<int>(at);
        Follow(here_, 0, fresh, at, turn_here_);
      }
      const bool more = at < text_.size();
      if (here_.ways.empty() && (any || !more)) return any;
      if (work_ > kMostPatternWork) return false;
      const std::size_t units = more ? CodeOf(text_, at).units : 0;
      if (Step(at, at + units, more, found)) any = true;
      if (!more) return any;
      std::swap(here_, next_);
      std::swap(turn_here_, turn_next_);
      next_.ways.clear();
    }
  }

 private:
  // The last search may have ended in the middle.
  void Forget(TextView text) {
    text_ = text;
    here_.ways.clear();
    next_.ways.clear();
    work_ = 0;
    turn_here_ = ++marks_;
  }

  std::size_t NextBegin(std::size_t at) const {
    while (at < text_.size() && !Fits(*begins_with_, CodeOf(text_, at).code)) at += CodeOf(text_, at).units;
    return at;
  }

  // Each way over the code at that place. True: one of them is at the end, and found is its.
  bool Step(std::size_t at, std::size_t behind, bool more, Saved& found) {
    turn_next_ = ++marks_;
    const char32_t code = more ? CodeOf(text_, at).code : 0;
    for (const Way& way : here_.ways) {
      ++work_;
      const PatternStep& step = program_.steps[static_cast<std::size_t>(way.step)];
      if (step.kind == Kind::kMatched) {
        found = way.saved;
        found[1] = static_cast<int>(at);
        // What stands behind it is preferred less.
        return true;
      }
      if (more && Fits(step, code)) Follow(next_, way.step + 1, way.saved, behind, turn_next_);
    }
    return false;
  }

  bool Fits(const PatternStep& step, char32_t code) const {
    if (step.kind == Kind::kAny) return !IsLineBreak(code);
    if (!match_case_) code = FoldedCode(code);
    if (step.kind == Kind::kCode) return static_cast<char32_t>(step.a) == code;
    return program_.sets[static_cast<std::size_t>(step.a)].Holds(code);
  }

  // To all steps that read a code and are come to from here without one.
  void Follow(Front& front, int first, const Saved& saved, std::size_t at, std::size_t turn) {
    stack_.push_back({first, saved});
    while (!stack_.empty()) {
      Way way = stack_.back();
      stack_.pop_back();
      std::size_t& seen = front.seen[static_cast<std::size_t>(way.step)];
      if (seen == turn) continue;
      seen = turn;
      ++work_;
      const PatternStep& step = program_.steps[static_cast<std::size_t>(way.step)];
      const int here = way.step;
      switch (step.kind) {
        case Kind::kSplit:
          way.step = here + step.b;
          stack_.push_back(way);
          way.step = here + step.a;
          break;
        case Kind::kJump:
          way.step = here + step.a;
          break;
        case Kind::kSave:
          way.saved[static_cast<std::size_t>(step.a)] = static_cast<int>(at);
          way.step = here + 1;
          break;
        case Kind::kBegin:
        case Kind::kEnd:
        case Kind::kEdge:
        case Kind::kNoEdge:
          if (!Stands(step.kind, at)) continue;
          way.step = here + 1;
          break;
        default:
          front.ways.push_back(way);
          continue;
      }
      stack_.push_back(way);
    }
  }

  bool Stands(Kind kind, std::size_t at) const {
    if (kind == Kind::kBegin) return at == 0;
    if (kind == Kind::kEnd) return at == text_.size();
    const bool edge = (at > 0 && IsWord(text_, at - 1)) != IsWord(text_, at);
    return edge == (kind == Kind::kEdge);
  }

  const PatternProgram& program_;
  const PatternStep* begins_with_ = nullptr;
  TextView text_;
  bool match_case_;
  Front here_;
  Front next_;
  std::vector<Way> stack_;
  std::size_t work_ = 0;
  std::size_t marks_ = 1;
  std::size_t turn_here_ = 1;
  std::size_t turn_next_ = 1;
};

TextPattern::TextPattern(TextView pattern, bool match_case) {
  if (auto program = ParsePattern(pattern, match_case))
    program_ = std::make_unique<PatternProgram>(std::move(*program));
  if (program_ != nullptr) run_ = std::make_unique<Run>(*program_, match_case);
}

TextPattern::~TextPattern() = default;

bool TextPattern::Find(TextView text, std::size_t from, Places& places) const {
  Saved saved;
  if (program_ == nullptr || from > text.size() || !run_->Find(text, from, saved)) return false;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const bool whole = saved[2 * i] >= 0 && saved[2 * i + 1] >= 0;
    places[i] = whole ? Place{saved[2 * i], saved[2 * i + 1]} : Place();
  }
  return true;
}

CString TextPattern::Replacement(TextView text, const Places& places, const CString& by) {
  CString made;
  const TextView form = by.View();
  for (std::size_t i = 0; i < form.size(); ++i) {
    const TCHAR next = form[i] == _T('$') && i + 1 < form.size() ? form[i + 1] : TCHAR{0};
    const bool group = (next >= _T('0') && next <= _T('9')) || next == _T('&');
    if (group) {
      const Place& place = places[next == _T('&') ? 0U : static_cast<std::size_t>(next - _T('0'))];
      if (place.from >= 0)
        made += CString(text.substr(static_cast<std::size_t>(place.from),
                                    static_cast<std::size_t>(place.to - place.from)));
    } else {
      made += CString(form[i], 1);
    }
    if (group || next == _T('$')) ++i;
  }
  return made;
}

}  // namespace lorv
