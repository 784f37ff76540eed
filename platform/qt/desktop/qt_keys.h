#pragma once

#include <QKeyEvent>

#include "framework/native/window_types.h"
#include "framework/text/cstring.h"

// Keys by the platform's virtual numbers.
namespace lorv {

// 0 if the key has no number.
int VirtualKeyOf(const QKeyEvent& event);
// The characters that the platform makes of the key: control characters for Ctrl and a letter, none for keys
// that only act.
CString CharactersOf(const QKeyEvent& event);
// Repeat count, extended key, held before, released: as the messages of keys carry them.
LPARAM KeyBits(const QKeyEvent& event, bool alt);

// MK_ bits of buttons and modifiers.
WPARAM HeldBits(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
Qt::MouseButtons ButtonsOf(WPARAM held);
Qt::KeyboardModifiers ModifiersOf(WPARAM held);

}  // namespace lorv
