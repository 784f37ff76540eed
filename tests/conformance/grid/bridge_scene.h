#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "grid/CBcgTrueDbGridCtrl.h"
#include "tests/conformance/behaviour_driver.h"
#include "tests/conformance/grid/grid_points.h"
#include "tests/support/event_sheet.h"

// What a dialog hears of its table, event by event, on every kind of desktop. Each step ends with where the
// user is then: the current cell, how many rows there are, and what stands in the editor.
namespace lorv_test {

struct BridgeScene {
  // The grid with what only descendants may call.
  class Grid : public CBcgTrueDbGridCtrlEx {
   public:
    using CBcgTrueDbGridCtrlEx::GetRow;
    using CBcgTrueDbGridCtrlEx::OnBeginDrag;
    using CBcgTrueDbGridCtrlEx::ScrollTo;
  };

  explicit BridgeScene(BehaviourDriver& player) : driver(player) {}

  // A fresh dialog with a table; the text of a cell is its row's letter and its column's number.
  void Make(int rows, int columns);
  void Say(const std::string& line) { trace.push_back("  " + line); }
  void SayState();
  void SayCell(int row, int column);
  // What was heard since; of what painting reports only the first of each.
  void SayHeard();
  // Only these are noted until the end of the step.
  void Hear(const std::set<int>& events) { sheet->OnlyHear(events); }
  // The next event of that number does it, once.
  void When(int event, std::function<void()> action);
  void Choose(int row, int column);
  // Opens the editor of a cell and writes into it; nothing of that is noted.
  void Edit(int row, int column, LPCTSTR text);
  void Press(std::initializer_list<int> keys);
  POINT Cell(int row, int column) const { return CellPoint(*grid, row, column); }
  void Forget();

  BehaviourDriver& driver;
  std::vector<std::string> trace;
  std::unique_ptr<EventSheet> sheet;
  std::unique_ptr<Grid> grid;
};

struct BridgeStep {
  const char* name;
  std::function<void(BridgeScene&)> play;
};

std::vector<BridgeStep> BridgeOrderSteps();
std::vector<BridgeStep> BridgeKeySteps();
std::vector<BridgeStep> BridgeMouseSteps();
std::vector<BridgeStep> BridgePartSteps();
std::vector<BridgeStep> BridgeCancelSteps();
std::vector<BridgeStep> BridgeHostileSteps();
std::vector<BridgeStep> BridgeTableSteps();
std::vector<BridgeStep> BridgeScreenSteps();
std::vector<BridgeStep> BridgeHeightSteps();
std::vector<BridgeStep> BridgeAutoRowSteps();

// Plays the whole script; the trace, a line an event.
std::vector<std::string> PlayBridge(BehaviourDriver& driver);
std::vector<std::string> KeptBridgeTrace();

}  // namespace lorv_test
