#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "framework/text/text_compare.h"

namespace lorv::engine {

// The texts of a workbook's cells, kept together and known by number. A text lives as long as the pool.
class TextPool {
 public:
  std::uint32_t Add(TextView text);
  TextView At(std::uint32_t id) const { return texts_[id]; }
  std::size_t Size() const { return texts_.size(); }

 private:
  TCHAR* Room(std::size_t units);

  std::vector<TextView> texts_;
  std::vector<std::unique_ptr<TCHAR[]>> blocks_;
  TCHAR* free_ = nullptr;
  std::size_t left_ = 0;
};

}  // namespace lorv::engine
