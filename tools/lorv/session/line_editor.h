#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace lorv::tool {

// Reads what a person types, a line at a time, with what the system has for editing, history and completion.
class LineEditor {
 public:
  // The words that complete a beginning.
  using Completion = std::function<std::vector<std::string>(const std::string& beginning)>;

  virtual ~LineEditor() = default;
  // The line without its end; nothing at the end of the input.
  virtual std::optional<std::string> Read(const std::string& prompt) = 0;
  // NOLINTNEXTLINE(performance-unnecessary-value-param): an editor that completes keeps it
  virtual void Complete(Completion /*completion*/) {}
};

}  // namespace lorv::tool
