#pragma once

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace lorv::tool {

// What is wrong with the arguments of a verb, in the language that is spoken: the argument library has
// English words only. An option that is misspelt comes with the nearest one of the verb.
//
//   `lorv calc 1 --jsn`  gives "there is no option "--jsn" here; did you mean --json?"
std::string ArgumentFault(const CLI::ParseError& wrong, const CLI::App& verb);

}  // namespace lorv::tool
