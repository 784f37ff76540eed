#pragma once

#include "framework/windows/controls.h"

// What all windows of the grid's library descend from.
class COMM_LORV_API CBCGPWnd : public CWnd {
  DECLARE_DYNCREATE(CBCGPWnd)
};
