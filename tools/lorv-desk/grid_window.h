#pragma once

#include <memory>
#include <utility>

#include "framework/windows/window.h"
#include "grid/basic/basic_grid.h"

namespace lorv::tool {

// A top-level window that a grid fills; the grid is the window's.
class GridWindow : public CWnd {
 public:
  explicit GridWindow(std::unique_ptr<CBCGPBasicGridCtrl> grid) : grid_(std::move(grid)) {}
  ~GridWindow() override;

  // Makes both windows, hidden; the size is that of the grid, in pixels at 96 dots per inch. False: the
  // desktop made none.
  bool Open(LPCTSTR title, CSize size);
  // Shows them until the user closes the window.
  void ShowUntilClosed();
  CBCGPBasicGridCtrl& Grid() { return *grid_; }

 protected:
  void OnSize(UINT type, int width, int height);
  void OnSetFocus(CWnd* former);
  DECLARE_MESSAGE_MAP()

 private:
  std::unique_ptr<CBCGPBasicGridCtrl> grid_;
};

}  // namespace lorv::tool
