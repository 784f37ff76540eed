#include "tests/platform/win32/real_input.h"

#include <algorithm>

#include "platform/win32/desktop/win32_desktop.h"

Probe::~Probe() {
  if (window == nullptr) return;
  const HWND gone = window;
  on = nullptr;
  if (const auto peer = Peer()) peer->Destroy();
  lorv::UnmapWindow(gone);
}

lorv::WindowRequest Probe::Request(lorv::WindowKind kind, DWORD style, const RECT& place, HWND parent,
                                   UINT id) {
  lorv::WindowRequest request;
  request.kind = kind;
  request.style = style;
  request.place = place;
  request.parent = parent;
  request.id = id;
  request.attach = [this](HWND made) {
    window = made;
    lorv::MapWindow(made, this);
  };
  return request;
}

int Probe::Count(UINT message) const {
  return static_cast<int>(
      std::count_if(seen.begin(), seen.end(), [=](const Message& m) { return m.number == message; }));
}

std::vector<UINT> Probe::Codes(UINT id) const {
  std::vector<UINT> codes;
  for (const Message& m : seen)
    if (m.number == WM_COMMAND && LOWORD(m.w) == id) codes.push_back(HIWORD(m.w));
  return codes;
}

int Probe::At(UINT message) const {
  const auto found =
      std::find_if(seen.begin(), seen.end(), [=](const Message& m) { return m.number == message; });
  return found == seen.end() ? -1 : static_cast<int>(found - seen.begin());
}

LRESULT Probe::HandleMessage(HWND at, UINT message, WPARAM w, LPARAM l) {
  const Message reported = {message, w, l};
  seen.push_back(reported);
  LRESULT result = 0;
  if (on != nullptr && on(reported, result)) return result;
  const auto peer = lorv::DesktopInForce().Find(at);
  if (peer != nullptr) result = peer->Default(message, w, l);
  if (message == WM_NCDESTROY) {
    lorv::UnmapWindow(at);
    window = nullptr;
  }
  return result;
}

bool Probe::TakeMessage(MSG& message) {
  offered.push_back(message);
  return take != nullptr && take(message);
}

std::unique_ptr<lorv::Desktop> RealWindows::MakeDesktop() {
  return lorv::MakeWin32Desktop();
}

RealWindows::RealWindows() {
  top.Make(
      top.Request(lorv::WindowKind::Top, WS_OVERLAPPEDWINDOW | WS_VISIBLE, {100, 100, 500, 400}, nullptr));
  top.Peer()->Activate();
  // Out of the way: an open list follows the mouse that lies on it.
  MoveMouse({1270, 1010});
}

RealWindows::~RealWindows() {
  // No key stays down for the next test.
  for (const int key : {VK_SHIFT, VK_CONTROL, VK_MENU}) {
    if ((GetAsyncKeyState(key) & 0x8000) != 0) KeyUp(key);
  }
  if ((GetAsyncKeyState(VK_LBUTTON) & 0x8000) != 0) Button(false);
  Settle(10);
}

HWND RealWindows::MakeChild(Probe& probe, lorv::WindowKind kind, DWORD style, const RECT& place, UINT id) {
  return probe.Make(probe.Request(kind, style | WS_CHILD | WS_VISIBLE, place, top.window, id));
}

void RealWindows::Settle(DWORD quiet) {
  DWORD last = GetTickCount();
  while (GetTickCount() - last < quiet) {
    if (Desk().Pump(false)) {
      last = GetTickCount();
    } else {
      Sleep(2);
    }
  }
}

bool RealWindows::Until(const std::function<bool()>& is_so, DWORD patience) {
  const DWORD start = GetTickCount();
  while (!is_so() && GetTickCount() - start < patience)
    if (!Desk().Pump(false)) Sleep(2);
  return is_so();
}

void RealWindows::SendKey(int key, DWORD flags) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = static_cast<WORD>(key);
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC));
  input.ki.dwFlags = flags;
  EXPECT_EQ(SendInput(1, &input, sizeof(input)), 1u);
}

void RealWindows::Press(int key) {
  KeyDown(key);
  KeyUp(key);
  Settle();
}

void RealWindows::Type(LPCTSTR letters) {
  for (; *letters != 0; ++letters) {
    KeyDown(*letters);
    KeyUp(*letters);
  }
  Settle();
}

void RealWindows::MoveMouse(POINT screen) {
  Desk().SetCursorPosition(screen);
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = MOUSEEVENTF_MOVE;
  SendInput(1, &input, sizeof(input));
  Settle();
}

void RealWindows::Button(bool down) {
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
  EXPECT_EQ(SendInput(1, &input, sizeof(input)), 1u);
  Settle();
}

void RealWindows::Click(POINT screen) {
  MoveMouse(screen);
  Button(true);
  Button(false);
}

OtherProgram::~OtherProgram() {
  done_ = true;
  thread_.join();
}

void OtherProgram::Run() {
  const HWND window = CreateWindowExW(0, L"Static", L"other", WS_POPUP | WS_VISIBLE, 700, 600, 90, 50,
                                      nullptr, nullptr, nullptr, nullptr);
  SetForegroundWindow(window);
  window_ = window;
  MSG message;
  while (!done_) {
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    Sleep(2);
  }
  DestroyWindow(window);
}
