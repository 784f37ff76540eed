#include "tests/image/desktops/tip_scripts.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <thread>

#include "image/image_tool_tip.h"
#include "tests/image/decode/made_images.h"
#include "tests/image/thread_count.h"
#include "tests/support/data.h"

namespace lorv::test {
namespace {

// A thread that was waited for may be counted by the system for a moment more.
bool ComesDownTo(std::size_t threads) {
  for (int patience = 0; patience < 2000 && CountThreads() > threads; ++patience)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  return CountThreads() <= threads;
}

class TipScripts {
 public:
  TipScripts(Desktop& desktop, unsigned seed) : desktop_(desktop), random_(seed) {
    top_.Create(nullptr, _T("top"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(100, 100, 500, 400), nullptr, 0);
    Put("quick.gif", {0, 0, 8, 8, std::string(64, '\1'), 1, 2});
    Put("endless.gif", {0, 0, 8, 8, std::string(64, '\2'), 60'000, 3});
    Put("nothing.gif", {0, 0, 8, 8, std::string(64, '\3'), 0, 1});
    Pump();
  }

  void Play() {
    const auto steps = 4 + random_() % 12;
    for (unsigned i = 0; i < steps; ++i) Step();
    tip_.reset();
    Pump();
  }

 private:
  void Put(const char* name, const MadeFrame& frame) const {
    WriteBytes(folder_.Path() / name, MadeGif(8, 8, {frame, frame, frame}));
  }
  CString AnyPath() {
    static constexpr const char* kNames[] = {"quick.gif", "endless.gif", "nothing.gif", "missing.gif"};
    const auto path = (folder_.Path() / kNames[random_() % std::size(kNames)]).u8string();
    return CString::FromUtf8(std::string(path.begin(), path.end()));
  }
  void Pump() const {
    for (int i = 0; i < 20 && desktop_.Pump(false); ++i) {
    }
  }
  // With a window, which may be one that was made again.
  TImageToolTipCtrl& Tip() {
    if (tip_ == nullptr) tip_ = std::make_unique<TImageToolTipCtrl>(AnyPath());
    if (tip_->m_hWnd == nullptr) tip_->Create(&top_);
    return *tip_;
  }

  void Step() {
    switch (random_() % 12) {
      case 0:
      case 1:
        Tip().ShowAt(CPoint(150, 150));
        break;
      case 2:
        Tip().Hide();
        break;
      case 3:
        Tip().Invalidate();
        break;
      case 4:
        Tip().SetImage(AnyPath(), random_() % 2 == 0 ? _T("KL1") : _T("墙"));
        break;
      case 5:
        Tip().SetImageChangeStatus(random_() % 2 == 0);
        break;
      case 6:
        Tip().DestroyWindow();
        break;
      case 7:
        tip_.reset();
        break;
      case 8:
        Tip().Activate(random_() % 4 != 0 ? TRUE : FALSE);
        break;
      case 9:
        EXPECT_GT(Tip().GetIconSize().cx, 0);
        break;
      case 10:
        std::this_thread::sleep_for(std::chrono::microseconds(random_() % 1500));
        break;
      default:
        Pump();
    }
  }

  Desktop& desktop_;
  std::mt19937 random_;
  ScratchFolder folder_;
  CWnd top_;
  std::unique_ptr<TImageToolTipCtrl> tip_;
};

}  // namespace

void PlayTipScripts(Desktop& desktop, int count, unsigned seed) {
  TipScripts scripts(desktop, seed);
  // The desktop may have threads of its own from its first windows on, a sanitizer from the first other
  // thread.
  for (int i = 0; i < 10; ++i) scripts.Play();
  std::thread([] {}).join();
  const std::size_t threads = CountThreads();
  for (int i = 0; i < count; ++i) {
    scripts.Play();
    if (i % 100 != 0) continue;
    ASSERT_TRUE(ComesDownTo(threads)) << "script " << i;
  }
  EXPECT_TRUE(ComesDownTo(threads));
}

}  // namespace lorv::test
