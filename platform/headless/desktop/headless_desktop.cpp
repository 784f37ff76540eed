#include "platform/headless/desktop/headless_desktop.h"

#include <algorithm>

#include "platform/headless/controls/headless_button.h"
#include "platform/headless/controls/headless_combo.h"
#include "platform/headless/controls/headless_edit.h"
#include "platform/headless/controls/headless_list.h"
#include "platform/models/first_fault.h"

// Windows of the headless desktop: which there are, which has the focus, and what the screen is like.
// Colours, fonts and layouts are fixed, so that a test sees the same on every machine; what a user would do
// is put in by calls.

namespace lorv {
namespace {

HKL LayoutNumber(UINT_PTR number) {
  return reinterpret_cast<HKL>(number);
}

}  // namespace

HWND HeadlessForeignWindow() {
  return ForeignWindow();
}

// Two layouts, as Chinese estimators have them: Chinese and English.
HeadlessDesktop::HeadlessDesktop() : layouts_{LayoutNumber(0x08040804), LayoutNumber(0x04090409)} {
  layout_ = layouts_.front();
}

HeadlessDesktop::~HeadlessDesktop() {
  // Objects above may outlive the desktop: they are notified that their windows go, and may still ask it.
  const ScopedDesktop self(*this);
  DestroyAll();
}

std::shared_ptr<WindowModel> HeadlessDesktop::MakeWindow(const WindowRequest& request, HWND handle) {
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

void HeadlessDesktop::Begin(WindowModel& window, const WindowRequest& /*request*/) {
  auto& fresh = static_cast<HeadlessWindow&>(window);
  fresh.RememberPlace(fresh.ReportedPlace());
}

void HeadlessDesktop::Forget(HWND window) {
  DesktopModel::Forget(window);
  // What is kept by handle goes with the window, or a timer would call one that is gone.
  std::erase(cancelled_, window);
  std::erase_if(timers_, [window](const Timer& timer) { return timer.window == window; });
}

HWND HeadlessDesktop::Focus() const {
  return elsewhere_ ? ForeignWindow() : FocusedWindow();
}

void HeadlessDesktop::FocusChanged(HWND /*former*/) {
  elsewhere_ = false;
  if (FocusedWindow() != nullptr) ReportAccessible(FocusedWindow(), AccessEvent::Focus, 0);
}

void HeadlessDesktop::ReportAccessible(HWND window, AccessEvent event, std::int64_t number) {
  if (reported_.size() == kMaxReports) reported_.erase(reported_.begin());
  reported_.push_back({window, event, number});
}

void HeadlessDesktop::LeaveProgram() {
  LeaveWindows();
  elsewhere_ = true;
}

std::vector<Drawn> HeadlessDesktop::Seen(HWND window) const {
  const auto at = std::static_pointer_cast<HeadlessWindow>(At(window));
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

LOGFONT HeadlessDesktop::DialogFont() const {
  LOGFONT font = {};
  font.lfHeight = -12;
  font.lfWeight = FW_NORMAL;
  const TextView face = _T("SimSun");
  std::copy(face.begin(), face.end(), font.lfFaceName);
  return font;
}

void HeadlessDesktop::SetDpi(int dpi) {
  dpi_ = dpi;
  // Over a copy: a handler may open and close windows.
  for (const HWND top : std::vector<HWND>(Windows()))
    if (const auto window = At(top)) window->ReportDpi(dpi);
}

std::unique_ptr<Canvas> HeadlessDesktop::MakeCanvas(SIZE size) const {
  auto surface = std::make_shared<HeadlessSurface>(size);
  surface->SetDpi(dpi_);
  return std::make_unique<HeadlessCanvas>(std::move(surface), CRect(CPoint(0, 0), size));
}

void HeadlessDesktop::RunMenuSteps() {
  if (menu_steps_.empty()) return;
  // Taken out before it runs: a step may put in others.
  const std::function<void()> step = std::move(menu_steps_.front());
  menu_steps_.pop_front();
  step();
  while (!Quits() && PumpPosted()) {
  }
}

// A test gives the answer beforehand; one that the menu does not offer counts as "nothing chosen".
UINT HeadlessDesktop::Popup(const MenuModel& menu, POINT /*screen*/, UINT /*flags*/, HWND /*owner*/) {
  // The system shows one menu at a time.
  if (menu_up_) return 0;
  // A copy: the menu's owner may end while it is up.
  shown_menus_.push_back(menu);
  SetCapture(nullptr);
  UINT answer = 0;
  if (!menu_answers_.empty()) {
    answer = menu_answers_.front();
    menu_answers_.pop_front();
  }
  const LoopWithin loop(*this);
  menu_up_ = true;
  FirstFault fault;
  fault.Run([this] { RunMenuSteps(); });
  menu_up_ = false;
  fault.Rethrow();
  // The end of the program closes a menu as it is.
  if (Quits()) return 0;
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
  clip_ = TransferData();
  clip_.SetText(text);
  return true;
}

bool HeadlessDesktop::SetClipboard(const TransferData& data) {
  clip_ = data;
  return true;
}

}  // namespace lorv
