#include "tests/conformance/kept_trace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "tests/conformance/behaviour_trace_table.inc"

namespace lorv_test {
namespace {

using Steps = std::vector<std::pair<std::string, std::vector<std::string>>>;

// A step's line begins without blanks, its events follow.
Steps StepsOf(const std::vector<std::string>& trace) {
  Steps steps;
  for (const std::string& line : trace) {
    if (line[0] != ' ') {
      steps.emplace_back(line, std::vector<std::string>());
    } else {
      steps.back().second.push_back(line);
    }
  }
  return steps;
}

std::string InTableForm(const std::vector<std::string>& trace) {
  std::string table;
  for (const std::string& line : trace) table += "    \"" + line + "\",\n";
  return table;
}

Steps::iterator Found(Steps& steps, const std::string& name) {
  return std::find_if(steps.begin(), steps.end(), [&](const auto& step) { return step.first == name; });
}

}  // namespace

std::vector<std::string> KeptTrace() {
  return {std::begin(kBehaviourTrace), std::end(kBehaviourTrace)};
}

void ExpectKeptTrace(const std::vector<std::string>& trace, const std::vector<Difference>& differences) {
  ExpectTrace(KeptTrace(), trace, differences);
}

void ExpectTrace(const std::vector<std::string>& kept, const std::vector<std::string>& trace,
                 const std::vector<Difference>& differences) {
  Steps expected = StepsOf(kept);
  for (const Difference& row : differences) {
    const auto step = Found(expected, row.step);
    ASSERT_NE(step, expected.end()) << row.step;
    EXPECT_NE(step->second, row.events) << row.step << " is listed as a difference and is none";
    step->second = row.events;
  }
  const Steps steps = StepsOf(trace);
  ASSERT_EQ(steps.size(), expected.size()) << "all of it, as the table has it:\n" << InTableForm(trace);
  for (std::size_t i = 0; i < steps.size(); ++i) {
    EXPECT_EQ(steps[i].first, expected[i].first);
    EXPECT_EQ(steps[i].second, expected[i].second) << steps[i].first;
  }
}

}  // namespace lorv_test
