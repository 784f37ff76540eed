#pragma once

#include "platform/headless/controls/headless_items.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "platform/headless/window/headless_window.h"
#include "platform/models/controls/combo_behaviour.h"

namespace lorv {

// Its list is no window of its own.
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
