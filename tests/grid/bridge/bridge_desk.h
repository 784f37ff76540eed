#pragma once

#include <memory>

#include "tests/grid/suite_desk.h"
#include "tests/support/event_sheet.h"

namespace lorv_test {

// The grid with what only descendants may call.
class OpenedBridge : public CBcgTrueDbGridCtrl {
 public:
  using CBcgTrueDbGridCtrl::OnDrawRowHeaderItem;
  using CBcgTrueDbGridCtrl::OnSelChanged;
  using CBcgTrueDbGridCtrl::OnSelChanging;
  using CBcgTrueDbGridCtrl::SetHeaderItemWidth;
  using CBcgTrueDbGridCtrl::TrackToolTip;
};

// The bridge's grid in a window that hears its events.
class BridgeDesk : public SuiteDesk<OpenedBridge> {
 protected:
  BridgeDesk() {
    MakeSheet();
    MakeGrid();
  }
  ~BridgeDesk() override {
    if (sheet != nullptr) sheet->on = nullptr;
    grid.reset();
  }

  void MakeSheet() {
    sheet = std::make_unique<EventSheet>();
    sheet->Create(nullptr, _T("sheet"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 500, 400), nullptr, 0);
    sheet->MuteNoise();
    Run();
  }
  void MakeGrid() {
    grid = std::make_unique<OpenedBridge>();
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 430, 300), sheet.get(), kTableId);
    Run();
  }
  void Forget() override { sheet->Taken(); }
  void Click(CPoint screen) {
    desktop.MoveMouse(screen);
    Run();
    desktop.MouseDown();
    Run();
    desktop.MouseUp();
    Run();
  }

  std::unique_ptr<EventSheet> sheet;
};

}  // namespace lorv_test
