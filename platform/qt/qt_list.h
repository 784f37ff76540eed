#pragma once

#include "platform/qt/qt_control.h"
#include "platform/qt/qt_items.h"

class QListWidget;

namespace lorv {

// A list box: one choice, or with LBS_MULTIPLESEL and LBS_EXTENDEDSEL several.
class QtList : public QtControl {
 public:
  QtList(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;

 private:
  QtList(QtDesk& desk, HWND handle, const WindowRequest& request, QListWidget* list);
  bool Several() const { return (Look() & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0; }
  LRESULT ItemMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT ChoiceMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT PlaceMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT Key(int key);
  LRESULT Character(TCHAR unit);
  LRESULT Press(UINT message, LPARAM l);
  LRESULT Select(int index, bool on);
  LRESULT SelectedItems(int room, int* target) const;
  bool Selected(int index) const;
  int Target(int key) const;
  int ItemAt(CPoint at) const;
  int RowHeight() const;
  int PageSize() const;
  int Top() const;
  void Choose(int index);
  void ChooseByUser(int index, bool toggles);
  void Tell(UINT code);

  QListWidget& list_;
  QtItems items_;
  int caret_ = 0;
};

}  // namespace lorv
