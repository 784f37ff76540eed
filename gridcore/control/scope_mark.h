#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace lorv {

// Gives a member of an object a value for a scope, and its former one back at the end, where the object still
// lives: in between handlers may have ended it.
//
//   const ScopeMark ending(ending_edit_, Watch());
template <class Value>
class ScopeMark {
 public:
  ScopeMark(Value& mark, std::weak_ptr<int> life, std::type_identity_t<Value> value = true)
      : mark_(mark), life_(std::move(life)), former_(std::exchange(mark, value)) {}
  ScopeMark(const ScopeMark&) = delete;
  ScopeMark& operator=(const ScopeMark&) = delete;
  ~ScopeMark() {
    if (!life_.expired()) mark_ = former_;
  }

 private:
  Value& mark_;
  std::weak_ptr<int> life_;
  Value former_;
};

}  // namespace lorv
