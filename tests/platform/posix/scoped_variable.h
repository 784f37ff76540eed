#pragma once

#include <cstdlib>
#include <string>

namespace lorv::test {

// A value of the environment for a scope.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const std::string& value) : name_(name) {
    if (const char* old = std::getenv(name)) before_ = old;
    setenv(name, value.c_str(), 1);
  }
  ~ScopedVariable() {
    if (before_.empty()) {
      unsetenv(name_);
    } else {
      setenv(name_, before_.c_str(), 1);
    }
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  const char* name_;
  std::string before_;
};

}  // namespace lorv::test
