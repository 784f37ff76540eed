#pragma once

#include <memory>

namespace lorv {

// True while the object that the token was taken from lives.
class LifeToken {
 public:
  std::weak_ptr<int> Watch() const { return life_; }

 private:
  std::shared_ptr<int> life_ = std::make_shared<int>(0);
};

}  // namespace lorv
