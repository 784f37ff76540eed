#pragma once

#include <optional>
#include <vector>

#include "framework/text/cstring.h"

namespace lorv {

// A key with what is held with it.
struct KeyChord {
  unsigned key = 0;  // a virtual key
  bool control = false;
  bool shift = false;
  bool alt = false;

  friend bool operator==(const KeyChord&, const KeyChord&) = default;
};

// Keys as users read them: "Ctrl+Shift+F3", several of them "Ctrl+C, Ctrl+Insert".
//
// Letter case and blanks around a name do not count. Names: Ctrl, Shift, Alt; A to Z, 0 to 9, F1 to F12,
//   Left, Right, Up, Down, Home, End, PageUp, PageDown, Insert, Delete, Backspace, Tab, Enter, Esc, Space,
//   Plus, Minus, Comma, Period, Num+, Num-, Num*, Num/, Menu.
// None for a text that names no key, more than one, or anything else. An empty list has no keys, and is
// right. Pure; any thread.
//
//   ChordFromText(_T("ctrl+f"))  gives {'F', true, false, false}
COMM_LORV_API std::optional<KeyChord> ChordFromText(const CString& text);
COMM_LORV_API std::optional<std::vector<KeyChord>> ChordsFromText(const CString& text);
// Empty for a key without a name.
//
//   ChordToText({'F', true, true, false})  gives "Ctrl+Shift+F"
COMM_LORV_API CString ChordToText(const KeyChord& chord);

}  // namespace lorv
