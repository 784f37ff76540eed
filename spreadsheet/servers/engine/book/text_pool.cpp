#include "spreadsheet/servers/engine/book/text_pool.h"

#include <algorithm>
#include <utility>

// Texts of cells, packed into blocks that never move, so that a text may be handed out without a copy. Equal
// texts are not searched for: a search at each cell costs more than most tables would save.

namespace lorv::engine {
namespace {

constexpr std::size_t kBlockUnits = 32768;

}  // namespace

TCHAR* TextPool::Room(std::size_t units) {
  if (units > left_) {
    // Long texts have blocks of their own, so that no block's rest is lost to them.
    if (units > kBlockUnits / 4) {
      blocks_.push_back(std::make_unique<TCHAR[]>(units));
      return blocks_.back().get();
    }
    // The rest of the block before is given up; it is less than a quarter.
    blocks_.push_back(std::make_unique<TCHAR[]>(kBlockUnits));
    free_ = blocks_.back().get();
    left_ = kBlockUnits;
  }
  left_ -= units;
  return std::exchange(free_, free_ + units);
}

std::uint32_t TextPool::Add(TextView text) {
  TCHAR* const room = Room(text.size());
  std::copy(text.begin(), text.end(), room);
  texts_.emplace_back(room, text.size());
  return static_cast<std::uint32_t>(texts_.size() - 1);
}

}  // namespace lorv::engine
