#pragma once

#include "framework/native/window_types.h"

namespace lorv {

// The colour of a text that a host left open, over a ground of that colour: the desktop's, COLOR_WINDOWTEXT
// or whichever is asked for.
//
// A dark desktop has light texts, which cannot be read over a light ground that a host or a class of the
// suite has fixed; there it is black. Over dark grounds nothing is different: who gives cells one gives them
// their text, too. Any thread that has a desktop.
//
//   InkOver(RGB(255, 255, 255), COLOR_WINDOWTEXT)  gives black on a light desktop and on a dark one
COLORREF InkOver(COLORREF ground, int system);

}  // namespace lorv
