#pragma once

#include <functional>
#include <memory>

#include "platform/models/controls/edit_pane.h"

class QWidget;

namespace lorv {

// The widget that does the editing: one answer over a line edit, one over a plain text edit. The widget's own
// positions do not leave it.
class QtEditPane : public EditPane {
 public:
  virtual QWidget* Widget() const = 0;
  virtual QWidget* Pane() const = 0;
  virtual void UseStyle(DWORD style, bool framed) = 0;
};

// `changed`: the user changed the text at the widget itself.
std::unique_ptr<QtEditPane> MakeLinePane(QWidget* around, std::function<void()> changed);
std::unique_ptr<QtEditPane> MakeTextPane(QWidget* around, std::function<void()> changed);

}  // namespace lorv
