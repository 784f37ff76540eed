#pragma once

#include <functional>
#include <list>
#include <memory>
#include <unordered_map>

#include "gridcore/rows/grid_row.h"

namespace lorv {

// Rows of a virtual table that are kept made; more than fit on any screen, and few beside millions.
constexpr std::size_t kMostVirtualRows = 4096;

// The rows of a table that holds none: each is made when it is asked for, and goes when kMostVirtualRows
// others were asked for since.
//
// Edges: null outside the table. A row that is in use (an editor is open in it) stays; one that is held by
//   Hold lives until it is let go of, though the table may have made another one for its number by then.
// The maker makes a row for a number; `leave` is called with a row before it goes. The maker may ask for rows
// (a row that it makes within its own making is the one that stays), resize and forget, but not end the
// table: whoever ends it asks IsMaking before. One thread at a time.
class COMM_LORV_API VirtualRows {
 public:
  using Maker = std::function<std::unique_ptr<CBCGPGridRow>(int)>;
  using Asked = std::function<bool(const CBCGPGridRow&)>;
  using Leave = std::function<void(CBCGPGridRow&)>;

  VirtualRows(Maker make, Asked in_use, Leave leave);
  VirtualRows(const VirtualRows&) = delete;
  VirtualRows& operator=(const VirtualRows&) = delete;
  ~VirtualRows() { Forget(); }

  int Size() const { return size_; }
  void Resize(int size);  // forgets the rows that were made
  CBCGPGridRow* At(int index);
  int IndexOf(const CBCGPGridRow& row) const;
  std::shared_ptr<CBCGPGridRow> Hold(const CBCGPGridRow& row) const;
  // The next look-up makes each anew; rows in use too.
  void Forget();
  std::size_t MadeCount() const { return made_.size(); }
  bool IsMaking() const { return making_ > 0; }

 private:
  struct Made {
    std::shared_ptr<CBCGPGridRow> row;
    std::list<int>::iterator asked;
  };

  std::shared_ptr<CBCGPGridRow> Make(int index);
  void LetGo(int index);
  void Trim();

  Maker make_;
  Asked in_use_;
  Leave leave_;
  int size_ = 0;
  int making_ = 0;
  std::unordered_map<int, Made> made_;
  std::list<int> asked_;  // the one asked for last in front
};

}  // namespace lorv
