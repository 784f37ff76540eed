#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace lorv::tool {

// One argument of a verb, for what else holds for it. Only while the verb is declared.
class Argument {
 public:
  explicit Argument(CLI::Option& option) : option_(&option) {}

  Argument& Required();
  Argument& OneOf(std::initializer_list<const char*> words);
  Argument& Between(int least, int most);
  Argument& DividedBy(char sign);  // several values in one word
  Argument& OneValueEach();        // a list grows by naming the option again, not by more words behind it
  Argument& Needs(const Argument& other);
  Argument& Excludes(const Argument& other);

 private:
  CLI::Option* option_;
};

// What a verb takes. Names are those of the help: "TEXT" is recognised by its place, "-o,--out" by its name.
//
// The targets are written when the words are read, if they name the argument, and must live until then.
// The argument library is one long header: verbs see this one in its place, which compiles in no time.
//
//   syntax.Value("FORMULA", request->formula, "the formula").Required();
//   syntax.Flag("-j,--json", request->json, "print it all as JSON");
class VerbSyntax {
 public:
  explicit VerbSyntax(CLI::App& app) : app_(&app) {}

  Argument Value(const char* names, std::string& target, const char* help);
  Argument Value(const char* names, std::vector<std::string>& target, const char* help);
  Argument Value(const char* names, int& target, const char* help);
  Argument Value(const char* names, double& target, const char* help);
  Argument Value(const char* names, std::optional<int>& target, const char* help);
  Argument Value(const char* names, std::uint64_t& target, const char* help);
  Argument Flag(const char* names, bool& target, const char* help);
  void Footer(const char* text);  // examples and the like, below the arguments

 private:
  CLI::App* app_;
};

}  // namespace lorv::tool
