#pragma once

#include "platform/headless/headless_items.h"
#include "platform/headless/headless_window.h"

namespace lorv {

// A list box: one choice, or with LBS_MULTIPLESEL and LBS_EXTENDEDSEL several. Lines are 16 pixels high.
class HeadlessList : public HeadlessWindow {
 public:
  HeadlessList(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request)
      : HeadlessWindow(desktop, handle, request), items_((request.style & LBS_SORT) != 0) {}
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;

 protected:
  void PaintSelf(Canvas& canvas) override;

 private:
  bool Several() const { return (Style() & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0; }
  LRESULT ItemMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT ChoiceMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT Key(int key);
  LRESULT Press(UINT message, LPARAM l);
  LRESULT Select(int index, bool on);
  LRESULT SelectedItems(int room, int* target) const;
  int SelectedCount() const;
  void Choose(int index);
  void ChooseByUser(int index, bool toggles);
  void Tell(UINT code);
  int PageSize() const;

  HeadlessItems items_;
  int caret_ = 0;
  int top_ = 0;
};

}  // namespace lorv
