#include "platform/win32/desktop/message_pump.h"

#include <cstring>
#include <utility>

#include "framework/ports/window_map.h"
#include "platform/models/carried_fault.h"

// One message of the thread's queue at a time, offered to window classes before it is delivered. A hook
// offers those that other loops take (the system's own, a host's); what was offered is remembered, so that
// nothing is offered twice.

namespace lorv {
namespace {

// What was offered last and not taken.
thread_local MSG offered = {};
thread_local int hooks = 0;
thread_local std::optional<int> quit_code;
thread_local SystemLoop* innermost = nullptr;
thread_local bool pump_takes = false;  // it is PumpOne that takes a message off the queue

bool IsSame(const MSG& a, const MSG& b) {
  return a.hwnd == b.hwnd && a.message == b.message && a.wParam == b.wParam && a.lParam == b.lParam &&
         a.time == b.time && a.pt.x == b.pt.x && a.pt.y == b.pt.y;
}

void Offer(MSG& message) {
  // While a menu is up its keys are its own: without this the grid below would move on with each of them.
  if (message.hwnd == nullptr || IsMenuUp()) return;
  // A message whose handler failed half way is not delivered on top of it.
  bool taken = true;
  CarriedFault::Guarded([&] { return taken = OfferMessage(message); });
  if (taken) {
    // The system goes on with the message after the hook: as WM_NULL it has no effect.
    message.hwnd = nullptr;
    message.message = WM_NULL;
    message.wParam = 0;
    message.lParam = 0;
  }
  // Behind the call: a handler may have run a loop of its own.
  offered = message;
}

PumpStep Handle(MSG& message) {
  if (OfferHostMessage(&message)) return PumpStep::kDispatched;
  TranslateMessage(&message);
  DispatchMessageW(&message);
  return PumpStep::kDispatched;
}

LRESULT CALLBACK SeeMessage(int code, WPARAM w, LPARAM l) {
  // A call that only looks at the queue comes again.
  if (code == HC_ACTION && w == PM_REMOVE) {
    MSG& message = *reinterpret_cast<MSG*>(l);
    if (message.message == WM_QUIT && !pump_takes) SystemLoop::TakeQuit(static_cast<int>(message.wParam));
    Offer(message);
  }
  return CallNextHookEx(nullptr, code, w, l);
}

BOOL TakeFromQueue(MSG& message, bool wait) {
  // A handler of a message that is sent meanwhile may run a loop of the system's, which takes its own.
  struct Taking {
    Taking() : outer(std::exchange(pump_takes, true)) {}
    Taking(const Taking&) = delete;
    Taking& operator=(const Taking&) = delete;
    ~Taking() { pump_takes = outer; }
    bool outer;
  };
  const Taking taking;
  return wait ? GetMessageW(&message, nullptr, 0, 0) : PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);
}

}  // namespace

bool IsMenuUp() {
  GUITHREADINFO info = {};
  info.cbSize = sizeof(info);
  constexpr DWORD kInMenu = GUI_INMENUMODE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE;
  return GetGUIThreadInfo(GetCurrentThreadId(), &info) && (info.flags & kInMenu) != 0;
}

MessageHook::MessageHook()
    : hook_(SetWindowsHookExW(WH_GETMESSAGE, &SeeMessage, nullptr, GetCurrentThreadId())) {
  ++hooks;
}

MessageHook::~MessageHook() {
  --hooks;
  if (hook_ != nullptr) UnhookWindowsHookEx(hook_);
}

SystemLoop::SystemLoop(void (*end)()) : end_(end), outer_(std::exchange(innermost, this)) {
  pump_takes = false;
}

SystemLoop::~SystemLoop() {
  innermost = outer_;
  if (taken_) PostQuitMessage(*taken_);
}

void SystemLoop::TakeQuit(int code) {
  if (innermost == nullptr) return;
  innermost->taken_ = code;
  innermost->end_();
}

bool OfferHostMessage(MSG* message) {
  if (message == nullptr || hooks == 0) return false;
  if (message->hwnd == nullptr || IsSame(*message, offered)) return false;
  Offer(*message);
  return message->message == WM_NULL && message->hwnd == nullptr;
}

PumpStep PumpOne(bool wait) {
  MSG message = {};
  return CarriedFault::CallOut([&] {
    const BOOL got = TakeFromQueue(message, wait);
    if (got != 0 && got != -1 && message.message != WM_QUIT) return Handle(message);
    if (message.message != WM_QUIT) return wait ? PumpStep::kQuit : PumpStep::kNothing;
    quit_code = static_cast<int>(message.wParam);
    return PumpStep::kQuit;
  });
}

std::optional<int> LastQuitCode() {
  return quit_code;
}

}  // namespace lorv
