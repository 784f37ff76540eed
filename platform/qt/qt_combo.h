#pragma once

#include "platform/qt/qt_control.h"
#include "platform/qt/qt_items.h"

namespace lorv {

class DropList;

// A drop-down list. With CBS_DROPDOWN and CBS_SIMPLE an edit stands inside as a child of id 1001, to which
// the focus is handed on. While the list is dropped, keys go through the drop-down list or its edit, as if it
// were not there; the mouse is the list's own affair.
class QtCombo : public QtControl {
 public:
  QtCombo(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;
  CString Text() const override;
  bool Dropped() const { return dropped_; }

 protected:
  HWND KeyTarget() const override;

 private:
  QtCombo(QtDesk& desk, HWND handle, const WindowRequest& request, DropList* list);
  bool HasEdit() const { return (Look() & 3U) != CBS_DROPDOWNLIST; }
  LRESULT ItemMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT ChoiceMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT LooksMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT Key(int key);
  LRESULT Press();
  LRESULT SelectString(int after, LPCTSTR start);
  CRect EditPlace() const;
  void MakeEdit();
  void FromEdit(UINT code);
  LRESULT ToEdit(UINT message, WPARAM w, LPARAM l) const;
  void ShowChosen();
  void Drop(bool on);
  void CloseBy(bool taken);
  // `ended`: that the choice is made was told already.
  void ChooseByUser(int index, bool ended = false);
  void PickedByMouse(int index);
  void ListClosed();

  DropList& list_;
  QtItems items_;
  HWND edit_ = nullptr;
  bool dropped_ = false;
  int before_drop_ = -1;
  int picked_ = -1;
  UINT dropped_width_ = 0;
};

}  // namespace lorv
