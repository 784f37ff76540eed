#pragma once

#include "platform/headless/controls/headless_items.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "platform/headless/window/headless_window.h"
#include "platform/models/controls/combo_behaviour.h"

namespace lorv {

// A combo box in memory over the shared behaviour. Its dropped list is state only, no window: tests choose by
// keys and messages. One row of text is kHeadlessHeight pixels high.
class HeadlessCombo : public ComboBehaviour<HeadlessWindow, HeadlessItems> {
 public:
  HeadlessCombo(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request)
      : ComboBehaviour(HeadlessItems((request.style & CBS_SORT) != 0, {}), desktop, handle, request) {}

 protected:
  CRect EditPlace() const override;
  int RowHeight() const override { return kHeadlessHeight; }
  void ShowChoice() override { Invalidate(nullptr); }
  void PaintSelf(Canvas& canvas) override;
};

}  // namespace lorv
