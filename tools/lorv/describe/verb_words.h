#pragma once

#include <string>
#include <vector>

namespace lorv::tool {

// What the help of a verb says of one of its options.
struct OptionWords {
  std::vector<std::string> names;  // "--out", "-o"; one name without dashes for an argument
  std::string description;
  bool takes_value = false;
  bool is_argument = false;  // known by its place
};

struct VerbWords {
  std::string name;
  std::string summary;
  std::vector<OptionWords> options;
  std::string remarks;  // what stands below the options, examples and exit codes among it
};

// All verbs with their options, asked of the same declarations that --help prints.
std::vector<VerbWords> DescribeVerbs();

// The script that completes command lines in "bash", "zsh" or "fish"; empty for any other shell.
std::string CompletionScript(const std::string& shell);

// The manual page, in the form that `man` reads.
std::string ManualPage();

// The same for programs, as JSON.
std::string ManualAsJson();

}  // namespace lorv::tool
