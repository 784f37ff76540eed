#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "framework/drawing/device_context.h"
#include "grid/items/button_item.h"
#include "grid/items/presentation_item.h"
#include "tests/support/print.h"
#include "tools/lorv-desk/grid_window.h"
#include "tools/lorv-desk/sample_grid.h"

// What every desktop owes to the eyes in a grid: the sample with every kind of cell fits into its window, no
// text in it is cut off, and every cell that has something to show shows it. A desktop joins by a type with
// Make() and kHasPictures, and INSTANTIATE_TYPED_TEST_SUITE_P.
namespace lorv::test {

template <class Source>
class GridLooks : public testing::Test {
 protected:
  GridLooks() : desktop_(Source::Make()), scope_(*desktop_) {}

  void Settle() const {
    while (desktop_->Pump(false)) {
    }
  }
  template <class Look>
  void ForEach(Look look) {
    for (const tool::SampleGrid& sample : tool::SampleGrids()) {
      SCOPED_TRACE(sample.name);
      tool::GridWindow window(std::make_unique<CBCGPBasicGridCtrl>());
      ASSERT_TRUE(window.Open(_T("grid"), {tool::kSampleGridWidth, tool::kSampleGridHeight}));
      window.ShowWindow(SW_SHOW);
      Settle();
      tool::FillSampleGrid(window.Grid(), sample);
      Settle();
      look(window);
    }
  }

  // What a cell's text needs, and the room that it has.
  static void ExpectWhole(CBCGPBasicGridCtrl& grid, CBCGPGridItem& item) {
    SCOPED_TRACE("\"" + Utf8(item.FormatItem()) + "\"");
    constexpr int kMargins = 7;  // of a text, with the line beside the cell
    CRect room = item.GetRect();
    const CRect button = item.GetButtonRect();
    if (button.IsRectEmpty() == FALSE) room.right = button.left;
    CClientDC dc(&grid);
    const auto* shown = dynamic_cast<CBCGPGridPresentationItem*>(&item);
    dc.SelectObject(shown != nullptr && shown->IsBold() != 0 ? grid.GetBoldFont() : grid.GetFont());
    const auto* buttons = dynamic_cast<const CBCGPGridButtonItem*>(&item);
    if (buttons != nullptr && buttons->IsButtonItem()) {
      const auto places = ButtonPlaces(room, buttons->GetBtnNames().GetSize());
      for (std::size_t i = 0; i < places.size(); ++i)
        EXPECT_LE(dc.GetTextExtent(buttons->GetBtnNames().GetAt(static_cast<int>(i))).cx + 4,
                  places[i].Width());
      return;
    }
    CString text = item.FormatItem();
    text.Replace(_T("\\n"), _T("\n"));
    CRect needed(0, 0, room.Width() - kMargins, 0);
    dc.DrawText(text, &needed, DT_CALCRECT | DT_NOPREFIX | (item.IsMultiline() != FALSE ? DT_WORDBREAK : 0));
    EXPECT_LE(needed.Width(), room.Width() - kMargins);
    EXPECT_LE(needed.Height(), room.Height());
  }

 private:
  std::unique_ptr<Desktop> desktop_;
  ScopedDesktop scope_;
};

TYPED_TEST_SUITE_P(GridLooks);

TYPED_TEST_P(GridLooks, AllOfItFitsIntoTheWindow) {
  this->ForEach([](tool::GridWindow& window) {
    CBCGPBasicGridCtrl& grid = window.Grid();
    EXPECT_LE(grid.GetHorzScrollTotal(), grid.GetListRect().Width());
    EXPECT_LE(grid.GetVertScrollTotal(), grid.GetListRect().Height());
  });
}

TYPED_TEST_P(GridLooks, NoTextIsCutOff) {
  this->ForEach([](tool::GridWindow& window) {
    CBCGPBasicGridCtrl& grid = window.Grid();
    int seen = 0;
    for (int row = 0; row < grid.GetRowCount(); ++row) {
      for (int column = 0; column < grid.GetColumnCount(); ++column) {
        CBCGPGridItem* const item = grid.GetItem(row, column);
        ASSERT_NE(item, nullptr);
        if (item->GetRect().IsRectEmpty() != FALSE || item->GetValue().vt == VT_BOOL) continue;
        TestFixture::ExpectWhole(grid, *item);
        ++seen;
      }
    }
    EXPECT_GT(seen, 50);
    CClientDC dc(&grid);
    dc.SelectObject(grid.GetBoldFont());
    for (int column = 0; column < grid.GetColumnCount(); ++column)
      EXPECT_LE(dc.GetTextExtent(grid.GetColumnName(column)).cx + 6, grid.GetColumnWidth(column))
          << Utf8(grid.GetColumnName(column));
  });
}

// More colours than one in every cell that holds something, none in the hidden row.
TYPED_TEST_P(GridLooks, PicturesShowEveryCell) {
  this->ForEach([](tool::GridWindow& window) {
    CBCGPBasicGridCtrl& grid = window.Grid();
    CSize size;
    const std::vector<DWORD> picture = PeerOf(grid.m_hWnd)->Picture(size);
    EXPECT_EQ(!picture.empty(), TypeParam::kHasPictures);
    if (picture.empty()) return;
    // With the border where there is one.
    const auto peer = PeerOf(grid.m_hWnd);
    const CRect around(peer->WindowRect());
    ASSERT_EQ(size, around.Size());
    const CPoint inside = CPoint(peer->ClientOrigin()) - CSize(around.TopLeft());
    for (int row = 0; row < grid.GetRowCount(); ++row) {
      for (int column = 0; column < grid.GetColumnCount(); ++column) {
        CBCGPGridItem* const item = grid.GetItem(row, column);
        CRect rect = item->GetRect();
        if (rect.IsRectEmpty() != FALSE || (item->FormatItem().IsEmpty() && item->GetFlags() == 0)) continue;
        rect.DeflateRect(2, 2, 3, 3);
        rect.OffsetRect(inside);
        std::set<DWORD> colours;
        for (LONG y = rect.top; y < rect.bottom; ++y)
          for (LONG x = rect.left; x < rect.right; ++x)
            colours.insert(picture[static_cast<std::size_t>(y * size.cx + x)]);
        const bool is_text = dynamic_cast<CBCGPGridPresentationItem*>(item) != nullptr;
        EXPECT_GT(colours.size(), is_text ? 1U : 0U) << row << "," << column;
      }
    }
  });
}

REGISTER_TYPED_TEST_SUITE_P(GridLooks, AllOfItFitsIntoTheWindow, NoTextIsCutOff, PicturesShowEveryCell);

}  // namespace lorv::test
