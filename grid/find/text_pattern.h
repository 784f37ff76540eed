#pragma once

#include <array>
#include <memory>

#include "framework/text/cstring.h"

namespace lorv {

struct PatternProgram;

// What looking at one text may cost: steps of the pattern's program, about half a second.
constexpr std::size_t kMostPatternWork = std::size_t{1} << 24U;

// Regular expressions over texts: . [a-z] [^a-z] \d \D \w \W \s \S \b \B ^ $ | ( ) (?: ) * + ? {m,n}, each
// repeat with ? for as few as possible, \t \n \r \uXXXX, and a backslash before signs that mean something.
//
// Units: places count 16-bit units; a surrogate pair is one code to a pattern and never cut.
// Edges: letter case and \w are those of ASCII. ^ and $ are the ends of the text; a line break within it is
//   an ordinary character. The first place that fits is found, there the alternative that is written first.
//   Groups beyond kMostPatternGroups are not kept. Not understood: look-around, back references, and what
//   passes the limits of grid/find/pattern_program.h; then nothing is found.
// Cost: the product of the lengths of the text and the program, whatever the pattern, and no stack; a text
//   that would cost more than kMostPatternWork counts as one that does not match.
// One object serves any number of texts, one thread at a time.
//
//   TextPattern("C(\\d+)", true).Find("fC30", 0, places)  gives true: places[0] is {1, 4}, places[1] {2, 4}
class COMM_LORV_API TextPattern {
 public:
  struct Place {
    int from = -1;  // -1: the group has no part in it
    int to = -1;
  };
  using Places = std::array<Place, 10>;  // all of it, and the groups

  TextPattern(TextView pattern, bool match_case);
  TextPattern(const TextPattern&) = delete;
  TextPattern& operator=(const TextPattern&) = delete;
  ~TextPattern();

  bool IsValid() const { return program_ != nullptr; }
  // The first place from that one on; `places` stays as it is where there is none.
  bool Find(TextView text, std::size_t from, Places& places) const;
  // A replacement for what was found: $1 to $9 the groups, $0 and $& all of it, $$ the sign itself.
  static CString Replacement(TextView text, const Places& places, const CString& by);

 private:
  class Run;

  std::unique_ptr<PatternProgram> program_;
  std::unique_ptr<Run> run_;  // what a search needs, kept for the next text
};

}  // namespace lorv
