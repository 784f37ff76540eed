#pragma once

#include "framework/windows/controls.h"

// The editor of cells with several lines. The mouse wheel is sent on to its parent, so that it scrolls the
// table and not the text in it. As CEdit.
class COMM_LORV_API CMutilineEdit : public CEdit {
  DECLARE_DYNCREATE(CMutilineEdit)
 protected:
  BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
  DECLARE_MESSAGE_MAP()
};
