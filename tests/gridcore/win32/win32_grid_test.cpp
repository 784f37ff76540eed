#include "framework/values/bstr.h"
#include "framework/windows/accessible_window.h"
#include "gridcore/control/column_taker.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/items/check_item.h"
#include "platform/win32/desktop/win32_desktop.h"
#include "platform/win32/services/system_object.h"
#include "platform/win32/window/accessible_provider.h"
#include "tests/support/print.h"

#include <gtest/gtest.h>

namespace lorv_test {
namespace {

using Reference = lorv::CountedReference<IAccessible>;

// A grid among the system's windows, as its readers and input methods meet it.
class Win32Grid : public testing::Test {
 protected:
  Win32Grid() : desktop_(lorv::MakeWin32Desktop()), scope_(*desktop_) {
    top.Create(nullptr, _T("grid"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(100, 100, 600, 500), nullptr, 0);
    grid.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    for (const LPCTSTR name : {_T("名称"), _T("长度")}) grid.InsertColumn(grid.GetColumnCount(), name, 80);
    for (int row = 0; row < 3; ++row) grid.AddRow(FALSE);
    for (int row = 0; row < 3; ++row)
      for (int column = 0; column < 2; ++column) At(row, column)->SetValue(_variant_t(_T("板")));
    grid.AdjustLayout();
    grid.SetFocus();
    Settle();
  }
  void Settle() {
    for (int i = 0; i < 300 && desktop_->Pump(false); ++i) {
    }
  }
  CBCGPGridItem* At(int row, int column) const { return grid.GetGridItem({row, column}); }
  IAccessible* Table() const { return lorv::MakeAccessible(lorv::AccessibleOf(grid.m_hWnd)); }
  static VARIANT Number(LONG number) {
    VARIANT which = {};
    which.vt = VT_I4;
    which.lVal = number;
    return which;
  }
  // As events name it: the negative of the object's number.
  VARIANT Cell(int row, int column) const { return Number(-((row + 1) * 3 + column + 1 + 1)); }
  CString TextOf(HRESULT (STDMETHODCALLTYPE IAccessible::*ask)(VARIANT, BSTR*), VARIANT which) const {
    const Reference table(Table());
    BSTR text = nullptr;
    if (FAILED((table.Get()->*ask)(which, &text))) return {};
    const _bstr_t owner(text, false);
    return CString(owner.View());
  }

  std::unique_ptr<lorv::Desktop> desktop_;
  lorv::ScopedDesktop scope_;
  CWnd top;
  CBCGPGridCtrl grid;
};

TEST_F(Win32Grid, AHeaderIsDraggedByTheSystemsMessages) {
  class Taker : public lorv::ColumnTaker {
   public:
    explicit Taker(CBCGPGridCtrl& grid) : grid_(grid) { grid_.SetColumnTaker(this); }
    ~Taker() override { grid_.SetColumnTaker(nullptr); }
    bool TakesColumn(int /*column*/) override { return true; }
    void OnColumnDropped(int column, int to) override { grid_.MoveColumn(column, to); }

   private:
    CBCGPGridCtrl& grid_;
  };
  const Taker taker(grid);
  const auto at = [&](int column, int within) {
    const CRect rect = grid.GetColumnRect(column);
    return MAKELPARAM(rect.left + within, rect.top + 5);
  };
  SendMessageW(grid.m_hWnd, WM_LBUTTONDOWN, MK_LBUTTON, at(0, 20));
  EXPECT_EQ(GetCapture(), grid.m_hWnd);
  SendMessageW(grid.m_hWnd, WM_MOUSEMOVE, MK_LBUTTON, at(1, 70));
  EXPECT_FALSE(grid.GetDragFrame().IsRectEmpty());
  SendMessageW(grid.m_hWnd, WM_LBUTTONUP, 0, at(1, 70));
  Settle();
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(grid.GetColumnName(0), CString(_T("长度")));
  EXPECT_EQ(grid.GetColumnName(1), CString(_T("名称")));
}

TEST_F(Win32Grid, TheSystemIsAnsweredWithATable) {
  EXPECT_NE(SendMessageW(grid.m_hWnd, WM_GETOBJECT, 0, static_cast<DWORD>(OBJID_CLIENT)), 0);
  const Reference table(Table());
  VARIANT role = {};
  ASSERT_EQ(table->get_accRole(Number(CHILDID_SELF), &role), S_OK);
  EXPECT_EQ(role.lVal, ROLE_SYSTEM_TABLE);
  LONG count = 0;
  EXPECT_EQ(table->get_accChildCount(&count), S_OK);
  EXPECT_EQ(count, 4 * 3);
  EXPECT_EQ(TextOf(&IAccessible::get_accName, Cell(1, 1)), CString(_T("2 长度")));
  EXPECT_EQ(TextOf(&IAccessible::get_accValue, Cell(1, 1)), CString(_T("板")));
  EXPECT_EQ(TextOf(&IAccessible::get_accName, Cell(-1, 1)), CString(_T("长度")));
}

TEST_F(Win32Grid, TheDefaultActionOpensTheEditorOrTurnsACheckOver) {
  const Reference table(Table());
  EXPECT_EQ(table->accDoDefaultAction(Cell(1, 1)), S_OK);
  Settle();
  ASSERT_NE(grid.GetInPlaceWnd(), nullptr);
  EXPECT_EQ(table->put_accValue(Cell(2, 1), _bstr_t(_T("墙")).GetBSTR()), S_OK);
  EXPECT_EQ(At(2, 1)->FormatItem(), CString(_T("墙")));
  grid.GetRow(0)->ReplaceItem(0, new CBCGPGridCheckItem(false));
  EXPECT_EQ(table->accDoDefaultAction(Cell(0, 0)), S_OK);
  VARIANT state = {};
  EXPECT_EQ(table->get_accState(Cell(0, 0), &state), S_OK);
  EXPECT_NE(state.lVal & STATE_SYSTEM_CHECKED, 0);
}

TEST_F(Win32Grid, AnInputMethodOpensTheEditorAndGoesOnThere) {
  grid.SetCurSel({1, 1});
  grid.SendMessage(WM_KEYDOWN, VK_PROCESSKEY, 1);
  EXPECT_EQ(grid.GetInPlaceWnd(), nullptr) << "a key alone says nothing: it may be its own";
  grid.SendMessage(WM_IME_STARTCOMPOSITION);
  ASSERT_NE(grid.GetInPlaceWnd(), nullptr);
  EXPECT_EQ(desktop_->Focus(), grid.GetInPlaceWnd()->m_hWnd);
  CString text;
  grid.GetInPlaceWnd()->GetWindowText(text);
  EXPECT_EQ(text, CString());
  // The key that confirms a candidate: the editor stays.
  MSG key = {};
  key.hwnd = grid.GetInPlaceWnd()->m_hWnd;
  key.message = WM_KEYDOWN;
  key.wParam = VK_PROCESSKEY;
  EXPECT_FALSE(lorv::OfferMessage(key));
  ASSERT_NE(grid.GetInPlaceWnd(), nullptr);
  grid.SendMessage(WM_IME_ENDCOMPOSITION);
  EXPECT_NE(grid.GetInPlaceWnd(), nullptr);
  EXPECT_NE(grid.EndEditItem(TRUE), FALSE);
  EXPECT_EQ(At(1, 1)->FormatItem(), CString(_T("板"))) << "nothing was committed";
}

TEST_F(Win32Grid, NothingOpensOverAReadOnlyCell) {
  At(1, 1)->SetReadOnly();
  grid.SetCurSel({1, 1});
  EXPECT_EQ(ImmGetContext(grid.m_hWnd), nullptr) << "without a context the input method rests";
  grid.SendMessage(WM_IME_STARTCOMPOSITION);
  EXPECT_EQ(grid.GetInPlaceWnd(), nullptr);
  grid.SendMessage(WM_IME_COMPOSITION, 0, GCS_RESULTSTR);
  grid.SendMessage(WM_IME_ENDCOMPOSITION);
  EXPECT_EQ(grid.GetInPlaceWnd(), nullptr);
  grid.SetCurSel({2, 1});
  const HIMC context = ImmGetContext(grid.m_hWnd);
  EXPECT_NE(context, nullptr);
  ImmReleaseContext(grid.m_hWnd, context);
}

}  // namespace
}  // namespace lorv_test
