#pragma once

#include "platform/headless/controls/headless_items.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "platform/headless/window/headless_window.h"
#include "platform/models/controls/list_behaviour.h"

namespace lorv {

// A list box in memory over the shared behaviour. Rows are kHeadlessHeight pixels high and scrolled whole;
// the row chosen is scrolled into sight.
class HeadlessList : public ListBehaviour<HeadlessWindow, HeadlessItems> {
 public:
  HeadlessList(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request)
      : ListBehaviour(HeadlessItems((request.style & LBS_SORT) != 0, {}), desktop, handle, request) {}

 protected:
  bool IsSelected(int index) const override { return Kept().Kept().IsSelected(index); }
  void SetSelected(int index, bool on) override;
  CRect RowPlace(int index) const override;
  int RowHeight() const override { return kHeadlessHeight; }
  int RowAt(CPoint at) const override;
  int Top() const override { return top_; }
  void SetTop(int index) override;
  void ShowChoice() override;
  void PaintSelf(Canvas& canvas) override;

 private:
  int top_ = 0;
};

}  // namespace lorv
