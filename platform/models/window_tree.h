#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/ports/desktop_port.h"

namespace lorv {

// A desktop that keeps its windows itself: which of them belong together, and which are above others.
// `Window` is its peers' class.
template <class Window>
class Kinship : public Desktop {
 protected:
  // Null for what is no window any more.
  virtual std::shared_ptr<Window> At(HWND window) const = 0;

  HWND TopOf(HWND window) const {
    for (auto at = At(window); at != nullptr; at = At(window)) {
      if (at->Parent() == nullptr) return window;
      window = at->Parent();
    }
    return nullptr;
  }

  // A window is within itself.
  bool Within(HWND outer, HWND inner) const {
    while (inner != nullptr && inner != outer) {
      const auto at = At(inner);
      inner = at == nullptr ? nullptr : at->Parent();
    }
    return inner != nullptr;
  }

  std::vector<HWND> OwnedBy(HWND owner) const {
    std::vector<HWND> owned;
    for (const HWND top : tops_)
      if (const auto window = At(top); window != nullptr && window->Owner() == owner) owned.push_back(top);
    return owned;
  }

  void RaiseTop(HWND window) {
    const auto at = std::find(tops_.begin(), tops_.end(), window);
    if (at != tops_.end()) std::rotate(tops_.begin(), at, at + 1);
  }

  // The window to be active when another one goes; null if there is none.
  HWND NextTop(HWND gone, HWND owner) const {
    const auto fits = [this, gone](HWND top) {
      const auto window = At(top);
      return top != gone && window != nullptr && window->Seen() && (window->Style() & WS_DISABLED) == 0 &&
             window->Kind() != WindowKind::Popup;
    };
    if (owner != nullptr && fits(owner)) return owner;
    const auto next = std::find_if(tops_.begin(), tops_.end(), fits);
    return next == tops_.end() ? nullptr : *next;
  }

  // The innermost visible window there; disabled children are looked through.
  HWND HitTop(POINT screen) const {
    for (const HWND top : tops_)
      if (const HWND hit = InnermostAt(top, screen)) return hit;
    return nullptr;
  }

  std::vector<HWND> tops_;  // the highest first

 private:
  HWND InnermostAt(HWND at, POINT screen) const {
    const auto window = At(at);
    if (window == nullptr || (window->Style() & WS_VISIBLE) == 0) return nullptr;
    if (CRect(window->WindowRect()).PtInRect(screen) == 0) return nullptr;
    const CRect client = CRect(window->ClientRect()) + window->ClientOrigin();
    if (client.PtInRect(screen) == 0) return at;
    const auto children = window->Children();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
      const auto inner = At(*child);
      const bool disabled = inner != nullptr && (inner->Style() & WS_DISABLED) != 0;
      const HWND hit = disabled ? nullptr : InnermostAt(*child, screen);
      if (hit != nullptr) return hit;
    }
    return at;
  }
};

}  // namespace lorv
