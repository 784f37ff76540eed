#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "TEXPRESSCAL/language/expression_node.h"
#include "framework/native/working_size.h"
#include "framework/text/text_compare.h"

namespace lorv {

// The nodes of one expression, and the texts of its text leaves. A formula of usual length finds room in the
// object itself; longer ones take blocks from the heap, of which the first is kept for the next formula.
class NodePool {
 public:
  NodePool() = default;
  NodePool(const NodePool&) = delete;
  NodePool& operator=(const NodePool&) = delete;

  ExprNode* Take() {
    if (next_ == end_) AddBlock();
    return next_++;
  }

  // A terminated copy of a text, which lives as long as the nodes.
  LPCTSTR KeepText(TextView text) {
    texts_.push_back(std::make_unique_for_overwrite<TCHAR[]>(text.size() + 1));
    const LPTSTR kept = texts_.back().get();
    *std::copy(text.begin(), text.end(), kept) = 0;
    return kept;
  }

  void Clear() {
    texts_.clear();
    if (blocks_.size() > 1) blocks_.resize(1);
    used_blocks_ = 0;
    Use(inline_.data(), inline_.size());
  }

 private:
  static constexpr std::size_t kInline = WorkingSize(40, 1);
  static constexpr std::size_t kBlock = WorkingSize(512, 2);

  void Use(ExprNode* first, std::size_t count) {
    next_ = first;
    end_ = first + count;
  }

  // Kept apart from Take, which every node goes through.
  [[gnu::noinline]] void AddBlock() {
    if (used_blocks_ == blocks_.size()) blocks_.push_back(std::make_unique_for_overwrite<Block>());
    Use(blocks_[used_blocks_++]->data(), kBlock);
  }

  using Block = std::array<ExprNode, kBlock>;

  std::array<ExprNode, kInline> inline_;
  ExprNode* next_ = inline_.data();
  ExprNode* end_ = inline_.data() + kInline;
  std::vector<std::unique_ptr<Block>> blocks_;
  std::size_t used_blocks_ = 0;
  std::vector<std::unique_ptr<TCHAR[]>> texts_;
};

}  // namespace lorv
