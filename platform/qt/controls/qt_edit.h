#pragma once

#include "platform/models/controls/edit_behaviour.h"
#include "platform/qt/controls/qt_control.h"
#include "platform/qt/controls/qt_edit_pane.h"
#include "platform/qt/desktop/qt_desk.h"

namespace lorv {

// An edit over the widget set's own. Several lines wrap at the width unless ES_AUTOHSCROLL is set.
class QtEdit : public EditBehaviour<QtControl> {
 public:
  QtEdit(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);

 protected:
  void ShowStyle(DWORD before) override;

 private:
  QtEditPane* shown_ = nullptr;
};

}  // namespace lorv
