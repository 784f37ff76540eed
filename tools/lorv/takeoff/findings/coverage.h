#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "tools/lorv/takeoff/plan/plan.h"
#include "tools/lorv/text/json_text.h"

namespace lorv::tool {

// What a take-off left out: classes that no rule is for, rules that nothing was evaluated by, columns that
// the components file does not have. Nothing of it stops the work, and all of it is named.
class Coverage {
 public:
  explicit Coverage(const Planner& planner) : planner_(planner), rules_(planner.Rules().rules.size()) {}

  // A component without any rule.
  void AddClassWithoutRule(const std::string& class_name);
  // What a rule came to for one component of its classes.
  void CountFit(std::size_t rule) { ++rules_[rule].fit; }
  void CountTried(std::size_t rule) { ++rules_[rule].tried; }
  void CountHeld(std::size_t rule) { ++rules_[rule].held; }
  void CountEvaluated(std::size_t rule) { ++rules_[rule].evaluated; }
  void CountFailed(std::size_t rule) { ++rules_[rule].failed; }

  bool Fits(std::size_t rule) const { return rules_[rule].fit > 0; }
  bool IsComplete() const;
  void Print(std::ostream& out) const;
  void Write(JsonText& json) const;

 private:
  struct Counts {
    long long fit = 0;        // components of its classes
    long long tried = 0;      // no row above had counted
    long long held = 0;       // the condition held
    long long evaluated = 0;  // it gave a number
    long long failed = 0;
  };
  struct Unused {
    std::size_t rule;
    const char* reason;  // as a message
  };

  std::vector<Unused> UnusedRules() const;

  const Planner& planner_;
  std::vector<Counts> rules_;
  std::map<std::string, long long> classes_;
};

}  // namespace lorv::tool
