#pragma once

#include "framework/ports/window_port.h"

namespace lorv {

// The name of a window's class, as ClassName gives it: the system's own for its controls and dialogs, for
// other windows the one asked for, "LorvWindow" where none was.
inline CString ClassNameOf(const WindowRequest& request) {
  switch (request.kind) {
    case WindowKind::Dialog:
      return _T("#32770");
    case WindowKind::Edit:
      return _T("Edit");
    case WindowKind::Combo:
      return _T("ComboBox");
    case WindowKind::List:
      return _T("ListBox");
    case WindowKind::Button:
      return _T("Button");
    case WindowKind::Static:
      return _T("Static");
    default:
      return request.class_name.IsEmpty() ? CString(_T("LorvWindow")) : request.class_name;
  }
}

}  // namespace lorv
