#include "platform/win32/controls/native_menu.h"

#include <memory>

#include "platform/win32/desktop/message_pump.h"

// Menus of the system made from our models for the time that they are shown. The system's menus are not kept:
// the model is the menu, and handlers may change it meanwhile.

namespace lorv {
namespace {

constexpr UINT kSetHere = static_cast<UINT>(MF_BYPOSITION | MF_POPUP | MF_OWNERDRAW | MF_BITMAP);

struct MenuEnd {
  void operator()(HMENU menu) const { DestroyMenu(menu); }
};
using OwnedMenu = std::unique_ptr<HMENU__, MenuEnd>;

OwnedMenu Build(const MenuModel& model) {
  OwnedMenu menu(CreatePopupMenu());
  for (const MenuEntry& entry : model.entries) {
    // Flags by which a caller named a place, or that ask for drawing by the owner, are nothing for the
    // system's call.
    UINT flags = entry.flags & ~kSetHere;
    UINT_PTR id = entry.id;
    OwnedMenu below;
    if (entry.submenu != nullptr) {
      below = Build(*entry.submenu);
      flags |= MF_POPUP;
      id = reinterpret_cast<UINT_PTR>(below.get());
    }
    // Once in, it ends with the menu that it is in.
    if (AppendMenuW(menu.get(), flags, id, entry.text)) static_cast<void>(below.release());
  }
  return menu;
}

class HiddenOwner {
 public:
  explicit HiddenOwner(bool wanted) {
    if (wanted)
      window_ = CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  }
  HiddenOwner(const HiddenOwner&) = delete;
  HiddenOwner& operator=(const HiddenOwner&) = delete;
  ~HiddenOwner() {
    if (window_ != nullptr) DestroyWindow(window_);
  }
  HWND Window() const { return window_; }

 private:
  HWND window_ = nullptr;
};

// The window to bring in front for a menu: below a modal dialog the owner rests, and the dialog keeps its
// place.
HWND FrontFor(HWND window) {
  const HWND root = GetAncestor(window, GA_ROOT);
  if (IsWindowEnabled(root)) return root;
  const HWND above = GetLastActivePopup(GetAncestor(root, GA_ROOTOWNER));
  return above != nullptr && IsWindowEnabled(above) ? above : GetActiveWindow();
}

}  // namespace

UINT TrackNativeMenu(const MenuModel& model, POINT screen, UINT flags, HWND owner) {
  // The system would show an empty frame.
  if (model.entries.empty()) return 0;
  const OwnedMenu menu = Build(model);
  // The system shows no menu without a window that owns it.
  const HiddenOwner hidden(!IsWindow(owner));
  const HWND window = hidden.Window() != nullptr ? hidden.Window() : owner;
  // A click elsewhere closes the menu only of a window in the foreground.
  const auto track = [&] {
    if (const HWND front = FrontFor(window); front != nullptr) SetForegroundWindow(front);
    // The command is always returned: a caller that wants it as a message posts it when the menu is gone.
    const UINT all = (flags & ~static_cast<UINT>(TPM_RECURSE)) | TPM_RETURNCMD | TPM_NONOTIFY;
    return static_cast<UINT>(TrackPopupMenuEx(menu.get(), all, screen.x, screen.y, window, nullptr));
  };
  return SystemLoop::Run(track, [] { EndMenu(); });
}

}  // namespace lorv
