#include "grid/view/grid_zoom.h"

#include "grid/commands/grid_commands.h"
#include "tests/grid/basic/basic_desk.h"

namespace {

class GridZoom : public lorv_test::BasicDesk {
 protected:
  GridZoom() {
    grid->InsertColumns(_T("a,b,c"), _T("80,33,51"), 0);
    grid->AppendRows(3);
    zoom = std::make_unique<lorv::GridZoom>(*grid);
  }
  std::string Sizes() const {
    std::string sizes;
    for (int column = 0; column < grid->GetColumnCount(); ++column)
      sizes += std::to_string(grid->GetColumnWidth(column)) + " ";
    return sizes + std::to_string(grid->GetRowHeight()) + " " +
           std::to_string(grid->GetRowHeaderRect().Width()) + " " +
           std::to_string(grid->GetFont()->Face().lfHeight);
  }

  std::unique_ptr<lorv::GridZoom> zoom;
};

}  // namespace

TEST_F(GridZoom, EverythingGrowsAndShrinks) {
  const int row = grid->GetRowHeight();
  const int header = grid->GetRowHeaderRect().Width();
  zoom->SetZoom(200);
  EXPECT_EQ(zoom->Zoom(), 200);
  EXPECT_EQ(grid->GetColumnWidth(0), 160);
  EXPECT_EQ(grid->GetColumnWidth(1), 66);
  EXPECT_EQ(grid->GetRowHeight(), 2 * row);
  EXPECT_EQ(grid->GetRowHeaderRect().Width(), 2 * header);
  EXPECT_EQ(grid->GetItemRect({1, 0}).Height(), 2 * row);
  zoom->SetZoom(50);
  EXPECT_EQ(grid->GetColumnWidth(0), 40);
}

TEST_F(GridZoom, TheWheelWithControlIsAKeyOfTheCommands) {
  lorv::GridCommands commands(*grid);
  const auto turn = [&](int delta, WORD held) {
    grid->SendMessage(WM_MOUSEWHEEL, static_cast<WPARAM>(MAKELONG(held, static_cast<WORD>(delta))), 0);
    Run();
  };
  grid->AppendRows(100);
  Run();
  // Nobody takes it yet: it scrolls, a fine wheel by what it has turned in all.
  turn(-120, MK_CONTROL);
  const int scrolled = grid->GetVertScrollOffset();
  EXPECT_GT(scrolled, 0);
  turn(120, MK_CONTROL);
  for (int i = 0; i < 3; ++i) turn(-40, MK_CONTROL);
  EXPECT_EQ(grid->GetVertScrollOffset(), scrolled);
  zoom->Bind(commands);
  for (int i = 0; i < 3; ++i) turn(40, MK_CONTROL);
  EXPECT_EQ(zoom->Zoom(), 110);
  turn(-240, MK_CONTROL);
  EXPECT_EQ(zoom->Zoom(), 90);
  for (int i = 0; i < 40; ++i) turn(120, MK_CONTROL);
  EXPECT_EQ(zoom->Zoom(), 300);
  for (int i = 0; i < 40; ++i) turn(-120, MK_CONTROL);
  EXPECT_EQ(zoom->Zoom(), 50);
  commands.SetKeys(_T("zoom_in"), _T("Ctrl+Plus"));
  turn(120, MK_CONTROL);
  EXPECT_EQ(zoom->Zoom(), 50);
  commands.Bind(_T("zoom_out"), [this](CBCGPGridCtrl&) { return grid.reset(), true; });
  turn(-360, MK_CONTROL);
  EXPECT_EQ(grid, nullptr);
}

TEST_F(GridZoom, AnySeriesComesBackToThePixel) {
  zoom->SetZoom(110);
  zoom->SetZoom(100);
  const std::string before = Sizes();
  for (const int percent : {50, 300, 75, 110, 125, 90, 51, 299, 100}) zoom->SetZoom(percent);
  EXPECT_EQ(Sizes(), before);
}

TEST_F(GridZoom, StaysWithinItsLimits) {
  zoom->SetZoom(10);
  EXPECT_EQ(zoom->Zoom(), lorv::kLeastZoom);
  EXPECT_FALSE(zoom->ZoomOut());
  zoom->SetZoom(1000000);
  EXPECT_EQ(zoom->Zoom(), lorv::kMostZoom);
  EXPECT_FALSE(zoom->ZoomIn());
  EXPECT_TRUE(zoom->ZoomOut());
  EXPECT_EQ(zoom->Zoom(), 250);
  zoom->SetZoom(130);
  EXPECT_TRUE(zoom->ZoomIn());
  EXPECT_EQ(zoom->Zoom(), 150);
  zoom->SetZoom(130);
  EXPECT_TRUE(zoom->ZoomOut());
  EXPECT_EQ(zoom->Zoom(), 125);
}

TEST_F(GridZoom, WhatTheUserSetsCountsAtTheZoomOfTheMoment) {
  zoom->SetZoom(200);
  grid->SetColumnWidth(0, 100);
  zoom->SetZoom(100);
  EXPECT_EQ(grid->GetColumnWidth(0), 50);
  EXPECT_EQ(grid->GetColumnWidth(1), 33);
}

TEST_F(GridZoom, HiddenColumnsComeBackInTheirSize) {
  grid->SetColumnVisible(1, FALSE);
  zoom->SetZoom(300);
  EXPECT_EQ(grid->GetColumnWidth(1), 0);
  grid->SetColumnVisible(1, TRUE);
  EXPECT_EQ(grid->GetColumnWidth(1), 99);
}

TEST_F(GridZoom, AGridWithoutAWindowKeepsItsColumnsRight) {
  CBCGPGridCtrl plain;
  plain.InsertColumn(0, _T("a"), 40);
  lorv::GridZoom other(plain);
  other.SetZoom(150);
  EXPECT_EQ(plain.GetColumnWidth(0), 60);
}

TEST_F(GridZoom, CommandsGiveIt) {
  lorv::GridCommands commands(*grid);
  zoom->Bind(commands);
  grid->SetFocus();
  EXPECT_TRUE(commands.Run(_T("zoom_in")));
  EXPECT_EQ(zoom->Zoom(), 110);
  EXPECT_TRUE(commands.Run(_T("zoom_out")));
  EXPECT_TRUE(commands.Run(_T("zoom_out")));
  EXPECT_EQ(zoom->Zoom(), 90);
  EXPECT_TRUE(commands.Run(_T("zoom_reset")));
  EXPECT_EQ(zoom->Zoom(), 100);
  KeyWith(VK_CONTROL, VK_OEM_PLUS);
  EXPECT_EQ(zoom->Zoom(), 110);
}

TEST_F(GridZoom, TheGridMayEndBeforeItAndWithinIt) {
  grid.reset();
  zoom->SetZoom(200);
  EXPECT_FALSE(zoom->ZoomIn());
  EXPECT_EQ(zoom->Zoom(), 100);
  auto ended = std::make_unique<lorv_test::LaidOut>();
  ended->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 100), &top, 8);
  zoom = std::make_unique<lorv::GridZoom>(*ended);
  ended->on = [&] { ended.reset(); };
  zoom->SetZoom(200);
  EXPECT_EQ(ended, nullptr);
  ended = std::make_unique<lorv_test::LaidOut>();
  ended->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 100), &top, 9);
  zoom = std::make_unique<lorv::GridZoom>(*ended);
  ended->on = [&] { zoom.reset(); };
  zoom->SetZoom(200);
  EXPECT_EQ(zoom, nullptr);
}
