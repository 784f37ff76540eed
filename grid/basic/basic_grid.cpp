#include "grid/basic/basic_grid.h"

#include <algorithm>

#include "grid/items/multi_line_row.h"

// The window of the suite's grid: how it begins, and which messages it takes.

IMPLEMENT_DYNCREATE(CBCGPBasicGridCtrl, CBCGPGridCtrl)

BEGIN_MESSAGE_MAP(CBCGPBasicGridCtrl, CBCGPGridCtrl)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_RBUTTONUP()
ON_WM_RBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_LBUTTONDOWN()
ON_WM_SETCURSOR()
ON_WM_MOUSEMOVE()
ON_WM_SIZE()
ON_REGISTERED_MESSAGE(BCGM_GRID_ITEM_ENDINPLACEEDIT, OnEndLabelEdit)
ON_MESSAGE(lorv::kMessageNavigate, OnNavigateItem)
ON_EN_UPDATE(lorv::kEditorId, OnItemEditUpdate)
ON_CBN_SELENDOK(lorv::kEditorId, OnSelectCombo)
END_MESSAGE_MAP()

namespace {

constexpr int kLeastRowHeight = 20;               // pixels at 96 dots an inch
constexpr DWORD kStyleOfDialogGrid = 0x52810100;  // child, visible, clips children, border, tab stop

}  // namespace

CBCGPBasicGridCtrl::CBCGPBasicGridCtrl() = default;

CBCGPBasicGridCtrl::~CBCGPBasicGridCtrl() {
  // The window goes while its columns are still here.
  if (m_hWnd != nullptr) CWnd::DestroyWindow();
  // The rows too: their cells ask the columns as they go.
  CBCGPGridCtrl::RemoveAll(FALSE);
}

int CBCGPBasicGridCtrl::OnCreate(LPCREATESTRUCT request) {
  if (CBCGPGridCtrl::OnCreate(request) == -1) return -1;
  // Some systems take a target only from a window that is there whole.
  RegisterDropTarget();
  InitGridSetting();
  return 0;
}

void CBCGPBasicGridCtrl::OnDestroy() {
  CBCGPGridCtrl::OnDestroy();
}

void CBCGPBasicGridCtrl::PreSubclassWindow() {
  CBCGPGridCtrl::PreSubclassWindow();
  if (m_hWnd == nullptr) return;
  RegisterDropTarget();
  // A window of a dialog's template has no OnCreate any more; one that is being made is set up there again.
  Init();
  ModifyStyle(0, kStyleOfDialogGrid);
  InitGridSetting();
  adjusted_row_height_ = GetRowHeight();
}

void CBCGPBasicGridCtrl::InitGridSetting() {
  CBCGPGridCtrl::SetRowHeight();
  EnableMarkSortedColumn(FALSE, TRUE);
  EnableHeader(TRUE, lorv::kHeaderSelects);
  EnableRowHeader(TRUE);
  EnableLineNumbers(TRUE);
  EnableColumnAutoSize(FALSE);
  EnableInvertSelOnCtrl(TRUE);
  SetOddEvenColor();
  SetSelRowBKColor(lorv::kSelectedRowColour);
  BCGP_GRID_COLOR_DATA theme = GetColorTheme();
  theme.m_SelColors.m_clrBackground = RGB(49, 106, 197);
  theme.m_SelColors.m_clrText = lorv::kWhite;
  SetColorTheme(theme);
  InitHeaderColor();
  adjusted_row_height_ = std::max(m_nRowHeight, Scaled(kLeastRowHeight));
  SetRowHeight();
  SetShowDragContext(FALSE);
  AdjustLayout();
}

void CBCGPBasicGridCtrl::InitHeaderColor() {
  BCGP_GRID_COLOR_DATA theme = GetColorTheme();
  const auto set = [](BCGP_GRID_COLOR_DATA::ColorData& record, COLORREF back, COLORREF gradient) {
    record.m_clrBackground = back;
    record.m_clrGradient = gradient;
    record.m_nGradientAngle = 90;
    record.m_clrBorder = RGB(173, 183, 205);
  };
  set(theme.m_HeaderColors, RGB(215, 218, 227), RGB(244, 245, 248));
  set(theme.m_HeaderSelColors, RGB(251, 157, 105), RGB(254, 204, 153));
  SetColorTheme(theme);
}

void CBCGPBasicGridCtrl::SetRowHeight() {
  CBCGPGridCtrl::SetRowHeight();
  // A row is never lower than its text, whatever the user dragged.
  if (adjusted_row_height_ != 0) m_nLargeRowHeight = std::max(m_nRowHeight, adjusted_row_height_);
  m_nHeaderHeight = m_nLargeRowHeight;
}

bool CBCGPBasicGridCtrl::SetOddEvenColor() {
  BCGP_GRID_COLOR_DATA theme = GetColorTheme();
  theme.m_clrBackground = lorv::kWhite;
  theme.m_EvenColors.InitColors();
  theme.m_OddColors.InitColors();
  theme.m_clrHorzLine = RGB(128, 128, 128);
  theme.m_clrVertLine = RGB(128, 128, 128);
  for (BCGP_GRID_COLOR_DATA::ColorData* record : {&theme.m_SelColors, &theme.m_MarkedColors}) {
    record->InitColors();
    record->m_clrBackground = lorv::kWhite;
  }
  SetColorTheme(theme, TRUE);
  return true;
}

bool CBCGPBasicGridCtrl::SetReadOnlyColor() {
  if (IsReadOnly() == FALSE) return SetOddEvenColor();
  BCGP_GRID_COLOR_DATA theme = GetColorTheme();
  theme.m_clrBackground = lorv::kReadOnlyColour;
  theme.m_EvenColors.InitColors();
  theme.m_OddColors.InitColors();
  SetColorTheme(theme, TRUE);
  return true;
}

// Spreadsheet exchange comes from the layer that knows spreadsheets; a grid by itself has none.
bool CBCGPBasicGridCtrl::ToExcel(int /*mode*/) {
  return false;
}

bool CBCGPBasicGridCtrl::FromExcel(int /*mode*/) {
  return false;
}
