#pragma once

#include <memory>

#include "framework/ports/drop_port.h"

namespace lorv {

class DesktopModel;

// A drag over the windows of a desktop that has none of its system: which receiver is under the mouse, what
// it is notified of and in which order, and what comes of the drop.
//
// The receiver is looked up before each call: windows and receivers may go in any of them. One thread.
//
//   DragModel drag(desktop, content, DROPEFFECT_COPY);  drag.Move({20, 30}, MK_LBUTTON);  drag.Drop()
class COMM_LORV_API DragModel {
 public:
  DragModel(const DesktopModel& desktop, std::shared_ptr<const DragContent> content, DROPEFFECT allowed)
      : desktop_(desktop), content_(std::move(content)), allowed_(allowed) {}

  void Move(POINT screen, DWORD keys);
  // Lets it go where it is; what was done.
  DROPEFFECT Drop();
  void Cancel();
  bool Over() const { return over_; }
  // What a drop would do now, and after the end what was done.
  DROPEFFECT Effect() const { return effect_; }
  HWND Target() const { return target_; }

 private:
  HWND ReceiverAt(POINT screen) const;
  DropReceiver* Receiver() const { return MappedDropReceiver(target_); }
  void LeaveTarget();
  DragPlace PlaceIn(HWND window) const;

  const DesktopModel& desktop_;
  std::shared_ptr<const DragContent> content_;
  DROPEFFECT allowed_;
  HWND target_ = nullptr;
  POINT screen_ = {0, 0};
  DWORD keys_ = 0;
  DROPEFFECT effect_ = DROPEFFECT_NONE;
  bool over_ = false;
};

}  // namespace lorv
