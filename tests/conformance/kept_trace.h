#pragma once

#include <string>
#include <vector>

// The trace that is kept of the conformance script, for the test of each kind of desktop.
namespace lorv_test {

// What one kind of desktop says otherwise in a step; why stands in docs/desktop-differences.md.
struct Difference {
  const char* step;
  std::vector<std::string> events;
};

std::vector<std::string> KeptTrace();

// Fails unless the trace is the kept one but for the differences, each of which has to be one.
void ExpectKeptTrace(const std::vector<std::string>& trace, const std::vector<Difference>& differences);
// The same of another script.
void ExpectTrace(const std::vector<std::string>& kept, const std::vector<std::string>& trace,
                 const std::vector<Difference>& differences);

}  // namespace lorv_test
