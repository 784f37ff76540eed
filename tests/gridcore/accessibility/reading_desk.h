#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "framework/windows/accessible_table.h"
#include "framework/windows/accessible_window.h"
#include "tests/gridcore/control/grid_desk.h"
#include "tests/support/print.h"

namespace lorv_test {

// A grid as a screen reader meets it: by the objects of its window and by what is reported.
class ReadingDesk : public GridDesk {
 protected:
  using Object = std::shared_ptr<lorv::AccessibleObject>;

  Object Table() const { return lorv::AccessibleOf(grid->m_hWnd); }
  Object Cell(int row, int column) const { return Table()->CellAt(row, column); }
  std::string Value(int row, int column) const { return Cell(row, column)->Value().ToUtf8(); }
  std::string Name(int row, int column) const { return Cell(row, column)->Name().ToUtf8(); }
  bool Has(int row, int column, unsigned bits) const { return (Cell(row, column)->State() & bits) == bits; }
  bool Offers(int row, int column, lorv::AccessAction action) const {
    const auto actions = Cell(row, column)->Actions();
    return std::find(actions.begin(), actions.end(), action) != actions.end();
  }
  // What was reported of the grid's cells: "focus 1,2", "structure".
  std::vector<std::string> Report() {
    constexpr const char* kNames[] = {"focus", "name", "value", "selection", "state", "structure"};
    std::vector<std::string> all;
    for (const auto& one : desktop.TakeReports()) {
      if (one.window != grid->m_hWnd) continue;
      const auto cell = one.number == 0 ? nullptr : Table()->Numbered(one.number);
      std::string text = kNames[static_cast<int>(one.event)];
      if (cell != nullptr) text += " " + std::to_string(cell->Row()) + "," + std::to_string(cell->Column());
      all.push_back(text);
    }
    return all;
  }
  bool WasShown(const std::string& what) {
    const auto all = Report();
    return std::find(all.begin(), all.end(), what) != all.end();
  }
};

}  // namespace lorv_test
