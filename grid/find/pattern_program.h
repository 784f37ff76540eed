#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "framework/text/cstring.h"

namespace lorv {

constexpr std::size_t kMostPatternUnits = 1000;
constexpr std::size_t kMostPatternSteps = 4000;  // of the program that a pattern becomes
constexpr int kMostPatternDepth = 100;           // of groups in groups
constexpr int kMostPatternGroups = 9;            // whose texts a replacement can name

enum class PatternStepKind {
  kCode,     // a is the code that stands there
  kOneOf,    // a is a number of PatternProgram::sets
  kAny,      // any code but a line break
  kSplit,    // on at a; where that leads to nothing, at b
  kJump,     // on at a
  kSave,     // the place is the one of number a
  kBegin,    // only in front of the text
  kEnd,      // only behind it
  kEdge,     // only between a sign of words and another one
  kNoEdge,   // anywhere else
  kMatched,  // found
};

// Where a step leads to is told from its own place: so pieces of a program can be put together and repeated.
struct PatternStep {
  PatternStepKind kind = PatternStepKind::kMatched;
  int a = 0;
  int b = 0;
};

struct CodeSet {
  std::vector<std::pair<char32_t, char32_t>> ranges;  // both ends within
  bool others = false;                                // all codes but those

  bool Holds(char32_t code) const;
};

struct PatternProgram {
  std::vector<PatternStep> steps;
  std::vector<CodeSet> sets;
  int groups = 0;
};

constexpr char32_t FoldedCode(char32_t code) {
  return code >= U'A' && code <= U'Z' ? code + 0x20 : code;
}

// One code of a text, and how many units it has there: two for a surrogate pair, one for all else.
struct CodeAt {
  char32_t code = 0;
  std::size_t units = 1;
};
CodeAt CodeOf(TextView text, std::size_t place);

// The program of a pattern; nothing: it is none, or passes a limit. Without `match_case` ASCII letters stand
// for both cases.
std::optional<PatternProgram> ParsePattern(TextView pattern, bool match_case);

}  // namespace lorv
