#pragma once

#include "platform/models/controls/combo_behaviour.h"
#include "platform/qt/controls/qt_control.h"
#include "platform/qt/controls/qt_items.h"
#include "platform/qt/desktop/qt_desk.h"

namespace lorv {

class DropList;

// The keys go through the drop-down list even while the widget's own list is shown; that list handles the
// mouse.
class QtCombo : public ComboBehaviour<QtControl, QtItems> {
 public:
  QtCombo(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);

 protected:
  HWND KeyTarget() const override;
  CRect EditPlace() const override;
  int RowHeight() const override;
  void ShowChoice() override;
  void ShowDropped(bool on) override;
  void ShowDroppedWidth(UINT width) override;

 private:
  QtCombo(QtDesk& desk, HWND handle, const WindowRequest& request, DropList* list);
  void PickedByMouse(int index);
  void ListClosed();

  DropList& list_;
  int picked_ = -1;  // by the mouse in the list that is open; -1: nothing
};

}  // namespace lorv
