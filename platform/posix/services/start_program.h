#pragma once

#include <string>
#include <vector>

namespace lorv {

// Starts a program (by its name, looked for as a shell does, then its arguments; UTF-8) and leaves it to
// itself, without input and output. False if there is no such program.
bool StartProgram(std::vector<std::string> words);

// Whether a program of that name is found.
bool HasProgram(const std::string& name);

}  // namespace lorv
