#pragma once

#include <chrono>
#include <sstream>
#include <string>
#include <vector>

#include "tools/lorv/program.h"

namespace lorv::test {

// What a run of the tool left behind.
struct ToolRun {
  int code;
  std::string out;
  std::string err;
};

// Runs the tool inside the test program, with nothing on its input but `in`.
inline ToolRun RunTool(const std::vector<std::string>& words, const std::string& in = "") {
  std::istringstream input(in);
  std::ostringstream out, err;
  tool::Console console{input, out, err};
  const int code = tool::RunProgram(words, console);
  return {code, out.str(), err.str()};
}

// The same before a terminal, on which every work draws its bar at once.
inline ToolRun RunOnTerminal(const std::vector<std::string>& words) {
  std::istringstream input;
  std::ostringstream out, err;
  tool::Console console{input, out, err, true};
  console.bar_after = std::chrono::milliseconds(0);
  const int code = tool::RunProgram(words, console);
  return {code, out.str(), err.str()};
}

}  // namespace lorv::test
