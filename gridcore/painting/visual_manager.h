#pragma once

#include "framework/drawing/geometry.h"
#include "framework/native/export.h"
#include "framework/native/window_types.h"
#include "framework/text/cstring.h"

class CDC;

// The painters of what cells share: push buttons and check boxes, flat, in the colours of the desktop.
//
// Units: device pixels; rectangles that are empty draw nothing.
// No state: the one object serves all grids. User-interface thread.
//
//   CBCGPVisualManager::GetInstance()->OnDrawCheckBox(&dc, rect, 1, TRUE);
class COMM_LORV_API CBCGPVisualManager {
 public:
  static CBCGPVisualManager* GetInstance();

  void OnDrawPushButton(CDC* dc, CRect rect, const CString& text, UINT text_flags, BOOL enabled) const;
  // State 0: empty, 1: checked, 2: some of what it stands for is checked. The ground is what the box stands
  // on: over a light one that a host has fixed it is that of a light desktop, or on a dark one an empty box
  // would look like a full one.
  void OnDrawCheckBox(CDC* dc, CRect rect, int state, BOOL enabled, COLORREF ground = 0) const;
};
