#pragma once

#include "framework/native/export.h"

// What Return or Tab does in a grid.
enum emReturnStyle : int {
  emReturnAsIs = 0,   // the key keeps its meaning
  emReturnRight = 1,  // moves to the right
  emReturnDown = 2    // moves down
};

namespace lorv {

// The virtual key codes that grids translate.
constexpr unsigned kKeyTab = 9;
constexpr unsigned kKeyReturn = 13;
constexpr unsigned kKeyEnd = 35;
constexpr unsigned kKeyHome = 36;
constexpr unsigned kKeyLeft = 37;
constexpr unsigned kKeyUp = 38;
constexpr unsigned kKeyRight = 39;
constexpr unsigned kKeyDown = 40;

// What a grid knows when a key arrives.
struct KeySituation {
  emReturnStyle return_style = emReturnDown;
  emReturnStyle tab_style = emReturnRight;
  bool adds_rows = false;  // Return on the last row adds one
  bool read_only = false;
  int row = -1;  // the current one, -1 for none
  int row_count = 0;
};

// The key that a pressed key stands for.
//
// Return and Down on the last row of a grid that adds rows are Down, whatever the styles say, so that the row
// comes; else Tab and Return are what their styles say, and every other key is itself. Without a row nothing
// is the last one. Pure; any thread.
//
//   TranslatedKey(kKeyTab, KeySituation())  gives kKeyRight
COMM_LORV_API unsigned TranslatedKey(unsigned key, const KeySituation& now);

// The directions in which editing moves on, and the key that each is sent as; 0 for any other number.
enum Direction : int { kUp = 1, kDown = 2, kToLeft = 4, kToRight = 8 };
COMM_LORV_API unsigned KeyOfDirection(int direction);

}  // namespace lorv
