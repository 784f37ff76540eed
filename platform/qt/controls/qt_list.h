#pragma once

#include "platform/models/controls/list_behaviour.h"
#include "platform/qt/controls/qt_control.h"
#include "platform/qt/controls/qt_items.h"
#include "platform/qt/desktop/qt_desk.h"

class QListWidget;

namespace lorv {

// A list box over QListWidget. The widget holds the items and the selection, the shared behaviour chooses and
// scrolls, by whole rows.
class QtList : public ListBehaviour<QtControl, QtItems> {
 public:
  QtList(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);

 protected:
  bool IsSelected(int index) const override;
  void SetSelected(int index, bool on) override;
  CRect RowPlace(int index) const override;
  int RowHeight() const override;
  int RowAt(CPoint at) const override;
  int Top() const override;
  void SetTop(int index) override;
  void ShowChoice() override;

 private:
  QtList(QtDesk& desk, HWND handle, const WindowRequest& request, QListWidget* list);

  QListWidget& list_;
};

}  // namespace lorv
