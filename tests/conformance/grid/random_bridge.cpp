#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <random>

#include "framework/objects/exceptions.h"
#include "framework/windows/dialog.h"
#include "grid/CBcgTrueDbGridCtrl.h"
#include "grid/records/memory_records.h"
#include "tests/conformance/grid/grid_mirror.h"
#include "tests/conformance/grid/random_grid.h"
#include "tests/support/event_sheet.h"

namespace lorv_test {
namespace {

constexpr int kBridgeReactions = 10;  // that one step may have; else it might never end
constexpr int kBridgeSteps = 12;
constexpr int kMostBridgeRows = 12;

constexpr lorv::DialogTemplate kPassing = {300, _T("passing"), 80, 40, _T("font"), 9, {}};

// A modal dialog that closes by itself.
class PassingDialog : public CDialog {
 public:
  explicit PassingDialog(CWnd* parent) : CDialog(kPassing, parent) {}

 protected:
  BOOL OnInitDialog() override {
    PostMessage(WM_CLOSE);
    return CDialog::OnInitDialog();
  }
};

class BridgeWorld {
 public:
  BridgeWorld(RandomUser& user, unsigned script)
      : user_(user), random_(script), script_(script), scope_(user.Desktop()), records_({_T("a"), _T("b")}) {
    for (int i = 0; i < 3; ++i) records_.Add({_variant_t(i), _variant_t(_T("r"))});
    outside_.Create(nullptr, _T("outside"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(500, 0, 700, 100),
                    nullptr, 0);
    Make();
  }

  void Play() {
    for (int i = 0; i < kBridgeSteps && !testing::Test::HasFailure(); ++i) {
      left_ = kBridgeReactions;
      Act();
      user_.Settle();
      left_ = 0;
      user_.Settle();
      if (grid_ != nullptr) {
        SCOPED_TRACE("script " + std::to_string(script_));
        ExpectSoundSelection(*grid_);
      }
    }
    left_ = 0;
    sheet_.reset();
    grid_.reset();
    outside_.DestroyWindow();
    user_.Settle();
  }

 private:
  int Below(int limit) { return limit <= 0 ? 0 : static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  int AnyRow() { return grid_ == nullptr ? 0 : Below(grid_->GetRowCount()); }
  int AnyColumn() { return grid_ == nullptr ? 0 : Below(grid_->GetColumnCount()); }

  void Make() {
    const int budget = std::exchange(left_, 0);
    if (sheet_ == nullptr || sheet_->m_hWnd == nullptr) MakeSheet();
    grid_ = std::make_unique<CBcgTrueDbGridCtrl>();
    grid_->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 240), sheet_.get(), kTableId);
    grid_->ReDim(5, 3);
    for (int row = 0; row < 5; ++row)
      for (int column = 0; column < 3; ++column) Furnish(row, column);
    grid_->SetReturnAddNewRow(Below(2) == 0);
    grid_->SetFetchStyle(true);
    grid_->SetFetchRowStyle(true);
    grid_->AdjustLayout();
    grid_->SetFocus();
    left_ = budget;
  }
  void MakeSheet() {
    sheet_ = std::make_unique<EventSheet>();
    for (const lorv::EventKind& kind : lorv::kEventKinds) sheet_->muted.insert(kind.id);
    sheet_->Create(nullptr, _T("sheet"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 460, 360), nullptr, 0);
    sheet_->on = [this](int) { Turn(); };
    sheet_->on_old = [this](VARIANT& old) {
      if (Below(4) == 0) static_cast<_variant_t&>(old) = _variant_t(Below(9));
    };
    sheet_->on_key = [this](short& key) {
      if (Below(8) == 0) key = static_cast<short>(Below(60));
    };
  }
  void Furnish(int row, int column) {
    switch (Below(6)) {
      case 0:
        static_cast<void>(grid_->ReplaceItem(row, column, new CBCGPGridCheckItem(Below(2) == 0), FALSE));
        return;
      case 1:
        static_cast<void>(grid_->SetButton(row, column, true));
        return;
      case 2:
        for (int i = 0; i < 3; ++i) grid_->GetItem(row, column)->AddOption(_T("option"));
        return;
      default:
        grid_->SetValue(row, column, _variant_t(Below(90)), FALSE);
    }
  }

  // What a dialog does in an event.
  void Turn() {
    if (left_ <= 0 || Below(3) != 0 || sheet_ == nullptr) return;
    --left_;
    sheet_->cancelled = Below(2) == 0 ? std::set<int>{5, 8, 9, 13, 15, 26, 63} : std::set<int>{};
    const bool raises = Below(6) == 0;
    React();
    if (raises) Raise();
  }
  void Raise() {
    if (Below(2) == 0) throw new CInvalidArgException;
    throw static_cast<LPCTSTR>(_T("raised"));
  }

  void React() {
    if (grid_ == nullptr) return Make();
    switch (Below(17)) {
      case 0:
        return grid_->RemoveAll();
      case 1:
        return grid_->ReDim(Below(kMostBridgeRows), 1 + Below(4));
      case 2:
        return grid_->SetDataSource(&records_);
      case 3:
        return End();
      case 4: {
        PassingDialog dialog(Below(2) == 0 ? sheet_.get() : &outside_);
        dialog.DoModal();
        return;
      }
      case 5:
        return grid_->PostMsg(Below(9));
      case 6:
        grid_->SendMessage(WM_KEYDOWN, static_cast<WPARAM>(VK_LEFT + Below(4)));
        return;
      case 7:
        static_cast<void>(grid_->SetCurSel(CBCGPGridItemID(AnyRow(), AnyColumn())));
        return;
      case 8:
        static_cast<void>(grid_->RowBookmark(AnyRow()));
        return;
      case 9:
        static_cast<void>(grid_->DeleteRows(AnyRow(), 1 + Below(2)));
        return;
      case 10:
        if (grid_->GetRowCount() < kMostBridgeRows) static_cast<void>(grid_->Append());
        return;
      case 11:
        return grid_->SetValue(AnyRow(), AnyColumn(), _variant_t(Below(500)), TRUE);
      case 12:
        static_cast<void>(grid_->EndEditItem(static_cast<BOOL>(Below(2))));
        return;
      case 13:
        return grid_->SetCurEditingItem(AnyRow(), AnyColumn());
      case 14:
        outside_.SetFocus();
        return;
      case 15:
        grid_->UpdateWindow();
        return;
      default:
        grid_->SetAllowUpdate(Below(2) == 0);
        grid_->PostMessage(lorv::kMessageNavigate, static_cast<WPARAM>(1 << Below(4)));
    }
  }

  // The grid, its window, the dialog that holds it, or that one's window.
  void End() {
    switch (Below(8)) {
      case 0:
        grid_->DestroyWindow();
        return;
      case 1:
        grid_.reset();
        return;
      case 2:
        sheet_->DestroyWindow();
        return;
      case 3:
        sheet_.reset();
        return;
      default:
        grid_->Sort(AnyColumn(), static_cast<BOOL>(Below(2)));
    }
  }

  CPoint CellPoint() {
    const CRect place = grid_->GetItemRect({AnyRow(), AnyColumn()});
    CPoint at = Below(4) == 0 ? CPoint(Below(400), Below(240)) : place.CenterPoint();
    if (Below(4) == 0) at.x = place.right - 5;
    grid_->ClientToScreen(&at);
    return at;
  }

  // What the user does.
  void Act() {
    static constexpr std::array kKeys = {VK_RETURN, VK_TAB, VK_ESCAPE, VK_LEFT, VK_RIGHT, VK_DOWN,
                                         VK_UP,     VK_F2,  VK_F4,     VK_BACK, VK_SPACE, VK_NEXT};
    if (grid_ == nullptr || grid_->m_hWnd == nullptr || sheet_ == nullptr) return Make();
    switch (Below(8)) {
      case 0:
      case 1:
        return user_.Press(kKeys[static_cast<std::size_t>(Below(static_cast<int>(kKeys.size())))]);
      case 2:
        user_.Type(_T("7"));
        user_.Settle();
        return user_.Press(VK_RETURN);
      case 3:
      case 4:
        return user_.Click(CellPoint());
      case 5:
        grid_->SetCurEditingItem(AnyRow(), AnyColumn());
        user_.Settle();
        return user_.Type(_T("8"));
      case 6:
        grid_->SetFocus();
        if (grid_ != nullptr) grid_->Invalidate();
        return;
      default:
        return user_.Wheel(Below(2) == 0 ? 120 : -120);
    }
  }

  RandomUser& user_;
  std::mt19937 random_;
  unsigned script_;
  lorv::ScopedDesktop scope_;
  int left_ = 0;
  lorv::MemoryRecords records_;
  CWnd outside_;
  std::unique_ptr<EventSheet> sheet_;
  std::unique_ptr<CBcgTrueDbGridCtrl> grid_;
};

}  // namespace

void PlayRandomBridge(RandomUser& user, unsigned script) {
  BridgeWorld world(user, script);
  world.Play();
  EXPECT_TRUE(user.Desktop().Windows().empty()) << "script " << script;
}

}  // namespace lorv_test
