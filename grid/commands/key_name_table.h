#pragma once

#include "framework/native/window_types.h"
#include "gridcore/control/grid_key_handler.h"

namespace lorv {

// Keys that have a name of more than one character, as it is written; read it is in any letter case.
struct KeyName {
  LPCTSTR name;
  unsigned key;
};

inline constexpr KeyName kKeyNames[] = {
    {_T("Left"), VK_LEFT},
    {_T("Right"), VK_RIGHT},
    {_T("Up"), VK_UP},
    {_T("Down"), VK_DOWN},
    {_T("Home"), VK_HOME},
    {_T("End"), VK_END},
    {_T("PageUp"), VK_PRIOR},
    {_T("PageDown"), VK_NEXT},
    {_T("Insert"), VK_INSERT},
    {_T("Delete"), VK_DELETE},
    {_T("Backspace"), VK_BACK},
    {_T("Tab"), VK_TAB},
    {_T("Enter"), VK_RETURN},
    {_T("Esc"), VK_ESCAPE},
    {_T("Space"), VK_SPACE},
    {_T("Plus"), VK_OEM_PLUS},
    {_T("Minus"), VK_OEM_MINUS},
    {_T("Comma"), VK_OEM_COMMA},
    {_T("Period"), VK_OEM_PERIOD},
    {_T("Num+"), VK_ADD},
    {_T("Num-"), VK_SUBTRACT},
    {_T("Num*"), VK_MULTIPLY},
    {_T("Num/"), VK_DIVIDE},
    {_T("Menu"), VK_APPS},
    {_T("WheelUp"), kKeyWheelUp},
    {_T("WheelDown"), kKeyWheelDown},
    {_T("F1"), VK_F1},
    {_T("F2"), VK_F2},
    {_T("F3"), VK_F3},
    {_T("F4"), VK_F4},
    {_T("F5"), VK_F5},
    {_T("F6"), VK_F6},
    {_T("F7"), VK_F7},
    {_T("F8"), VK_F8},
    {_T("F9"), VK_F9},
    {_T("F10"), VK_F10},
    {_T("F11"), VK_F11},
    {_T("F12"), VK_F12},
};

}  // namespace lorv
