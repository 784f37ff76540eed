#include "tests/comm/thread_windows_scene.h"

namespace lorv_test {

IMPLEMENT_DYNAMIC(CDlgReback, Panel)

namespace {

constexpr UINT kRefresh = 1128;

std::string NoteOf(UINT message, WPARAM w, LPARAM l) {
  const std::string name = message == WM_CLOSE ? "close" : "refresh";
  return name + " " + std::to_string(w) + " " + std::to_string(l);
}

}  // namespace

Panel& Panel::Open(LPCTSTR title, bool visible) {
  const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | (visible ? WS_VISIBLE : 0);
  EXPECT_NE(Create(nullptr, title, style, CRect(100, 100, 400, 300), nullptr, 0), 0);
  return *this;
}

Panel& Panel::OpenIn(CWnd& parent, LPCTSTR class_name, LPCTSTR title) {
  EXPECT_NE(Create(class_name, title, WS_CHILD | WS_VISIBLE, CRect(0, 0, 90, 60), &parent, 1), 0);
  return *this;
}

LRESULT Panel::WindowProc(UINT message, WPARAM w, LPARAM l) {
  if (message == WM_CLOSE || message == kRefresh) notes.push_back(NoteOf(message, w, l));
  if (message != WM_CLOSE) return CWnd::WindowProc(message, w, l);
  if (takes_along != nullptr) takes_along->DestroyWindow();
  // As modeless dialogs do it: the system itself would only make a press of their Cancel button of it.
  if (!refuses) DestroyWindow();
  return 0;
}

void WindowsOfThread::Settle() {
  for (int i = 0; i < 1000 && desktop_->Pump(false); ++i) {
  }
}

}  // namespace lorv_test
