#pragma once

#include "platform/qt/window/qt_window.h"

class QScrollBar;

namespace lorv {

// A window that draws itself: grids, dialogs, tips. Its bars stand at the right and the bottom edge.
class QtBoard : public QtWindow {
 public:
  QtBoard(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);

 protected:
  Edges Margins() const override;
  bool IsFixed() const override;
  void EraseGround(Canvas& canvas, const CRect& part) override;
  void ScrollChanged() override;
  void ShowStyle(DWORD before) override;
  bool TakePaint(QObject* receiver, QPaintEvent& event) override;

 private:
  int Line() const;
  void ProvideBar(int bar);
  void PlaceBars();
  void Moved(int bar, int action);
  void Released(int bar);
  // Where the user holds the handle, and back to where the window is.
  int HandlePlace(int bar) const;
  void ResetHandle(int bar);

  std::array<QScrollBar*, 2> bars_ = {};
  bool dragged_ = false;
};

}  // namespace lorv
