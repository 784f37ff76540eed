#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "framework/text/text_compare.h"

namespace lorv::engine {

// The texts of a workbook's cells, known by numbers from 0 in the order of their adding. A text that is
// handed out stays where it is as long as the pool lives. Equal texts are not made one. One thread at a time.
//
//   pool.At(pool.Add(_T("a")))  gives _T("a")
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
