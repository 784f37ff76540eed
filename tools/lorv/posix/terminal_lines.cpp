#include "tools/lorv/posix/terminal_lines.h"

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <string>

// Lines with history and completion, by the system's editing library. It is loaded at run time, so the
// program starts where it is not installed and no other run pays for it; its interface is the one of C
// programs, with state of its own that exists once.

namespace lorv::tool {
namespace {

// The part of the library's interface that is used, by its names.
struct Library {
  using Generator = char* (*)(const char* beginning, int state);
  char* (*readline)(const char* prompt) = nullptr;
  int (*add_history)(const char* line) = nullptr;
  int (*read_history)(const char* path) = nullptr;
  int (*write_history)(const char* path) = nullptr;
  char** (*rl_completion_matches)(const char* beginning, Generator generator) = nullptr;
  char** (**rl_attempted_completion_function)(const char* beginning, int first, int behind) = nullptr;
  const char** rl_basic_word_break_characters = nullptr;

  bool Load() {
    // By the version of its interface: another one would have other functions under these names.
    void* const file = dlopen("libedit.so.2", RTLD_NOW);
    return file != nullptr && Find(file, "readline", readline) && Find(file, "add_history", add_history) &&
           Find(file, "read_history", read_history) && Find(file, "write_history", write_history) &&
           Find(file, "rl_completion_matches", rl_completion_matches) &&
           Find(file, "rl_attempted_completion_function", rl_attempted_completion_function) &&
           Find(file, "rl_basic_word_break_characters", rl_basic_word_break_characters);
  }

 private:
  template <class T>
  static bool Find(void* file, const char* name, T& place) {
    place = reinterpret_cast<T>(dlsym(file, name));
    return place != nullptr;
  }
};

// The library calls back without an object.
Library library;
LineEditor::Completion completion;
std::vector<std::string> matches;

char* NextMatch(const char* beginning, int state) {
  if (state == 0) matches = completion ? completion(beginning) : std::vector<std::string>();
  const auto at = static_cast<std::size_t>(state);
  // The library frees each of them, so it has to be memory of its kind.
  return at < matches.size() ? strdup(matches[at].c_str()) : nullptr;
}

char** Matches(const char* beginning, int /*first*/, int /*behind*/) {
  return library.rl_completion_matches(beginning, NextMatch);
}

// Where the lines of earlier sessions are kept; empty: nowhere.
std::string HistoryFile() {
  const char* const home = std::getenv("HOME");
  return home == nullptr ? std::string() : std::string(home) + "/.lorv_history";
}

class EditedLines : public LineEditor {
 public:
  EditedLines() : history_(HistoryFile()) {
    *library.rl_attempted_completion_function = Matches;
    // A name begins behind every operator of a formula.
    *library.rl_basic_word_break_characters = " \t\n+-*/^()<>=!&|,;'";
    if (!history_.empty()) library.read_history(history_.c_str());
  }
  // As the session ends in any regular way; an interrupted one keeps nothing.
  ~EditedLines() override {
    if (!history_.empty()) library.write_history(history_.c_str());
  }

  std::optional<std::string> Read(const std::string& prompt) override {
    char* const typed = library.readline(prompt.c_str());
    if (typed == nullptr) return std::nullopt;
    std::string line(typed);
    std::free(typed);
    // Empty lines are not worth keeping.
    if (!line.empty()) library.add_history(line.c_str());
    return line;
  }
  void Complete(Completion with) override { completion = std::move(with); }

 private:
  std::string history_;
};

}  // namespace

std::unique_ptr<LineEditor> TerminalLines() {
  if (!library.Load()) return nullptr;
  return std::make_unique<EditedLines>();
}

}  // namespace lorv::tool
