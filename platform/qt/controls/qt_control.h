#pragma once

#include "platform/qt/window/qt_window.h"

namespace lorv {

// A window that the widget set draws. Where its window class handles WM_PAINT without asking for the default
// behaviour, the class's own drawing is shown instead.
class QtControl : public QtWindow {
 public:
  using QtWindow::QtWindow;
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;

 protected:
  Edges Margins() const override;
  bool PaintsSelf() const override { return false; }
  bool TakePaint(QObject* receiver, QPaintEvent& event) override;
  void AskToPaint() override;
  void ShowFont(const QFont& font) override;
  // The first size of its text and items; before the widget is shown.
  void StartControl(QWidget* widget, QWidget* pane = nullptr);
  bool Framed() const;

 private:
  bool natively_ = true;  // the class left its last WM_PAINT to the widget
  bool asked_ = false;    // the class was asked for the painting that comes next
};

}  // namespace lorv
