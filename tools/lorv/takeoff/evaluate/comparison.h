#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "tools/lorv/takeoff/evaluate/component_evaluator.h"
#include "tools/lorv/text/json_text.h"

namespace lorv::tool {

// Counts how many quantities agree with those that the components file stores itself.
//
// A rule is asked of a component when it was evaluated and the file holds the quantity of its column
// `compare`. It agrees when both differ by no more than a share of the stored one. Rules of one name are one
// line; rules of one group are one line more, in which a component agrees when any of them does. Components
// that do not agree are named with both numbers.
class Comparison {
 public:
  Comparison(const Planner& planner, double tolerance) : planner_(planner), tolerance_(tolerance) {}

  // The results of the component that the file stands at.
  void Add(const ComponentsFile& file, const std::vector<Result>& results);

  void Print(std::ostream& out) const;
  void Write(JsonText& json) const;

 private:
  struct Line {
    std::string name;
    bool is_group = false;
    std::size_t rule = 0;  // the first of the name, or of the group
    long long asked = 0;
    long long agree = 0;
  };
  // A component whose quantity is not the one that its file stores; of a group, its nearest one.
  struct Difference {
    std::string name;       // of the rule or group
    std::string component;  // where it stands
    double ours = 0;
    double theirs = 0;
    double Share() const;
  };
  struct Group {
    std::size_t rule;
    bool agrees;
    Difference nearest;
  };
  void Keep(Difference difference);
  void PrintDifferences(std::ostream& out) const;
  Line& LineOf(const std::string& name, bool is_group, std::size_t rule);
  std::vector<const Line*> InOrder() const;

  const Planner& planner_;
  double tolerance_;
  std::map<std::pair<bool, std::string>, Line> lines_;
  std::vector<Difference> differences_;
  long long beyond_ = 0;
};

}  // namespace lorv::tool
