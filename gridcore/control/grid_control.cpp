#include "gridcore/control/grid_control.h"

#include <algorithm>
#include <utility>

#include "gridcore/accessibility/grid_cells.h"

// The window of a grid: making it, its messages, its switches.

IMPLEMENT_DYNCREATE(CBCGPWnd, CWnd)
IMPLEMENT_DYNCREATE(CBCGPGridCtrl, CBCGPWnd)

BEGIN_MESSAGE_MAP(CBCGPGridCtrl, CBCGPWnd)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_PAINT()
ON_WM_SIZE()
ON_WM_KEYDOWN()
ON_WM_CHAR()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_LBUTTONDBLCLK()
ON_WM_RBUTTONDOWN()
ON_WM_RBUTTONUP()
ON_WM_MOUSEMOVE()
ON_WM_MOUSEWHEEL()
ON_WM_SETCURSOR()
ON_WM_VSCROLL()
ON_WM_HSCROLL()
ON_WM_SETFOCUS()
ON_WM_KILLFOCUS()
ON_WM_CANCELMODE()
ON_WM_CAPTURECHANGED()
ON_WM_GETDLGCODE()
ON_EN_KILLFOCUS(lorv::kEditorId, OnEditorLeft)
ON_EN_CHANGE(lorv::kFilterEditorId, OnFilterTyped)
ON_EN_KILLFOCUS(lorv::kFilterEditorId, OnFilterLeft)
ON_CBN_SELENDOK(lorv::kEditorId, OnSelectCombo)
ON_CBN_CLOSEUP(lorv::kEditorId, OnListClosed)
LORV_MESSAGE(WM_IME_STARTCOMPOSITION,
             call.result = self.OnComposition(WM_IME_STARTCOMPOSITION, call.w, call.l))
LORV_MESSAGE(WM_IME_COMPOSITION, call.result = self.OnComposition(WM_IME_COMPOSITION, call.w, call.l))
LORV_MESSAGE(WM_IME_ENDCOMPOSITION, call.result = self.OnComposition(WM_IME_ENDCOMPOSITION, call.w, call.l))
ON_REGISTERED_MESSAGE(BCGM_GRID_ADJUST_LAYOUT, OnAdjustLayoutMessage)
END_MESSAGE_MAP()

int CBCGPWnd::DotsOfScreen() const {
  const int dots = m_hWnd == nullptr ? 0 : GetDpi();
  // A window that is going has none any more.
  return dots > 0 ? dots : dots_;
}

void CBCGPWnd::FollowDots() {
  const int before = std::exchange(dots_, DotsOfScreen());
  if (dots_ != before) OnDotsChanged(dots_, before);
}

CBCGPGridCtrl::CBCGPGridCtrl() = default;

CBCGPGridCtrl::~CBCGPGridCtrl() {
  // First of all, while everything that an observer might ask for is still there.
  changes_.ForEach([](lorv::GridObserver& observer) { observer.OnGridGone(); });
  if (m_hWnd != nullptr) CWnd::DestroyWindow();
  CBCGPGridCtrl::RemoveAll(FALSE);
}

BOOL CBCGPGridCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
  return CWnd::Create(nullptr, _T(""), style, rect, parent, id);
}

void CBCGPGridCtrl::Init() {
  lorv::RegisterGridMessages();
  SetRowHeight();
}

int CBCGPGridCtrl::OnCreate(LPCREATESTRUCT request) {
  if (CBCGPWnd::OnCreate(request) == -1) return -1;
  Init();
  AdjustLayout();
  return 0;
}

void CBCGPGridCtrl::PreSubclassWindow() {
  CBCGPWnd::PreSubclassWindow();
}

void CBCGPGridCtrl::RegisterDropTarget() {
  if (m_hWnd != nullptr && drop_target_.GetWindowHandle() == nullptr) drop_target_.Register(this);
}

void CBCGPGridCtrl::OnDestroy() {
  const auto life = life_.Watch();
  drop_target_.Revoke();
  // The table outlives its window, and nothing follows a mouse then.
  CancelGestures();
  if (life.expired()) return;
  CloseEditor();
  if (!life.expired()) CBCGPWnd::OnDestroy();
}

void CBCGPGridCtrl::OnSize(UINT type, int width, int height) {
  CBCGPWnd::OnSize(type, width, height);
  // The base's own: a descendant that arranges more does it by a message of its own.
  CBCGPGridCtrl::AdjustLayout();
}

LRESULT CBCGPGridCtrl::OnAdjustLayoutMessage(WPARAM /*w*/, LPARAM /*l*/) {
  AdjustLayout();
  return 0;
}

lorv::AccessibleCells* CBCGPGridCtrl::GetAccessibleCells() {
  // Made when a screen reader first asks: without one no grid pays for it.
  if (cells_ == nullptr) cells_ = std::make_unique<lorv::GridCells>(*this);
  return cells_.get();
}

UINT CBCGPGridCtrl::OnGetDlgCode() {
  // Return and Tab stay the dialog's, unless a descendant asks for them.
  return DLGC_WANTARROWS | DLGC_WANTCHARS;
}

void CBCGPGridCtrl::EnableHeader(BOOL on, UINT flags) {
  switches_.header = on != FALSE;
  switches_.header_flags = flags;
}

void CBCGPGridCtrl::EnableRowHeader(BOOL on, int /*always_minus_one*/, int width) {
  switches_.row_header = on != FALSE;
  switches_.row_header_width =
      width < 0 ? Scaled(lorv::kRowHeaderWidth) : std::min(width, lorv::kMaxColumnWidth);
}

void CBCGPGridCtrl::EnableLineNumbers(BOOL on) {
  switches_.line_numbers = on != FALSE;
  Invalidate(FALSE);
}

void CBCGPGridCtrl::EnableMarkSortedColumn(BOOL mark, BOOL redraw) {
  switches_.marks_sorted = mark != FALSE;
  if (redraw != FALSE) Invalidate(FALSE);
}

void CBCGPGridCtrl::EnableColumnAutoSize(BOOL on) {
  switches_.columns_spread = on != FALSE;
}

void CBCGPGridCtrl::SetColorTheme(const BCGP_GRID_COLOR_DATA& theme, BOOL redraw) {
  theme_ = theme;
  if (redraw != FALSE) Invalidate(FALSE);
}

COLORREF CBCGPGridCtrl::GetBkColor() const {
  return Themed(theme_.m_clrBackground, COLOR_WINDOW);
}

CFont* CBCGPGridCtrl::GetBoldFont() {
  // Made anew each time, as the window's font may have changed meanwhile.
  if (!own_bold_) {
    LOGFONT face = m_hWnd == nullptr ? LOGFONT{} : lorv::PeerOf(m_hWnd)->Font();
    face.lfWeight = FW_BOLD;
    bold_.CreateFontIndirect(&face);
  }
  return &bold_;
}

void CBCGPGridCtrl::SetBoldFont(const LOGFONT& face) {
  bold_.CreateFontIndirect(&face);
  own_bold_ = true;
}
