#pragma once

#include <functional>
#include <memory>
#include <string>

#include "tests/grid/suite_desk.h"

namespace lorv_test {

// The suite's grid in a window, with notes of what descendants are notified of.
class BasicGrid : public CBCGPBasicGridCtrl {
 public:
  std::vector<std::string> notes;
  std::function<void(const std::string&)> on;
  bool quiet_selection = true;

  std::vector<std::string> Taken() { return std::exchange(notes, {}); }
  void OnComboItemSelect() override { Say("combo"); }
  BOOL OnClickButton(CPoint point) override {
    // The test may end the grid here.
    const auto life = Watch();
    Say("button");
    return life.expired() ? FALSE : CBCGPBasicGridCtrl::OnClickButton(point);
  }
  using CBCGPBasicGridCtrl::CanEndInplaceEditOnChar;
  using CBCGPBasicGridCtrl::FilterItem;
  using CBCGPBasicGridCtrl::OnGetColumnAutoSize;
  using CBCGPBasicGridCtrl::OnHeaderDividerDblClick;
  using CBCGPBasicGridCtrl::OnResizeColumns;

 protected:
  void Say(const std::string& what) {
    notes.push_back(what);
    const auto copy = on;
    if (copy) copy(what);
  }
  void OnItemChanged(CBCGPGridItem* item, int row, int column) override {
    Say("changed " + std::to_string(row) + "," + std::to_string(column) + " " + item->FormatItem().ToUtf8());
  }
  void OnSelChanged(const CBCGPGridRange& range, BOOL selected) override {
    if (!quiet_selection)
      Say((selected != FALSE ? "chosen " : "left ") + std::to_string(range.m_nTop) + "," +
          std::to_string(range.m_nLeft));
    CBCGPBasicGridCtrl::OnSelChanged(range, selected);
  }
};

// Ends what the test wants when it is laid out.
class LaidOut : public CBCGPGridCtrl {
 public:
  std::function<void()> on;
  void AdjustLayout() override {
    const auto copy = on;
    if (copy)
      copy();
    else
      CBCGPGridCtrl::AdjustLayout();
  }
};

class BasicDesk : public SuiteDesk<BasicGrid> {
 protected:
  BasicDesk() { Make(); }
  void Make() {
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 430, 300), &top, 7);
    Run();
  }
  void Forget() override { grid->Taken(); }
};

}  // namespace lorv_test
