#include "tests/conformance/painting_threads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "framework/drawing/device_context.h"
#include "framework/windows/window.h"

namespace lorv_test {

void PaintFromTwoThreads(lorv::Desktop& desktop, const std::function<void(HWND window, int round)>& disturb) {
  CWnd window;
  window.Create(nullptr, _T("t"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 200, 150), nullptr, 0);
  const HWND handle = window.m_hWnd;
  std::atomic<bool> stop{false};
  std::atomic<int> rounds{0};
  std::thread painter([&] {
    while (!stop) {
      const auto peer = lorv::PeerOf(handle);
      const CRect client(peer->ClientRect());
      CDC dc(std::shared_ptr<lorv::Canvas>(peer->ClientCanvas()));
      dc.FillSolidRect(client, RGB(0, 0, 255));
      dc.DrawText(_T("梁 KL1"), client, DT_CENTER | DT_SINGLELINE);
      lorv::DesktopInForce().Post(handle, WM_USER, 0, 0);
      ++rounds;
    }
  });
  for (int i = 0; i < 200; ++i) {
    window.MoveWindow(0, 0, 120 + i % 50, 100 + i % 30);
    CClientDC dc(&window);
    dc.FillSolidRect(CRect(0, 0, 60, 60), RGB(255, 0, 0));
    disturb(handle, i);
    desktop.Pump(false);
  }
  window.DestroyWindow();
  const int before = rounds;
  while (rounds < before + 5) std::this_thread::yield();
  stop = true;
  painter.join();
  EXPECT_EQ(desktop.Find(handle), nullptr);
  EXPECT_FALSE(desktop.Post(handle, WM_USER, 0, 0));
}

}  // namespace lorv_test
