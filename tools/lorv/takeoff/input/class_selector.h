#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lorv::tool {

// Which component classes a rule is for: a list of patterns parted by ";" (or "；" or "、"), in which "*"
// stands for any characters, "?" for one, and a "!" in front takes classes out again. ASCII letter case does
// not count.
//
//   ClassSelector("*WALL*;!CURTAIN*").Fits("Partition wall")  gives true
class ClassSelector {
 public:
  ClassSelector() = default;
  explicit ClassSelector(std::string_view list);

  // The last pattern that fits decides. A list that begins with "!" takes out of all classes. Nothing fits
  // an empty list.
  bool Fits(std::string_view name) const;
  bool IsEmpty() const { return patterns_.empty(); }
  bool operator==(const ClassSelector&) const = default;

 private:
  struct Pattern {
    std::string text;
    bool out;
    bool operator==(const Pattern&) const = default;
  };
  std::vector<Pattern> patterns_;
};

}  // namespace lorv::tool
