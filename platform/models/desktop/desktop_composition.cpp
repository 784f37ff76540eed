#include <utility>

#include "platform/models/desktop/desktop_model.h"

// Input methods: what they compose, as messages. A composition belongs to one window at a time; where a
// handler opens an edit for it, as a grid does at the first key, it goes on in that edit.

namespace lorv {

HWND DesktopModel::StartComposition(HWND window) {
  // Before the message: a handler may end the composition again.
  composing_ = window;
  const HWND before = FocusedWindow();
  Deliver(MessageNow(window, WM_IME_STARTCOMPOSITION, 0, 0));
  // The class may have opened an edit for it.
  const HWND focus = FocusedWindow();
  if (focus == before || focus == window || !StillThere(focus)) return composing_;
  EndComposition();
  composing_ = focus;
  Deliver(MessageNow(focus, WM_IME_STARTCOMPOSITION, 0, 0));
  return composing_;
}

void DesktopModel::EndComposition() {
  const HWND former = std::exchange(composing_, nullptr);
  const auto window = At(former);
  if (window == nullptr) return;
  // A call that comes while the end is reported finds nothing composed.
  window->composition_ = {};
  Deliver(MessageNow(former, WM_IME_ENDCOMPOSITION, 0, 0));
}

HWND DesktopModel::Compose(HWND window, const Composition& now) {
  if (composing_ != window) {
    EndComposition();
    const auto begun = At(window);
    if (begun == nullptr || !begun->TakesComposition()) return nullptr;
    window = StartComposition(window);
  }
  const auto target = At(window);
  if (target == nullptr) return nullptr;
  const bool commits = !now.committed.IsEmpty();
  // A commit alone changes nothing that is shown.
  const bool shows = !now.text.IsEmpty() || !commits;
  target->composition_ = now;
  constexpr LPARAM kShown = GCS_COMPSTR | GCS_CURSORPOS;
  Deliver(MessageNow(window, WM_IME_COMPOSITION, 0, (commits ? GCS_RESULTSTR : 0) | (shows ? kShown : 0)));
  // Given once: a later look must not take it a second time.
  target->composition_.committed.Empty();
  // Nothing is left to compose: committed or given up.
  if (now.text.IsEmpty()) EndComposition();
  return StillThere(window) ? window : nullptr;
}

}  // namespace lorv
