#include "tools/lorv/command/verb_syntax.h"

#include <CLI/CLI.hpp>

// The declarations of verbs handed on to the argument library. It is one header of many thousand lines: only
// the few files that talk to it include it.

namespace lorv::tool {
namespace {

// The library would take -1 for the highest number there is.
std::string NotBelowZero(const std::string& value) {
  if (!value.starts_with('-')) return {};
  // In the library's own words for ranges, which are taken apart like those.
  return "Value " + value + " not in range 0 to " + std::to_string(UINT64_MAX);
}

}  // namespace

Argument& Argument::Required() {
  option_->required();
  return *this;
}

Argument& Argument::OneOf(std::initializer_list<const char*> words) {
  option_->check(CLI::IsMember(std::vector<std::string>(words.begin(), words.end())));
  return *this;
}

Argument& Argument::Between(int least, int most) {
  option_->check(CLI::Range(least, most));
  return *this;
}

Argument& Argument::DividedBy(char sign) {
  option_->delimiter(sign);
  return *this;
}

Argument& Argument::OneValueEach() {
  option_->allow_extra_args(false);
  return *this;
}

Argument& Argument::Needs(const Argument& other) {
  option_->needs(other.option_);
  return *this;
}

Argument& Argument::Excludes(const Argument& other) {
  option_->excludes(other.option_);
  return *this;
}

Argument VerbSyntax::Value(const char* names, std::string& target, const char* help) {
  return Argument(*app_->add_option(names, target, help));
}

Argument VerbSyntax::Value(const char* names, std::vector<std::string>& target, const char* help) {
  return Argument(*app_->add_option(names, target, help));
}

Argument VerbSyntax::Value(const char* names, int& target, const char* help) {
  return Argument(*app_->add_option(names, target, help));
}

Argument VerbSyntax::Value(const char* names, double& target, const char* help) {
  return Argument(*app_->add_option(names, target, help));
}

Argument VerbSyntax::Value(const char* names, std::optional<int>& target, const char* help) {
  return Argument(*app_->add_option(names, target, help));
}

Argument VerbSyntax::Value(const char* names, std::uint64_t& target, const char* help) {
  CLI::Option* const option = app_->add_option(names, target, help);
  option->check(NotBelowZero, "");
  return Argument(*option);
}

Argument VerbSyntax::Flag(const char* names, bool& target, const char* help) {
  return Argument(*app_->add_flag(names, target, help));
}

void VerbSyntax::Footer(const char* text) {
  app_->footer(text);
}

}  // namespace lorv::tool
