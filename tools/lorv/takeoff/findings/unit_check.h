#pragma once

#include <iosfwd>
#include <map>
#include <set>
#include <vector>

#include "tools/lorv/takeoff/plan/plan.h"
#include "tools/lorv/text/json_text.h"

namespace lorv::tool {

// Notices dimensions whose values look like millimetres in rules that say m, m2 or m3.
//
// A column looks so when its title says so ("L (mm)"), or when its values are whole numbers that are mostly
// 100 and more. They are followed through the steps above that a rule uses. A rule or step that divides by
// 1000, or has a factor that does, has seen to it.
class UnitCheck {
 public:
  explicit UnitCheck(const Planner& planner);

  // Of the component that the file stands at; the first few thousand are enough.
  void Look(const ComponentsFile& file);
  bool IsFine() const { return Findings().empty(); }
  void Print(std::ostream& out) const;
  void Write(JsonText& json) const;

 private:
  struct Seen {
    long long values = 0;
    long long whole = 0;
    long long large = 0;
    double example = 0;
  };
  struct Finding {
    std::size_t rule;
    std::size_t dimension;
  };

  std::vector<Finding> Findings() const;
  std::vector<std::size_t> StepsNamed(const CString& key, std::size_t above) const;
  std::set<std::size_t> RulesBelow(std::size_t rule) const;
  std::set<std::size_t> MillimetresIn(std::size_t rule) const;
  bool LooksLikeMillimetres(std::size_t dimension) const;

  const Planner& planner_;
  std::multimap<CString, std::size_t> steps_;  // rules by the keys of their names
  std::vector<Seen> seen_;
  long long components_ = 0;
};

}  // namespace lorv::tool
