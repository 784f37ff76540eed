#include "tests/conformance/random_behaviour.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <random>

#include "framework/drawing/device_context.h"
#include "framework/windows/controls.h"
#include "framework/windows/menu.h"

namespace lorv_test {
namespace {

constexpr int kWindows = 6;
constexpr int kReactions = 12;  // that one script may have; else it might never end
constexpr UINT kTimer = 1;      // milliseconds

class World;

template <class Base>
class Wild : public Base {
 public:
  explicit Wild(World& world) : world_(world) {}
  BOOL PreTranslateMessage(MSG* message) override;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override;

 private:
  World& world_;
};

class World {
 public:
  World(RandomUser& user, unsigned seed) : user_(user), random_(seed), scope_(user.Desktop()) {
    frame_.Create(nullptr, _T("frame"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 400, 300), nullptr, 0);
    for (std::size_t i = 0; i < kWindows; ++i) Make(i);
  }
  ~World() { left_ = 0; }

  void Play() {
    left_ = kReactions;
    for (int i = 0; i < 8; ++i) {
      Act();
      user_.Settle();
    }
    left_ = 0;
    frame_.DestroyWindow();
    user_.Settle();
  }

  // Called inside messages; true takes the message.
  bool React() {
    if (left_ <= 0 || Below(3) != 0) return false;
    --left_;
    switch (Below(9)) {
      case 0:
        Any().DestroyWindow();
        break;
      case 1:
        End(Below(kWindows));
        break;
      case 2:
        Make(Below(kWindows));
        break;
      case 3:
        Any().SetFocus();
        break;
      case 4:
        Any().SetWindowText(_T("KL12\r\n梁"));
        break;
      case 5:
        Any().SetCapture();
        break;
      case 6:
        Any().EnableWindow(static_cast<BOOL>(Below(2)));
        break;
      case 7:
        Act();
        user_.Desktop().Pump(false);
        break;
      default:
        Paint();
        break;
    }
    return Below(8) == 0;
  }

 private:
  std::size_t Below(std::size_t limit) { return random_() % limit; }

  CWnd& Any() {
    CWnd* const chosen = windows_[Below(kWindows)].get();
    return chosen == nullptr || Below(12) == 0 ? frame_ : *chosen;
  }

  // The object goes, its window with it.
  void End(std::size_t index) { const std::unique_ptr<CWnd> gone = std::move(windows_[index]); }

  void Make(std::size_t index) {
    End(index);
    if (frame_.m_hWnd == nullptr) return;
    std::unique_ptr<CWnd> fresh;
    DWORD style = WS_CHILD | WS_VISIBLE;
    switch (Below(5)) {
      case 0:
        fresh = std::make_unique<Wild<CEdit>>(*this);
        break;
      case 1:
        fresh = std::make_unique<Wild<CEdit>>(*this);
        style |= ES_MULTILINE;
        break;
      case 2:
        fresh = std::make_unique<Wild<CComboBox>>(*this);
        style |= CBS_DROPDOWN;
        break;
      case 3:
        fresh = std::make_unique<Wild<CListBox>>(*this);
        style |= LBS_NOTIFY;
        break;
      default:
        fresh = std::make_unique<Wild<CWnd>>(*this);
        break;
    }
    CWnd* const made = fresh.get();
    // Making it runs handlers, which may fill the same place.
    const int at = static_cast<int>(index);
    made->Create(nullptr, _T("w"), style, CRect(at * 60, 0, at * 60 + 50, 40), &frame_,
                 static_cast<UINT>(at + 1));
    if (made->m_hWnd != nullptr) made->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(_T("C30")));
    if (made->m_hWnd != nullptr) made->SetTimer(1, kTimer, nullptr);
    const std::unique_ptr<CWnd> former = std::exchange(windows_[index], std::move(fresh));
  }

  void Paint() {
    CClientDC dc(&Any());
    dc.FillSolidRect(CRect(0, 0, 30, 30), RGB(1, 2, 3));
    dc.DrawText(_T("a&b"), CRect(0, 0, 30, 30), DT_CENTER);
  }

  void Act() {
    static constexpr std::array kKeys = {VK_RETURN, VK_TAB,    VK_ESCAPE, VK_LEFT,
                                         VK_DOWN,   VK_DELETE, VK_F4,     VK_BACK};
    switch (Below(6)) {
      case 0:
        user_.Press(kKeys[Below(kKeys.size())]);
        break;
      case 1:
        user_.Type(_T("aB梁"));
        break;
      case 2:
        user_.Click({static_cast<LONG>(4 + Below(360)), static_cast<LONG>(30 + Below(40))});
        break;
      case 3:
        Any().PostMessage(static_cast<UINT>(Below(2) == 0 ? WM_CLOSE : WM_USER));
        break;
      case 4:
        user_.Advance(2 * kTimer);
        break;
      default:
        Any().Invalidate();
        user_.Wheel(120);
        break;
    }
  }

  RandomUser& user_;
  std::mt19937 random_;
  lorv::ScopedDesktop scope_;
  int left_ = 0;
  Wild<CWnd> frame_{*this};
  std::array<std::unique_ptr<CWnd>, kWindows> windows_;
};

template <class Base>
LRESULT Wild<Base>::WindowProc(UINT message, WPARAM w, LPARAM l) {
  const HWND window = this->m_hWnd;
  if (world_.React()) return 0;
  // The object itself may have ended in there.
  if (lorv::MappedWindow(window) != this) return 0;
  return Base::WindowProc(message, w, l);
}

template <class Base>
BOOL Wild<Base>::PreTranslateMessage(MSG* /*message*/) {
  return static_cast<BOOL>(world_.React());
}

}  // namespace

void PlayRandomBehaviour(RandomUser& user, unsigned script) {
  World world(user, script);
  world.Play();
  EXPECT_TRUE(user.Desktop().Windows().empty()) << "script " << script;
}

}  // namespace lorv_test
