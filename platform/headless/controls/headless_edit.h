#pragma once

#include "platform/headless/controls/headless_edit_text.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "platform/headless/window/headless_window.h"
#include "platform/models/controls/edit_behaviour.h"

namespace lorv {

// An edit in memory. Several lines wrap at the width unless ES_AUTOHSCROLL is set.
class HeadlessEdit : public EditBehaviour<HeadlessWindow> {
 public:
  HeadlessEdit(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request);

 protected:
  void PaintSelf(Canvas& canvas) override;

 private:
  class Pane;
  Pane& pane_;
  explicit HeadlessEdit(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request,
                        std::unique_ptr<Pane> pane);
};

}  // namespace lorv
