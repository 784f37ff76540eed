#include "bench/editor_keys.h"

#include "framework/ports/window_map.h"

// The library's side alone: its windows are the system's own.
namespace lorv_bench {

void Press(Key key, int digit) {
  constexpr WPARAM kKeys[] = {VK_F2, VK_RETURN};
  const HWND focus = lorv::DesktopInForce().Focus();
  if (key == Key::Digit) {
    ::SendMessage(focus, WM_CHAR, static_cast<WPARAM>('0' + digit), 1);
    return;
  }
  // As the queue hands it over: the windows around the focus are asked first.
  MSG message = {focus, WM_KEYDOWN, kKeys[static_cast<int>(key)], 1, 0, {}};
  if (!lorv::OfferMessage(message)) ::SendMessage(focus, WM_KEYDOWN, message.wParam, 1);
}

void BringForward(HWND window) {
  ::SetForegroundWindow(window);
}

bool EditorWorks(GridPeer& side, int row, int column) {
  side.Activate();
  side.OpenEditor(row, column);
  side.TypeDigit(7);
  side.CloseEditor();
  return side.TextAt(row, column) == u"7";
}

}  // namespace lorv_bench
