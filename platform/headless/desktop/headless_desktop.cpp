#include "platform/headless/desktop/headless_desktop.h"

#include <algorithm>
#include <atomic>

#include "framework/ports/window_map.h"
#include "platform/headless/controls/headless_button.h"
#include "platform/headless/controls/headless_combo.h"
#include "platform/headless/controls/headless_edit.h"
#include "platform/headless/controls/headless_list.h"

// Windows of the headless desktop: which there are, which has the focus, and what the screen is like.

namespace lorv {
namespace {

HKL LayoutNumber(UINT_PTR number) {
  return reinterpret_cast<HKL>(number);
}

// Of the whole process, so that a handle never means the windows of two desktops.
HWND NewHandle() {
  static std::atomic<UINT_PTR> last{0x10000};
  return reinterpret_cast<HWND>(last += 2);
}

}  // namespace

HWND HeadlessForeignWindow() {
  return reinterpret_cast<HWND>(static_cast<UINT_PTR>(0x1));
}

// Two layouts, as Chinese estimators have them: Chinese and English.
HeadlessDesktop::HeadlessDesktop() : layouts_{LayoutNumber(0x08040804), LayoutNumber(0x04090409)} {
  layout_ = layouts_.front();
}

HeadlessDesktop::~HeadlessDesktop() {
  // Objects above may outlive the desktop: they are told that their windows go, and may still ask it.
  const ScopedDesktop self(*this);
  while (!tops_.empty()) {
    const HWND top = tops_.front();
    if (const auto window = At(top)) window->Destroy();
    std::erase(tops_, top);
  }
}

std::shared_ptr<HeadlessWindow> HeadlessDesktop::At(HWND window) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto found = windows_.find(window);
  return found == windows_.end() ? nullptr : found->second;
}

std::shared_ptr<HeadlessWindow> HeadlessDesktop::MakeWindow(const WindowRequest& request, HWND handle) {
  switch (request.kind) {
    case WindowKind::Edit:
      return std::make_shared<HeadlessEdit>(*this, handle, request);
    case WindowKind::Combo:
      return std::make_shared<HeadlessCombo>(*this, handle, request);
    case WindowKind::List:
      return std::make_shared<HeadlessList>(*this, handle, request);
    case WindowKind::Button:
      return std::make_shared<HeadlessButton>(*this, handle, request);
    case WindowKind::Static:
      return std::make_shared<HeadlessStatic>(*this, handle, request);
    default:
      return std::make_shared<HeadlessWindow>(*this, handle, request);
  }
}

void HeadlessDesktop::Adopt(const std::shared_ptr<HeadlessWindow>& window) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    windows_[window->Handle()] = window;
  }
  if (const auto parent = At(window->Parent()))
    parent->children_.push_back(window->Handle());
  else
    tops_.insert(tops_.begin(), window->Handle());
}

HWND HeadlessDesktop::Create(const WindowRequest& request) {
  const bool child = (request.style & WS_CHILD) != 0;
  const auto parent = At(request.parent);
  if (child ? parent == nullptr || parent->ending_ : request.parent != nullptr && parent == nullptr)
    return nullptr;
  const HWND handle = NewHandle();
  const auto window = MakeWindow(request, handle);
  Adopt(window);
  request.attach(handle);
  CREATESTRUCT made = {};
  made.lpCreateParams = request.parameter;
  made.hwndParent = request.parent;
  made.x = request.place.left;
  made.y = request.place.top;
  made.cx = request.place.right - request.place.left;
  made.cy = request.place.bottom - request.place.top;
  made.style = static_cast<LONG>(request.style);
  made.lpszName = request.text;
  made.lpszClass = window->class_name_;
  made.dwExStyle = request.ex_style;
  const LRESULT answer = DeliverMessage(handle, WM_CREATE, 0, reinterpret_cast<LPARAM>(&made));
  if (answer == -1) window->Destroy();
  if (!window->Exists()) return nullptr;
  const CRect client(window->ClientRect());
  DeliverMessage(handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
  if (window->Exists() && (request.style & WS_VISIBLE) != 0) window->Show(SW_SHOW);
  return window->Exists() ? handle : nullptr;
}

void HeadlessDesktop::Forget(HWND window) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    windows_.erase(window);
    std::erase_if(posted_, [window](const MSG& message) { return message.hwnd == window; });
  }
  std::erase(tops_, window);
  std::erase_if(timers_, [window](const Timer& timer) { return timer.window == window; });
  if (focus_ == window) focus_ = nullptr;
  if (active_ == window) active_ = nullptr;
  if (capture_ == window) capture_ = nullptr;
  if (hovered_ == window) hovered_ = nullptr;
}

void HeadlessDesktop::ActivateTop(HWND top) {
  const auto window = At(top);
  if (window == nullptr || active_ == top || (window->Style() & WS_DISABLED) != 0) return;
  const HWND former = std::exchange(active_, top);
  RaiseTop(top);
  const auto pair = [](HWND other) { return reinterpret_cast<LPARAM>(other); };
  if (StillThere(former)) DeliverMessage(former, WM_ACTIVATE, WA_INACTIVE, pair(top));
  if (active_ == top && StillThere(top)) DeliverMessage(top, WM_ACTIVATE, WA_ACTIVE, pair(former));
}

void HeadlessDesktop::ActivateNext(HWND gone, HWND owner) {
  if (const HWND next = NextTop(gone, owner)) return ActivateTop(next);
  MoveFocus(nullptr);
  if (active_ == gone) active_ = nullptr;
}

void HeadlessDesktop::MoveFocus(HWND window) {
  if (window == focus_) return;
  if (window != nullptr && active_ != TopOf(window)) {
    ActivateTop(TopOf(window));
    // Activation may have set it, or a handler something else.
    if (!StillThere(window) || active_ != TopOf(window) || focus_ == window) return;
  }
  const HWND former = std::exchange(focus_, window);
  if (StillThere(former)) DeliverMessage(former, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
  if (focus_ == window && StillThere(window))
    DeliverMessage(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(former), 0);
}

void HeadlessDesktop::LeaveProgram() {
  const HWND former = std::exchange(active_, nullptr);
  if (StillThere(former)) DeliverMessage(former, WM_ACTIVATE, WA_INACTIVE, 0);
  MoveFocus(nullptr);
  focus_ = HeadlessForeignWindow();
}

void HeadlessDesktop::SetCapture(HWND window) {
  if (window != nullptr && !StillThere(window)) return;
  const HWND former = std::exchange(capture_, window);
  if (former != window && StillThere(former))
    DeliverMessage(former, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(window));
}

std::vector<Drawn> HeadlessDesktop::Seen(HWND window) const {
  const auto at = At(window);
  return at == nullptr ? std::vector<Drawn>() : at->Surface()->List();
}

COLORREF HeadlessDesktop::Colour(int index) const {
  switch (index) {
    case COLOR_WINDOW:
    case COLOR_HIGHLIGHTTEXT:
    case COLOR_BTNHIGHLIGHT:
      return RGB(255, 255, 255);
    case COLOR_HIGHLIGHT:
      return RGB(0, 120, 215);
    case COLOR_BTNFACE:
    case COLOR_SCROLLBAR:
      return RGB(240, 240, 240);
    case COLOR_BTNSHADOW:
      return RGB(160, 160, 160);
    case COLOR_GRAYTEXT:
      return RGB(109, 109, 109);
    case COLOR_INFOBK:
      return RGB(255, 255, 225);
    default:
      return RGB(0, 0, 0);
  }
}

int HeadlessDesktop::Metric(int index) const {
  switch (index) {
    case SM_CXSCREEN:
      return 1920;
    case SM_CYSCREEN:
      return 1080;
    case SM_CXVSCROLL:
    case SM_CYHSCROLL:
    case SM_CYVSCROLL:
    case SM_CXHSCROLL:
      return 16;
    case SM_CYCAPTION:
      return 24;
    case SM_CXDOUBLECLK:
    case SM_CYDOUBLECLK:
      return 4;
    case SM_CXEDGE:
    case SM_CYEDGE:
      return 2;
    default:
      return 1;
  }
}

LOGFONT HeadlessDesktop::DialogFont() const {
  LOGFONT font = {};
  font.lfHeight = -12;
  font.lfWeight = FW_NORMAL;
  const TextView face = _T("SimSun");
  std::copy(face.begin(), face.end(), font.lfFaceName);
  return font;
}

std::unique_ptr<Canvas> HeadlessDesktop::MakeCanvas(SIZE size) const {
  const CRect limit(CPoint(0, 0), size);
  return std::make_unique<HeadlessCanvas>(std::make_shared<HeadlessSurface>(size), limit);
}

UINT HeadlessDesktop::Popup(const MenuModel& menu, POINT /*screen*/, UINT /*flags*/, HWND /*owner*/) {
  shown_menus_.push_back(menu);
  if (menu_answers_.empty()) return 0;
  const UINT answer = menu_answers_.front();
  menu_answers_.pop_front();
  return Offers(menu, answer) ? answer : 0;
}

bool HeadlessDesktop::Offers(const MenuModel& menu, UINT command) const {
  constexpr UINT kCannot = MF_GRAYED | MF_DISABLED | MF_SEPARATOR;
  return std::any_of(menu.entries.begin(), menu.entries.end(), [&](const MenuEntry& entry) {
    if ((entry.flags & kCannot) != 0) return false;
    return entry.submenu != nullptr ? Offers(*entry.submenu, command) : entry.id == command;
  });
}

void HeadlessDesktop::SetLayouts(std::vector<HKL> layouts) {
  layouts_ = std::move(layouts);
  layout_ = layouts_.empty() ? nullptr : layouts_.front();
}

HKL HeadlessDesktop::ActivateLayout(HKL layout, UINT /*flags*/) {
  if (std::find(layouts_.begin(), layouts_.end(), layout) == layouts_.end()) return nullptr;
  return std::exchange(layout_, layout);
}

bool HeadlessDesktop::SetClipboardText(const CString& text) {
  clip_ = text;
  has_clip_ = true;
  return true;
}

UINT HeadlessDesktop::RegisterMessage(LPCTSTR name) {
  constexpr UINT kFirst = 0xC000;
  return registered_.emplace(CString(name), kFirst + static_cast<UINT>(registered_.size())).first->second;
}

}  // namespace lorv
