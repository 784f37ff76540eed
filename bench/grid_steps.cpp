#include "bench/grid_steps.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>

#include "bench/grid_peer.h"
#include "grid/basic/basic_grid.h"
#include "grid/clipboard/grid_clipboard.h"
#include "grid/history/grid_history.h"
#include "platform/headless/desktop/headless_desktop.h"

// Steps over whole tables. An undo may take one and a half times what its step took.

namespace lorv_bench {
namespace {

constexpr int kColumns = 10;
using Work = std::function<bool()>;

// The processor's time, so that neighbours of the machine do not count.
double Milliseconds(const Work& work, bool& done) {
  const std::clock_t start = std::clock();
  done = work() && done;
  return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

class Steps {
 public:
  Steps(int rows, int rounds) : rows_(rows), rounds_(rounds) {
    grid_.Create(WS_POPUP | WS_VISIBLE, CRect(0, 0, 800, 600), nullptr, 1);
    for (int column = 0; column < kColumns; ++column) grid_.InsertColumn(column, _T("c"), 80, -1, FALSE);
    for (int row = 0; row < rows; ++row) {
      grid_.AddRow(FALSE);
      for (int column = 0; column < kColumns; ++column) {
        char16_t text[24];
        text[WriteCellText(text, row, column, 0)] = 0;
        grid_.SetValue(row, column, _variant_t(reinterpret_cast<LPCTSTR>(text)), FALSE);
      }
      // Numbers in no order.
      grid_.SetValue(row, 1, _variant_t(static_cast<int>(row * 7919LL % rows)), FALSE);
    }
    grid_.AdjustLayout();
    grid_.SelectAll();
  }

  bool Print() {
    std::printf("\n%d x %d cells in memory | ms | its undo | times\n|---|--:|--:|--:|\n", rows_, kColumns);
    lorv::GridClipboard clipboard(grid_);
    Row("copy", [&] { return clipboard.Copy(); });
    Row("paste without a history", [&] { return clipboard.Paste().pasted; });
    // From here on each step is recorded, and undone after it was measured.
    history_ = std::make_unique<lorv::GridHistory>(grid_);
    Row("paste", [&] { return clipboard.Paste().pasted; });
    Row("cut", [&] { return clipboard.Cut(); });
    Row("sort by a column of numbers", [&] { return Sorted(1); });
    Row("sort by a column of texts", [&] { return Sorted(4); });
    Row(
        "a tenth of the rows deleted", [&] { return grid_.DeleteSelectedRows() > 0; },
        [&] {
          grid_.SelectRange({0, 0, kColumns - 1, rows_ / 10});
        });
    Row(
        "all rows deleted", [&] { return grid_.DeleteSelectedRows() > 0; }, [&] { grid_.SelectAll(); });
    return done_;
  }

 private:
  bool Sorted(int column) {
    grid_.Sort(column);
    return grid_.GetSortColumn() == column;
  }

  void Row(const char* name, const Work& work, const std::function<void()>& before = {}) {
    double step = 1e9;
    double undo = 1e9;
    for (int round = 0; round < rounds_; ++round) {
      grid_.SelectAll();
      if (before) before();
      step = std::min(step, Milliseconds(work, done_));
      if (history_ == nullptr || !history_->CanUndo()) continue;
      undo = std::min(undo, Milliseconds([&] { return history_->Undo(); }, done_));
    }
    std::printf("| %s | %.1f |", name, step);
    undo < 1e9 ? std::printf(" %.1f | %.2f |\n", undo, undo / step) : std::printf(" | |\n");
    std::fflush(stdout);
  }

  int rows_;
  int rounds_;
  bool done_ = true;
  CBCGPBasicGridCtrl grid_;
  std::unique_ptr<lorv::GridHistory> history_;
};

}  // namespace

bool StepsAndClipboard(int rows, int rounds) {
  lorv::HeadlessDesktop desktop;
  const lorv::ScopedDesktop scope(desktop);
  return Steps(rows, rounds).Print();
}

}  // namespace lorv_bench
