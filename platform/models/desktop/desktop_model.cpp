#include "platform/models/desktop/desktop_model.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "framework/ports/window_map.h"

// Which windows there are, and what belongs to the whole desktop. Focus, activation and capture are in
// desktop_focus.cpp, the queue and modal loops in desktop_queue.cpp. The map of windows is guarded, as other
// threads post messages; everything else belongs to the thread of the windows.

namespace lorv {

HWND ForeignWindow() {
  return reinterpret_cast<HWND>(static_cast<UINT_PTR>(0x1));
}

// Of the whole process, so that a handle never means the windows of two desktops.
HWND DesktopModel::NewHandle() {
  static std::atomic<UINT_PTR> last{0x10000};
  // Never one that was in use before: a handle that was kept too long finds nothing.
  return reinterpret_cast<HWND>(last += 2);
}

std::shared_ptr<WindowModel> DesktopModel::At(HWND window) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto found = windows_.find(window);
  return found == windows_.end() ? nullptr : found->second;
}

int DesktopModel::DpiFor(const WindowRequest& request) const {
  const auto beside = At(request.parent);
  return beside == nullptr ? Dpi() : beside->Dpi();
}

void DesktopModel::Adopt(const std::shared_ptr<WindowModel>& window) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    windows_[window->Handle()] = window;
  }
  if (const auto parent = At(window->Parent())) {
    parent->children_.push_back(window->Handle());
  } else {
    // The first is the topmost.
    tops_.insert(tops_.begin(), window->Handle());
  }
}

bool DesktopModel::Admits(const WindowRequest& request) const {
  const auto parent = At(request.parent);
  // A parent that is going would leave its newest child behind.
  if ((request.style & WS_CHILD) != 0) return parent != nullptr && !parent->Ending();
  return request.parent == nullptr || parent != nullptr;
}

HWND DesktopModel::Create(const WindowRequest& request) {
  if (!Admits(request)) return nullptr;
  const auto window = MakeWindow(request, NewHandle());
  Adopt(window);
  Begin(*window, request);
  try {
    // Before WM_CREATE, which already goes to the class's own handler.
    request.attach(window->Handle());
    return Announce(window, request);
  } catch (...) {
    // A window whose making failed half way is none.
    window->Destroy();
    throw;
  }
}

HWND DesktopModel::Announce(const std::shared_ptr<WindowModel>& window, const WindowRequest& request) {
  const HWND handle = window->Handle();
  const CString class_name = window->ClassName();
  CREATESTRUCT made = {};
  made.lpCreateParams = request.parameter;
  made.hwndParent = request.parent;
  made.x = request.place.left;
  made.y = request.place.top;
  made.cx = request.place.right - request.place.left;
  made.cy = request.place.bottom - request.place.top;
  made.style = static_cast<LONG>(request.style);
  made.lpszName = request.text;
  made.lpszClass = class_name;
  made.dwExStyle = request.ex_style;
  const LRESULT answer = DeliverMessage(handle, WM_CREATE, 0, reinterpret_cast<LPARAM>(&made));
  // A class refuses its own making by this answer.
  if (answer == -1) window->Destroy();
  if (!window->Exists()) return nullptr;
  const CRect client(window->ClientRect());
  DeliverMessage(handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
  if (window->Exists() && (request.style & WS_VISIBLE) != 0) window->Show(SW_SHOW);
  return window->Exists() ? handle : nullptr;
}

void DesktopModel::Forget(HWND window) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    windows_.erase(window);
    // Messages for a window that is gone must not reach the next one.
    std::erase_if(posted_, [window](const MSG& message) { return message.hwnd == window; });
  }
  std::erase(tops_, window);
  // Whatever names the window: none may lead to it any more.
  for (HWND* const place : {&focus_, &active_, &capture_, &hovered_, &composing_})
    if (*place == window) *place = nullptr;
}

void DesktopModel::DestroyAll() {
  while (!tops_.empty()) {
    const HWND top = tops_.front();
    if (const auto window = At(top)) window->Destroy();
    // Also where a handler kept the window from ending: the loop must.
    std::erase(tops_, top);
  }
}

HWND DesktopModel::TopOf(HWND window) const {
  for (auto at = At(window); at != nullptr; at = At(window)) {
    if (at->Parent() == nullptr) return window;
    window = at->Parent();
  }
  return nullptr;
}

bool DesktopModel::Within(HWND outer, HWND inner) const {
  while (inner != nullptr && inner != outer) {
    const auto at = At(inner);
    inner = at == nullptr ? nullptr : at->Parent();
  }
  return inner != nullptr;
}

std::vector<HWND> DesktopModel::OwnedBy(HWND owner) const {
  std::vector<HWND> owned;
  for (const HWND top : tops_)
    if (const auto window = At(top); window != nullptr && window->Owner() == owner) owned.push_back(top);
  return owned;
}

void DesktopModel::RaiseTop(HWND window) {
  const auto at = std::find(tops_.begin(), tops_.end(), window);
  if (at != tops_.end()) std::rotate(tops_.begin(), at, at + 1);
}

// The innermost visible window there; disabled children are looked through.
HWND DesktopModel::WindowAt(POINT screen) const {
  for (const HWND top : tops_)
    if (const HWND hit = InnermostAt(top, screen)) return hit;
  return nullptr;
}

HWND DesktopModel::InnermostAt(HWND at, POINT screen) const {
  const auto window = At(at);
  if (window == nullptr || (window->Style() & WS_VISIBLE) == 0) return nullptr;
  if (CRect(window->WindowRect()).PtInRect(screen) == 0) return nullptr;
  const CRect client = CRect(window->ClientRect()) + window->ClientOrigin();
  if (client.PtInRect(screen) == 0) return at;
  const auto children = window->Children();
  // The last child lies on top.
  for (auto child = children.rbegin(); child != children.rend(); ++child) {
    const auto inner = At(*child);
    // The mouse over a disabled child is its parent's.
    const bool disabled = inner != nullptr && (inner->Style() & WS_DISABLED) != 0;
    const HWND hit = disabled ? nullptr : InnermostAt(*child, screen);
    if (hit != nullptr) return hit;
  }
  return at;
}

HWND DesktopModel::FirstDirty(HWND at) const {
  const auto window = At(at);
  if (window == nullptr || (window->Style() & WS_VISIBLE) == 0) return nullptr;
  if (window->Dirty()) return at;
  for (const HWND child : window->Children())
    if (const HWND dirty = FirstDirty(child)) return dirty;
  return nullptr;
}

int DesktopModel::MakeCursor(const PixelImage& picture, POINT point) {
  if (!IsCursorPicture(picture) || own_cursors_.size() >= kMaxOwnCursors) return 0;
  const auto count = static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
  own_cursors_[++last_own_cursor_] = {
      {picture.width, picture.height}, point, {picture.pixels, picture.pixels + count}};
  return last_own_cursor_;
}

void DesktopModel::EndCursor(int cursor) {
  // One that is shown must not stand for a picture that is gone.
  if (own_cursors_.erase(cursor) != 0 && Cursor() == cursor) SetCursor(kCursorArrow);
}

const DesktopModel::OwnCursor* DesktopModel::CursorOf(int number) const {
  const auto known = own_cursors_.find(number);
  return known == own_cursors_.end() ? nullptr : &known->second;
}

int DesktopModel::Metric(int index) const {
  switch (index) {
    case SM_CXSCREEN:
      return Screen().right - Screen().left;
    case SM_CYSCREEN:
      return Screen().bottom - Screen().top;
    case SM_CXVSCROLL:
    case SM_CYHSCROLL:
    case SM_CYVSCROLL:
    case SM_CXHSCROLL:
      return BarWidth();
    case SM_CYCAPTION:
      return CaptionHeight();
    case SM_CXDOUBLECLK:
    case SM_CYDOUBLECLK:
      return 4;
    case SM_CXEDGE:
    case SM_CYEDGE:
      return 2;
    case SM_CXDRAG:
    case SM_CYDRAG:
      return DragDistance();
    default:
      return 1;
  }
}

UINT DesktopModel::RegisterMessage(LPCTSTR name) {
  constexpr UINT kFirst = 0xC000;
  // A name that is known keeps its number: emplace leaves it.
  return registered_.emplace(CString(name), kFirst + static_cast<UINT>(registered_.size())).first->second;
}

}  // namespace lorv
