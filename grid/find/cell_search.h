#pragma once

#include <vector>

#include "grid/find/grid_find.h"
#include "grid/find/text_matcher.h"

namespace lorv {

// One walk over the cells of a grid as it stands: good until handlers have run.
class CellSearch {
 public:
  CellSearch(const CBCGPGridCtrl& grid, const FindOptions& options, const std::vector<CBCGPGridRange>& scope);

  // The first cell that matches from that one on, itself included; the null id: none.
  CBCGPGridItemID First(CBCGPGridItemID from, bool backwards) const;
  // Where the walk begins.
  CBCGPGridItemID Start(bool backwards) const;
  CBCGPGridItemID Behind(const CBCGPGridItemID& cell, bool backwards) const;
  // Whether the cell is one of those that are searched, and holds the text.
  bool Matches(const CBCGPGridItemID& cell) const;
  const TextMatcher& Matcher() const { return matcher_; }

 private:
  bool IsRowSearched(int row) const;
  bool InScope(const CBCGPGridItemID& cell) const;
  bool IsHiddenByMerge(const CBCGPGridItemID& cell) const;
  int InRow(int row, int column, bool backwards) const;

  const CBCGPGridCtrl& grid_;
  const FindOptions& options_;
  const std::vector<CBCGPGridRange>& scope_;
  TextMatcher matcher_;
  std::vector<int> columns_;  // those that are searched, ascending
  int first_row_ = 0;
  int last_row_ = -1;
};

}  // namespace lorv
