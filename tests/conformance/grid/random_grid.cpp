#include "tests/conformance/grid/random_grid.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <functional>
#include <memory>
#include <random>
#include <string>

#include "framework/objects/exceptions.h"
#include "tests/conformance/grid/grid_mirror.h"

namespace lorv_test {
namespace {

constexpr int kGridReactions = 12;  // that one script may have; else it might never end
constexpr int kSteps = 12;
constexpr int kMostRows = 14;
constexpr int kMostColumns = 6;
constexpr UINT kGrid = 7;

class GridWorld;

// What a handler throws in the middle of a fill.
struct Refusal {};

// Each event gives the world a turn. What follows asks whether the grid is there still.
class WildGrid : public CBCGPBasicGridCtrl {
 public:
  explicit WildGrid(GridWorld& world) : world_(world) {}
  int AddRow(CBCGPGridRow* row, int relayout) override { return CBCGPBasicGridCtrl::AddRow(row, relayout); }
  // The end of an edit adds a row by itself.
  int AddRow(int relayout) override;
  void OnItemChanged(CBCGPGridItem* item, int row, int column) override;
  void OnComboItemSelect() override { Turn(); }
  void OnItemUpdate() override {
    if (Turn()) CBCGPBasicGridCtrl::OnItemUpdate();
  }
  void SetValue(int row, int column, const _variant_t& value, BOOL redraw = TRUE) override;
  BOOL OnClickButton(CPoint point) override {
    return Turn() ? CBCGPBasicGridCtrl::OnClickButton(point) : FALSE;
  }
  using CBCGPBasicGridCtrl::InGesture;
  std::string Following() const {
    return std::string(m_bTracking ? "a column" : "") + (m_bSelecting ? " a selection" : "") +
           (CBCGPGridCtrl::InGesture() ? "" : " a row or a fill");
  }
  using CBCGPBasicGridCtrl::IsToolTipShown;

 protected:
  // True while the grid lives.
  bool Turn();
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override;
  BOOL PreTranslateMessage(MSG* message) override {
    return Turn() ? CBCGPBasicGridCtrl::PreTranslateMessage(message) : TRUE;
  }
  void OnSelChanging(const CBCGPGridRange& /*range*/, BOOL /*selected*/) override { Turn(); }
  void OnSelChanged(const CBCGPGridRange& range, BOOL selected) override {
    if (Turn()) CBCGPBasicGridCtrl::OnSelChanged(range, selected);
  }
  void OnAfterInplaceEditCreated(CBCGPGridItem* item, CWnd* editor) override {
    if (Turn() && GetEditingItem() == item) CBCGPBasicGridCtrl::OnAfterInplaceEditCreated(item, editor);
  }
  void OnEndInplaceEdit(CBCGPGridItem* item) override {
    const CBCGPGridItemID id = item->GetGridItemID();
    if (Turn() && GetGridItem(id) == item) CBCGPBasicGridCtrl::OnEndInplaceEdit(item);
  }
  void OnResizeColumns() override {
    if (Turn()) CBCGPBasicGridCtrl::OnResizeColumns();
  }
  void OnHeaderDividerDblClick(int column) override {
    if (Turn()) CBCGPBasicGridCtrl::OnHeaderDividerDblClick(column);
  }
  void TrackToolTip(CPoint point) override {
    if (Turn()) CBCGPBasicGridCtrl::TrackToolTip(point);
  }
  void OnHeaderColumnClick(int column) override {
    if (Turn()) CBCGPBasicGridCtrl::OnHeaderColumnClick(column);
  }
  void OnPosSizeChanged() override {
    if (Turn()) CBCGPBasicGridCtrl::OnPosSizeChanged();
  }
  void OnUpdateVScrollPos(int /*offset*/, int /*previous*/) override { Turn(); }
  void OnUpdateHScrollPos(int /*offset*/, int /*previous*/) override { Turn(); }

 private:
  GridWorld& world_;
};

class GridWorld {
 public:
  GridWorld(RandomUser& user, unsigned script)
      : user_(user), random_(script), hostile_(script % 2 == 0), script_(script), scope_(user.Desktop()) {
    frame_.Create(nullptr, _T("frame"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 460, 400), nullptr, 0);
    outside_.Create(WS_CHILD | WS_VISIBLE, CRect(0, 300, 80, 320), &frame_, 8);
    MakeGrid();
  }
  ~GridWorld() { left_ = 0; }

  void Play() {
    for (int i = 0; i < kSteps && !testing::Test::HasFailure(); ++i) {
      left_ = hostile_ ? kGridReactions : 0;
      Guarded([this] { Act(); });
      Work();
      left_ = 0;
      Work();
      ExpectSound();
    }
    grid_.reset();
    frame_.DestroyWindow();
    user_.Settle();
  }

  void Turn() {
    if (left_ <= 0 || Below(3) != 0) return;
    --left_;
    struct Within {
      explicit Within(int& depth) : depth_(depth) { ++depth_; }
      ~Within() { --depth_; }
      int& depth_;
    };
    const Within within(reacting_);
    React();
  }

  // Only where nothing but the fill is on the way: other work is not done by halves here.
  void MayRefuse() {
    if (!may_refuse_ || reacting_ > 0 || Below(4) != 0) return;
    stale_ = true;
    throw Refusal();
  }

  void ValueSet(int row, int column) {
    const CBCGPGridRow* found = grid_ == nullptr ? nullptr : grid_->GetRow(row);
    GridMirror::Cell* cell = mirror_.At(row, column);
    if (!stale_ && found != nullptr && cell != nullptr) cell->text = found->GetCellText(column);
  }

  void RowAdded(int at) {
    if (!stale_) mirror_.InsertRow(at, grid_->GetColumnCount());
  }

  // The user changed a cell: the mirror is notified by the grid, and by nothing else.
  void Changed(const CBCGPGridItem& item, int row, int column) {
    EXPECT_EQ(grid_->GetGridItem({row, column}), &item) << "script " << script_;
    if (GridMirror::Cell* cell = mirror_.At(row, column)) cell->text = item.FormatItem();
  }

 private:
  int Below(int limit) { return limit <= 0 ? 0 : static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  int AnyRow() { return Below(grid_->GetRowCount()); }
  int AnyColumn() { return Below(grid_->GetColumnCount()); }

  void MakeGrid() {
    grid_.reset();
    if (frame_.m_hWnd == nullptr) return;
    const int budget = std::exchange(left_, 0);
    grid_ = std::make_unique<WildGrid>(*this);
    grid_->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 280), &frame_, kGrid);
    grid_->InsertColumns(_T("a,b,c,d"), _T("70,70,70,70"), 0);
    grid_->SetReturnAddNewRow(Below(2) == 0);
    grid_->SetShortCut(true);
    grid_->SetDragCopyFill(Below(4) != 0);
    if (Below(3) == 0) grid_->GetColumnsInfo().SetColumnWidthAutoSize(Below(4), TRUE);
    if (Below(6) == 0) grid_->SetAllowFocus(Below(4), false);
    for (int row = 0; row < 5; ++row) PutRow(row);
    grid_->AdjustLayout();
    mirror_.Copy(*grid_);
    stale_ = false;
    grid_->SetFocus();
    left_ = budget;
  }

  void PutRow(int before) {
    CBCGPGridRow* row = grid_->CreateRow(grid_->GetColumnCount());
    // One in three keeps its plain cells, which hold values alone for as long as nobody asks for them.
    const bool plain = Below(3) == 0;
    for (int column = 0; column < row->GetItemCount() && !plain; ++column)
      row->ReplaceItem(column, MakeItem(), FALSE, FALSE);
    const int at = before >= grid_->GetRowCount() ? grid_->AddRow(row, FALSE)
                                                  : grid_->InsertRowBefore(before, row, FALSE);
    if (stale_) return;
    mirror_.InsertRow(at, row->GetItemCount());
    for (int column = 0; column < row->GetItemCount(); ++column)
      mirror_.rows[static_cast<std::size_t>(at)][static_cast<std::size_t>(column)].text =
          row->GetCellText(column);
  }

  CBCGPGridItem* MakeItem() {
    CString text;
    text.Format(_T("%d"), Below(90));
    // One in three is cut off, and has a tip.
    if (Below(3) == 0) text += _T(" a text that no column here is wide enough for");
    switch (Below(8)) {
      case 0:
        return new CBCGPGridCheckItem(Below(2) == 0);
      case 1:
        return new CBCGPGridButtonItem(_variant_t(text), 2);
      case 2:
        return new CBCGPGridColorItemEx(RGB(1, 2, 3), nullptr);
      case 3: {
        auto* list = new CBCGPGridPresentationItem(_variant_t(text));
        list->SetPresentationStyle(lorv::kListCell);
        for (int i = 0; i < 4; ++i) list->AddOption(_T("o"));
        return list;
      }
      case 4: {
        auto* lines = new CBCGPGridPresentationItem(_variant_t(text));
        lines->SetMultiLineItem(TRUE);
        return lines;
      }
      default:
        return new CBCGPGridItem(_variant_t(text));
    }
  }

  // Everything that a handler or a program does. Each case ends by what may run handlers.
  void React() {
    if (grid_ == nullptr) return MakeGrid();
    switch (Below(16)) {
      case 0:
        return TakeRow();
      case 1:
        return AddRow();
      case 2:
        return SetText();
      case 3:
        return SetStates();
      case 4:
        static_cast<void>(grid_->SetCurSel(CBCGPGridItemID(AnyRow(), AnyColumn())));
        return;
      case 5:
        return Refocus();
      case 6:
        static_cast<void>(grid_->EndEditItem(Below(2)));
        return;
      case 7:
        grid_->SetCurEditingItem(AnyRow(), AnyColumn());
        return;
      case 8:
        return Hide();
      case 9:
        return Rebuild();
      case 10:
        return Composite();
      case 11:
        if (Below(4) == 0) return EndGrid();
        grid_->AdjustLayout();
        return;
      case 12:
        Act();
        user_.Desktop().Pump(false);
        return;
      default:
        return SetText();
    }
  }

  // Closing an editor moves the focus, and runs handlers: the row is chosen when none of them can come.
  bool Closed() {
    if (grid_ == nullptr) return false;
    static_cast<void>(grid_->EndEditItem(FALSE));
    return grid_ != nullptr && grid_->GetEditingItem() == nullptr;
  }

  void TakeRow() {
    if (!Closed() || grid_->GetRowCount() == 0) return;
    const int row = AnyRow();
    EXPECT_EQ(grid_->RemoveRow(row, FALSE), 1);
    if (!stale_) mirror_.rows.erase(mirror_.rows.begin() + row);
    grid_->AdjustLayout();
  }

  void AddRow() {
    if (grid_->GetRowCount() >= kMostRows) return;
    PutRow(Below(grid_->GetRowCount() + 1));
    grid_->AdjustLayout();
  }

  void SetText() {
    if (!Closed()) return;
    const int row = AnyRow();
    const int column = AnyColumn();
    const CBCGPGridRow* found = grid_->GetRow(row);
    if (stale_ || found == nullptr || mirror_.At(row, column) == nullptr) return;
    const bool checked = dynamic_cast<CBCGPGridCheckItem*>(found->FindItem(column)) != nullptr;
    grid_->SetValue(row, column, checked ? _variant_t(Below(2) == 0) : _variant_t(Below(500)), TRUE);
  }

  void SetStates() {
    const int row = AnyRow();
    const int column = AnyColumn();
    GridMirror::Cell* cell = mirror_.At(row, column);
    CBCGPGridItem* item = grid_->GetItem(row, column);
    if (stale_ || item == nullptr || cell == nullptr) return;
    cell->read_only = Below(3) == 0;
    cell->allow_edit = Below(3) != 0;
    item->SetReadOnly(static_cast<BOOL>(cell->read_only));
    item->AllowEdit(static_cast<BOOL>(cell->allow_edit));
  }

  void Refocus() {
    if (Below(2) == 0)
      outside_.SetFocus();
    else
      grid_->SetFocus();
  }

  void Hide() {
    if (Below(3) == 0) {
      grid_->ShowWindow(Below(2) == 0 ? SW_HIDE : SW_SHOW);
      return;
    }
    if (Below(2) == 0)
      grid_->SetRowVisible(AnyRow(), Below(3) != 0);
    else
      grid_->SetColumnVisible(AnyColumn(), static_cast<BOOL>(Below(3) != 0));
    grid_->AdjustLayout();
  }

  void Rebuild() {
    if (!Closed()) return;
    static_cast<CBCGPGridCtrl&>(*grid_).RemoveAll(FALSE);
    mirror_.rows.clear();
    const int rows = Below(5);
    for (int row = 0; row < rows; ++row) PutRow(row);
    grid_->AdjustLayout();
  }

  // Work in several steps, with handlers between them: the mirror cannot follow it and is made anew.
  void Composite() {
    stale_ = true;
    switch (Below(10)) {
      case 0:
        grid_->RemoveAll();
        return;
      case 1:
        static_cast<void>(grid_->DeleteRows(AnyRow(), 2));
        return;
      case 2:
        static_cast<void>(grid_->InsertRows(AnyRow(), grid_->GetRowCount() < kMostRows ? 2 : 0));
        return;
      case 3:
        static_cast<void>(grid_->DeleteColumn(AnyColumn()));
        return;
      case 4:
        if (grid_->GetColumnCount() < kMostColumns) static_cast<void>(grid_->AddColumn(_T("n"), 50, nullptr));
        return;
      case 5:
        static_cast<void>(grid_->ClearAll());
        return;
      case 6:
        static_cast<void>(grid_->DeleteSelectedRows());
        return;
      case 7:
        grid_->Sort(AnyColumn(), static_cast<BOOL>(Below(2)));
        return;
      case 8:
        static_cast<void>(
            grid_->MergeRange(CBCGPGridRange({AnyRow(), AnyColumn()}, {AnyRow(), AnyColumn()})));
        return;
      default:
        ReplaceCell();
        return;
    }
  }

  void ReplaceCell() {
    std::unique_ptr<CBCGPGridItem> fresh(MakeItem());
    if (grid_->ReplaceItem(AnyRow(), AnyColumn(), fresh.get(), FALSE) != 0)
      static_cast<void>(fresh.release());
  }

  void EndGrid() {
    if (Below(2) == 0)
      grid_->DestroyWindow();
    else
      grid_.reset();
  }

  CPoint CellPoint() {
    const CRect place = grid_->GetItemRect({AnyRow(), AnyColumn()});
    CPoint at = Below(5) == 0 ? CPoint(Below(400), Below(280)) : place.CenterPoint();
    if (Below(6) == 0) at.x = place.right - 5;
    grid_->ClientToScreen(&at);
    return at;
  }

  // What the user does.
  void Act() {
    static constexpr std::array kKeys = {VK_RETURN, VK_TAB,  VK_ESCAPE, VK_LEFT, VK_RIGHT, VK_DOWN, VK_UP,
                                         VK_DELETE, VK_HOME, VK_F2,     VK_F4,   VK_BACK,  VK_SPACE};
    if (grid_ == nullptr || grid_->m_hWnd == nullptr) return MakeGrid();
    switch (Below(hostile_ ? 10 : 12)) {
      case 0:
      case 1:
        user_.Press(kKeys[static_cast<std::size_t>(Below(static_cast<int>(kKeys.size())))]);
        return;
      case 2:
        user_.Type(_T("ab"));
        user_.Settle();
        user_.Press(VK_RETURN);
        return;
      case 3:
        user_.Click(CellPoint());
        return;
      case 4:
        grid_->SetFocus();
        return;
      case 5:
        grid_->SetCurEditingItem(AnyRow(), AnyColumn());
        user_.Settle();
        user_.Type(_T("x"));
        return;
      case 6:
        if (grid_ != nullptr) grid_->PostMessage(lorv::kMessageNavigate, static_cast<WPARAM>(1 << Below(4)));
        return;
      case 7:
      case 8:
        return Drag();
      case 9:
        user_.MoveMouse(CellPoint());
        user_.RightButton(true), user_.RightButton(false);
        return;
      default:
        React();
    }
  }

  POINT OnScreen(CPoint at) const {
    POINT screen = at;
    grid_->ClientToScreen(&screen);
    return screen;
  }

  // Where something begins that follows the mouse.
  POINT Grip() {
    const CRect cell = grid_->GetItemRect({AnyRow(), AnyColumn()});
    const CRect border = grid_->GetSelectionBorder();
    switch (Below(6)) {
      case 0:
        return OnScreen(CPoint(cell.right - 1, 8));
      case 1:
        return OnScreen(CPoint(8, cell.bottom - 1));
      case 2:
        return OnScreen(CPoint(cell.right - 20, 8));
      case 3:
        return CellPoint();
      default:
        return OnScreen(CPoint(border.right - 1, border.bottom - 1));
    }
  }

  // The mouse is pressed, moved and let go, with all that may come between.
  void Drag() {
    const auto there = [this] { return grid_ != nullptr && grid_->m_hWnd != nullptr; };
    user_.MoveMouse(Grip());
    user_.LeftButton(true);
    Work();
    const int moves = Below(5);
    for (int i = 0; i < moves && there(); ++i) {
      user_.MoveMouse(Below(8) == 0 ? POINT{700 + Below(100), 20} : CellPoint());
      Work();
      if (there() && Below(9) == 0) LoseMouse();
      Work();
    }
    may_refuse_ = hostile_;
    user_.LeftButton(false);
    Work();
    // What threw may have come before the release.
    Work();
    may_refuse_ = false;
  }

  // A handler of a fill may refuse, and a fill whose selection is gone fails.
  void Guarded(const std::function<void()>& work) {
    try {
      work();
      return;
    } catch (const Refusal&) {
    } catch (CInvalidArgException* failure) {
      failure->Delete();
    }
    may_refuse_ = false;
    stale_ = true;
  }
  void Work() {
    Guarded([this] { user_.Settle(); });
  }

  void LoseMouse() {
    if (Below(2) == 0) {
      grid_->SendMessage(WM_CANCELMODE, 0, 0);
      return;
    }
    user_.Desktop().SetCapture(frame_.m_hWnd);
    user_.Desktop().SetCapture(nullptr);
  }

  // A press that came too late is over with the next move.
  void MoveOn() {
    if (!grid_->InGesture()) return;
    // To be where it was is no move.
    const POINT at = CellPoint();
    user_.MoveMouse({at.x + 1, at.y});
    user_.MoveMouse(at);
    Work();
  }

  void ExpectIdle() {
    EXPECT_FALSE(grid_->InGesture()) << grid_->Following();
    EXPECT_TRUE(grid_->InGesture() || grid_->GetDragFrame().IsRectEmpty() != FALSE);
  }

  void ExpectSound() {
    if (grid_ != nullptr) MoveOn();
    if (grid_ == nullptr) return;
    SCOPED_TRACE("script " + std::to_string(script_));
    ExpectIdle();
    ExpectSoundSelection(*grid_);
    if (stale_) mirror_.Copy(*grid_);
    stale_ = false;
    mirror_.ExpectSame(*grid_);
  }

  RandomUser& user_;
  std::mt19937 random_;
  bool hostile_;
  unsigned script_;
  lorv::ScopedDesktop scope_;
  int left_ = 0;
  int reacting_ = 0;
  bool may_refuse_ = false;
  bool stale_ = false;
  GridMirror mirror_;
  CWnd frame_;
  CEdit outside_;
  std::unique_ptr<WildGrid> grid_;
};

bool WildGrid::Turn() {
  const auto life = Watch();
  world_.Turn();
  return !life.expired();
}

int WildGrid::AddRow(int relayout) {
  const int at = CBCGPBasicGridCtrl::AddRow(FALSE);
  world_.RowAdded(at);
  if (relayout != FALSE) AdjustLayout();
  return at;
}

void WildGrid::SetValue(int row, int column, const _variant_t& value, BOOL redraw) {
  if (!Turn()) return;
  world_.MayRefuse();
  const auto life = Watch();
  // A box that is given a text raises whenever it is drawn.
  const bool box = dynamic_cast<CBCGPGridCheckItem*>(GetItem(row, column)) != nullptr;
  CBCGPBasicGridCtrl::SetValue(row, column, box && value.vt != VT_BOOL ? _variant_t(true) : value, redraw);
  if (!life.expired()) world_.ValueSet(row, column);
}

void WildGrid::OnItemChanged(CBCGPGridItem* item, int row, int column) {
  world_.Changed(*item, row, column);
  Turn();
}

LRESULT WildGrid::WindowProc(UINT message, WPARAM w, LPARAM l) {
  const HWND window = m_hWnd;
  const bool ends = message == WM_DESTROY || message == WM_NCDESTROY || message == WM_CREATE;
  if (!ends && !Turn()) return 0;
  if (lorv::MappedWindow(window) != this) return 0;
  return CBCGPBasicGridCtrl::WindowProc(message, w, l);
}

}  // namespace

unsigned RandomGridScripts(unsigned usual) {
  const char* const asked = std::getenv("LORV_TEST_SCRIPTS");
  return asked == nullptr ? usual : static_cast<unsigned>(std::strtoul(asked, nullptr, 10));
}

void PlayRandomGrid(RandomUser& user, unsigned script) {
  GridWorld world(user, script);
  world.Play();
  EXPECT_TRUE(user.Desktop().Windows().empty()) << "script " << script;
}

}  // namespace lorv_test
