#pragma once

#include "platform/headless/headless_items.h"
#include "platform/headless/headless_window.h"

namespace lorv {

// A drop-down list. With CBS_DROPDOWN and CBS_SIMPLE an edit stands inside as a child of id 1001, to which
// the focus is handed on. The list is no window of its own: while it is dropped, keys go through it.
class HeadlessCombo : public HeadlessWindow {
 public:
  HeadlessCombo(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request)
      : HeadlessWindow(desktop, handle, request), items_((request.style & CBS_SORT) != 0) {}
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;
  CString Text() const override;

 protected:
  void PaintSelf(Canvas& canvas) override;

 private:
  bool HasEdit() const { return (Style() & 3U) != CBS_DROPDOWNLIST; }
  LRESULT ItemMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT ChoiceMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT Key(int key);
  LRESULT Press();
  void MakeEdit();
  void FromEdit(UINT code);
  LRESULT ToEdit(UINT message, WPARAM w, LPARAM l) const;
  void ShowChosen();
  void Drop(bool on);
  void CloseBy(bool taken);
  void ChooseByUser(int index);

  HeadlessItems items_;
  HWND edit_ = nullptr;
  bool dropped_ = false;
  int before_drop_ = -1;
  UINT dropped_width_ = 0;
};

}  // namespace lorv
