#pragma once

#include "framework/native/export.h"
#include "framework/native/native_types.h"

// Messages of the display switches, 10 rows: even rows when shown, odd rows when hidden.
//
// The two forms of lookup, and what null means: prompts/prompts.h.
//
//   SwicthInfo::GetSwitchInf(SwicthInfo::ShowSwitch::ShowPad)  gives "垫层显示\n", in English "Show pad"
namespace SwicthInfo {

enum class ShowSwitch : int {
  ShowAxis = 0,
  HideAxis,
  ShowFoundation,
  HideFoundation,
  ShowEarth,
  HideEarth,
  ShowPad,
  HidePad,
  ShowBrick,
  HideBrick,
};

COMM_LORV_API LPCTSTR GetSwitchInf(ShowSwitch prompt);
COMM_LORV_API LPCTSTR GetSwitchInf(LPCTSTR chinese);

}  // namespace SwicthInfo
