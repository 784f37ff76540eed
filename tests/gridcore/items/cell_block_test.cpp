#include "gridcore/items/cell_block.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "framework/native/poisoned_memory.h"
#include "gridcore/control/grid_control.h"

namespace {

using lorv::CellBlock;
using lorv::CellBlockUser;

std::uintptr_t Address(const CBCGPGridItem* item) {
  return reinterpret_cast<std::uintptr_t>(item);
}

bool StandTogether(const CBCGPGridItem* one, const CBCGPGridItem* next) {
  return Address(next) - Address(one) == sizeof(CBCGPGridItem);
}

int g_ended = 0;

class Counted : public CBCGPGridItem {
  DECLARE_DYNCREATE(Counted)
 public:
  Counted() : CBCGPGridItem(_variant_t()) {}
  ~Counted() override { ++g_ended; }
};
IMPLEMENT_DYNCREATE(Counted, CBCGPGridItem)

struct Before {
  virtual ~Before() = default;
  int room[3] = {};
};

// Its cell does not begin where its memory does.
class BehindAnother : public Before, public CBCGPGridItem {
 public:
  explicit BehindAnother(bool fails) : CBCGPGridItem(_variant_t(1)) {
    if (fails) throw std::bad_alloc();
  }
};

// Makes another row of its grid while its own is being made.
class Nesting : public CBCGPGridItem {
  DECLARE_DYNCREATE(Nesting)
 public:
  Nesting() : CBCGPGridItem(_variant_t()) {}
  BOOL OnCreate(int row, int column) override {
    static bool within = false;
    if (!within) {
      within = true;
      const std::unique_ptr<CBCGPGridRow> other(GetOwnerList()->CreateRow(4));
      EXPECT_EQ(other->GetItemCount(), 4);
      within = false;
    }
    return CBCGPGridItem::OnCreate(row, column);
  }
};
IMPLEMENT_DYNCREATE(Nesting, CBCGPGridItem)

// A value that ends a cell when it goes.
class EndsACell : public IUnknown {
 public:
  explicit EndsACell(CBCGPGridItem* cell) : cell_(cell) {}
  virtual ~EndsACell() = default;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    if (--references_ == 0) delete std::exchange(cell_, nullptr);
    return references_;
  }
  bool HasEndedIt() const { return cell_ == nullptr; }

 private:
  CBCGPGridItem* cell_;
  ULONG references_ = 1;
};

class CoreGrid : public CBCGPGridCtrl {
 public:
  CoreGrid(int rows, int columns) {
    for (int column = 0; column < columns; ++column) InsertColumn(column, _T("c"), 80, -1, FALSE);
    for (int row = 0; row < rows; ++row) AddRow(FALSE);
  }
};

struct alignas(64) OverAligned : CBCGPGridItem {
  OverAligned() : CBCGPGridItem(_variant_t()) {}
};

}  // namespace

TEST(CellBlock, MakesAsManyAsThereIsRoomFor) {
  const CellBlockUser block(CellBlock::Create(3));
  std::vector<std::unique_ptr<CBCGPGridItem>> cells;
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(block->IsFull());
    cells.emplace_back(block->Make());
  }
  EXPECT_TRUE(block->IsFull());
  EXPECT_EQ(block->Make(), nullptr);
  EXPECT_TRUE(StandTogether(cells[0].get(), cells[1].get()));
  EXPECT_TRUE(StandTogether(cells[1].get(), cells[2].get()));
  cells[1].reset();
  EXPECT_EQ(block->Make(), nullptr) << "a place is used once";
}

TEST(CellBlock, RoomIsWithinItsBounds) {
  for (const int asked : {-5, 0, 1}) {
    const CellBlockUser block(CellBlock::Create(asked));
    const std::unique_ptr<CBCGPGridItem> cell(block->Make());
    EXPECT_TRUE(block->IsFull()) << asked;
  }
  const CellBlockUser block(CellBlock::Create(1000));
  std::vector<std::unique_ptr<CBCGPGridItem>> cells;
  while (!block->IsFull()) cells.emplace_back(block->Make());
  EXPECT_EQ(cells.size(), static_cast<std::size_t>(CellBlock::kMostCells));
}

// The heap's own checks say whether the memory goes once, and not too early.
TEST(CellBlock, EndsWithTheLastOfItsCells) {
  CellBlockUser block(CellBlock::Create(4));
  std::unique_ptr<CBCGPGridItem> first(block->Make());
  const std::unique_ptr<CBCGPGridItem> second(block->Make());
  first.reset();
  block.reset();
  second->SetValue(_variant_t(_T("still here")), FALSE);
  EXPECT_EQ(second->FormatItem(), _T("still here"));
}

TEST(CellBlock, PlacesThatAreEmptyAreForbidden) {
#ifndef LORV_ADDRESS_SANITIZER
  EXPECT_FALSE(lorv::IsPoisoned(&g_ended));
#else
  const CellBlockUser block(CellBlock::Create(2));
  CBCGPGridItem* const cell = block->Make();
  EXPECT_FALSE(lorv::IsPoisoned(cell));
  EXPECT_TRUE(lorv::IsPoisoned(cell + 1));
  delete cell;
  EXPECT_TRUE(lorv::IsPoisoned(cell));
#endif
}

TEST(CellBlock, AValueMayEndAnotherCell) {
  CellBlockUser block(CellBlock::Create(2));
  std::unique_ptr<CBCGPGridItem> first(block->Make());
  EndsACell ends(block->Make());
  first->SetValue(_variant_t(static_cast<IUnknown*>(&ends), true), FALSE);
  ends.Release();
  block.reset();
  EXPECT_FALSE(ends.HasEndedIt());
  first.reset();
  EXPECT_TRUE(ends.HasEndedIt());
}

TEST(CellBlock, RowsOfAGridHaveTheirPlainCellsTogether) {
  CoreGrid grid(1, 300);
  const CBCGPGridRow* row = grid.GetRow(0);
  ASSERT_EQ(row->GetItemCount(), 300);
  // The first cell that is asked for is made alone, and the others with the second one.
  const CBCGPGridItem* const first = row->GetItem(299);
  EXPECT_TRUE(StandTogether(row->GetItem(0), row->GetItem(1)));
  EXPECT_FALSE(StandTogether(row->GetItem(298), row->GetItem(299)));
  EXPECT_EQ(row->GetItem(299), first);
  EXPECT_TRUE(StandTogether(row->GetItem(125), row->GetItem(126)));
  EXPECT_FALSE(StandTogether(row->GetItem(126), row->GetItem(127))) << "the next block begins";
  EXPECT_TRUE(StandTogether(row->GetItem(297), row->GetItem(298)));
}

TEST(CellBlock, CellsOfOtherClassesStandApart) {
  CoreGrid grid(0, 4);
  grid.SetItemRTC(1, RUNTIME_CLASS(Counted));
  grid.SetItemRTC(2, RUNTIME_CLASS(CBCGPGridRow));  // no cell at all
  grid.SetItemRTC(3, RUNTIME_CLASS(CBCGPGridItem));
  g_ended = 0;
  grid.AddRow(FALSE);
  const CBCGPGridRow* row = grid.GetRow(0);
  ASSERT_EQ(row->GetItemCount(), 4);
  EXPECT_NE(dynamic_cast<Counted*>(row->GetItem(1)), nullptr);
  EXPECT_EQ(row->GetItem(2)->GetRuntimeClass(), RUNTIME_CLASS(CBCGPGridItem));
  EXPECT_EQ(row->GetItem(3)->GetColumnId(), 3);
  grid.RemoveAll();
  EXPECT_EQ(g_ended, 1);
}

TEST(CellBlock, ACellOutlivesItsRow) {
  CoreGrid grid(2, 3);
  std::unique_ptr<CBCGPGridItem> kept(grid.GetRow(0)->GetItem(1));
  EXPECT_TRUE(grid.GetRow(0)->ReplaceItem(1, new CBCGPGridItem(_variant_t(5)), FALSE, TRUE));
  grid.RemoveRow(0, FALSE);
  kept->SetValue(_variant_t(_T("kept")), FALSE);
  // Another row may take it over.
  CBCGPGridRow row;
  row.AddItem(kept.release());
  EXPECT_EQ(row.GetItem(0)->FormatItem(), _T("kept"));
}

TEST(CellBlock, ARowMadeWithinARowIsWhole) {
  CoreGrid grid(0, 3);
  grid.SetItemRTC(1, RUNTIME_CLASS(Nesting));
  grid.AddRow(FALSE);
  ASSERT_EQ(grid.GetRow(0)->GetItemCount(), 3);
  EXPECT_EQ(grid.GetRow(0)->GetItem(2)->GetColumnId(), 2);
}

TEST(CellBlock, CellsOfAnyShapeAreDeleted) {
  CObject* const behind = new BehindAnother(false);
  delete behind;
  EXPECT_THROW(new BehindAnother(true), std::bad_alloc);
  delete new (std::nothrow) CBCGPGridItem(_variant_t());
  alignas(CBCGPGridItem) std::byte place[sizeof(CBCGPGridItem)];
  new (place) CBCGPGridItem(_variant_t(2));
  static_cast<CBCGPGridItem*>(static_cast<void*>(place))->~CBCGPGridItem();
  auto* const aligned = new OverAligned;
  EXPECT_EQ(Address(aligned) % 64, 0U);
  delete aligned;
}
