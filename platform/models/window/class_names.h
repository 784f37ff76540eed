#pragma once

#include "framework/ports/window_port.h"

namespace lorv {

// The name under which a window's class is known: the system's own for its controls, and for windows that
// draw themselves the one asked for.
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
