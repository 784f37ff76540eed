#pragma once

#include <string>

namespace lorv::tool {

// What --help and the manual say of the program, above and below the list of verbs, in the language spoken.
std::string AboutProgram();
std::string ProgramExamples();

}  // namespace lorv::tool
