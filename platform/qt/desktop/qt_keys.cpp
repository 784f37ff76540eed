#include "platform/qt/desktop/qt_keys.h"

#include <algorithm>
#include <array>

#include "platform/qt/desktop/qt_text.h"

// Keys and buttons of Qt as those of the messages, and back. A virtual key names a place on the keyboard, so
// the shifted sign of a key gives the same number as the plain one.

namespace lorv {
namespace {

struct KeyRow {
  int qt;
  int virtual_key;
};

constexpr std::array kKeys = {KeyRow{Qt::Key_Backspace, VK_BACK},   KeyRow{Qt::Key_Tab, VK_TAB},
                              KeyRow{Qt::Key_Backtab, VK_TAB},      KeyRow{Qt::Key_Clear, VK_CLEAR},
                              KeyRow{Qt::Key_Return, VK_RETURN},    KeyRow{Qt::Key_Enter, VK_RETURN},
                              KeyRow{Qt::Key_Shift, VK_SHIFT},      KeyRow{Qt::Key_Control, VK_CONTROL},
                              KeyRow{Qt::Key_Alt, VK_MENU},         KeyRow{Qt::Key_Pause, VK_PAUSE},
                              KeyRow{Qt::Key_CapsLock, VK_CAPITAL}, KeyRow{Qt::Key_Escape, VK_ESCAPE},
                              KeyRow{Qt::Key_PageUp, VK_PRIOR},     KeyRow{Qt::Key_PageDown, VK_NEXT},
                              KeyRow{Qt::Key_End, VK_END},          KeyRow{Qt::Key_Home, VK_HOME},
                              KeyRow{Qt::Key_Left, VK_LEFT},        KeyRow{Qt::Key_Up, VK_UP},
                              KeyRow{Qt::Key_Right, VK_RIGHT},      KeyRow{Qt::Key_Down, VK_DOWN},
                              KeyRow{Qt::Key_Print, VK_SNAPSHOT},   KeyRow{Qt::Key_Insert, VK_INSERT},
                              KeyRow{Qt::Key_Delete, VK_DELETE},    KeyRow{Qt::Key_Help, VK_HELP},
                              KeyRow{Qt::Key_Super_L, VK_LWIN},     KeyRow{Qt::Key_Super_R, VK_RWIN},
                              KeyRow{Qt::Key_Menu, VK_APPS},        KeyRow{Qt::Key_NumLock, VK_NUMLOCK},
                              KeyRow{Qt::Key_ScrollLock, VK_SCROLL}};

// Keys of signs stand where an American keyboard has them.
constexpr std::array kSigns = {
    KeyRow{Qt::Key_Semicolon, VK_OEM_1},   KeyRow{Qt::Key_Colon, VK_OEM_1},
    KeyRow{Qt::Key_Plus, VK_OEM_PLUS},     KeyRow{Qt::Key_Equal, VK_OEM_PLUS},
    KeyRow{Qt::Key_Comma, VK_OEM_COMMA},   KeyRow{Qt::Key_Less, VK_OEM_COMMA},
    KeyRow{Qt::Key_Minus, VK_OEM_MINUS},   KeyRow{Qt::Key_Underscore, VK_OEM_MINUS},
    KeyRow{Qt::Key_Period, VK_OEM_PERIOD}, KeyRow{Qt::Key_Greater, VK_OEM_PERIOD},
    KeyRow{Qt::Key_Slash, VK_OEM_2},       KeyRow{Qt::Key_Question, VK_OEM_2},
    KeyRow{Qt::Key_Exclam, '1'},           KeyRow{Qt::Key_At, '2'},
    KeyRow{Qt::Key_NumberSign, '3'},       KeyRow{Qt::Key_Dollar, '4'},
    KeyRow{Qt::Key_Percent, '5'},          KeyRow{Qt::Key_AsciiCircum, '6'},
    KeyRow{Qt::Key_Ampersand, '7'},        KeyRow{Qt::Key_Asterisk, '8'},
    KeyRow{Qt::Key_ParenLeft, '9'},        KeyRow{Qt::Key_ParenRight, '0'}};

constexpr std::array kPadSigns = {KeyRow{Qt::Key_Asterisk, VK_MULTIPLY}, KeyRow{Qt::Key_Plus, VK_ADD},
                                  KeyRow{Qt::Key_Minus, VK_SUBTRACT}, KeyRow{Qt::Key_Period, VK_DECIMAL},
                                  KeyRow{Qt::Key_Slash, VK_DIVIDE}};

template <std::size_t N>
int Found(const std::array<KeyRow, N>& rows, int key) {
  const auto row = std::find_if(rows.begin(), rows.end(), [key](const KeyRow& r) { return r.qt == key; });
  return row == rows.end() ? 0 : row->virtual_key;
}

bool IsLetterOrDigit(int key) {
  return (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
}

int OnPad(int key) {
  return key >= Qt::Key_0 && key <= Qt::Key_9 ? VK_NUMPAD0 + (key - Qt::Key_0) : Found(kPadSigns, key);
}

bool IsExtended(int key) {
  return (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_INSERT || key == VK_DELETE || key == VK_DIVIDE;
}

// What the key itself says, whatever text the event has.
TCHAR FixedCharacter(int key) {
  switch (key) {
    case VK_BACK:
      return 8;
    case VK_TAB:
      return 9;
    case VK_RETURN:
      return 13;
    case VK_ESCAPE:
      return 27;
    default:
      return 0;
  }
}

}  // namespace

int VirtualKeyOf(const QKeyEvent& event) {
  const int key = event.key();
  // First: on the pad the same signs are other keys.
  if ((event.modifiers() & Qt::KeypadModifier) != 0 && OnPad(key) != 0) return OnPad(key);
  if (IsLetterOrDigit(key) || key == Qt::Key_Space) return key;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return VK_F1 + (key - Qt::Key_F1);
  const int known = Found(kKeys, key);
  return known != 0 ? known : Found(kSigns, key);
}

CString CharactersOf(const QKeyEvent& event) {
  // Control and a letter give the characters 1 to 26 in every layout; the text of the event may be empty.
  const int key = VirtualKeyOf(event);
  if (FixedCharacter(key) != 0) return CString(FixedCharacter(key));
  const bool control = (event.modifiers() & Qt::ControlModifier) != 0;
  const bool alt = (event.modifiers() & Qt::AltModifier) != 0;
  // With Alt as well it is AltGr, which types signs.
  if (control && !alt) {
    const bool letter = key >= 'A' && key <= 'Z';
    return letter ? CString(static_cast<TCHAR>(key - 'A' + 1)) : CString();
  }
  const QString text = event.text();
  const bool acts = text.isEmpty() || text.front().unicode() < 0x20 || text.front().unicode() == 0x7F;
  return acts ? CString() : FromQt(text);
}

LPARAM KeyBits(const QKeyEvent& event, bool alt) {
  LPARAM bits = 1 | (static_cast<LPARAM>(event.nativeScanCode() & 0xFFU) << 16U);
  if (IsExtended(VirtualKeyOf(event))) bits |= LPARAM{1} << 24U;
  if (alt) bits |= LPARAM{1} << 29U;
  const bool released = event.type() == QEvent::KeyRelease;
  // The key was down before: always so for a release.
  if (event.isAutoRepeat() || released) bits |= LPARAM{1} << 30U;
  if (released) bits |= LPARAM{1} << 31U;
  return bits;
}

WPARAM HeldBits(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
  WPARAM held = 0;
  if ((buttons & Qt::LeftButton) != 0) held |= MK_LBUTTON;
  if ((buttons & Qt::RightButton) != 0) held |= MK_RBUTTON;
  if ((buttons & Qt::MiddleButton) != 0) held |= MK_MBUTTON;
  if ((modifiers & Qt::ShiftModifier) != 0) held |= MK_SHIFT;
  if ((modifiers & Qt::ControlModifier) != 0) held |= MK_CONTROL;
  return held;
}

Qt::MouseButtons ButtonsOf(WPARAM held) {
  Qt::MouseButtons buttons;
  if ((held & MK_LBUTTON) != 0) buttons |= Qt::LeftButton;
  if ((held & MK_RBUTTON) != 0) buttons |= Qt::RightButton;
  if ((held & MK_MBUTTON) != 0) buttons |= Qt::MiddleButton;
  return buttons;
}

Qt::KeyboardModifiers ModifiersOf(WPARAM held) {
  Qt::KeyboardModifiers modifiers;
  if ((held & MK_SHIFT) != 0) modifiers |= Qt::ShiftModifier;
  if ((held & MK_CONTROL) != 0) modifiers |= Qt::ControlModifier;
  return modifiers;
}

}  // namespace lorv
