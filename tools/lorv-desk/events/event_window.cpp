#include "tools/lorv-desk/events/event_window.h"

#include <algorithm>

#include "tools/lorv-desk/events/event_text.h"

// A table and the trace of its events. The window gets every event where its sink would, and changes the
// trace from its message queue only: an event may come out of the middle of a painting or of a drag.

namespace lorv::tool {
namespace {

constexpr UINT kShowTrace = WM_APP + 1;
constexpr UINT kTraceId = 2;

}  // namespace

BEGIN_MESSAGE_MAP(EventWindow, GridWindow)
ON_WM_SIZE()
ON_MESSAGE(kShowTrace, OnShowTrace)
END_MESSAGE_MAP()

EventWindow::EventWindow()
    : GridWindow(std::make_unique<CBcgTrueDbGridCtrl>()), table_(static_cast<CBcgTrueDbGridCtrl*>(&Grid())) {}

EventWindow::~EventWindow() {
  // While all that is notified still exists.
  if (m_hWnd != nullptr) CWnd::DestroyWindow();
}

bool EventWindow::Open(LPCTSTR title, CSize size) {
  if (!GridWindow::Open(title, size + CSize(kTraceWidth, 0))) return false;
  constexpr DWORD kGridStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
  if (trace_.Create(kGridStyle, CRect(0, 0, 0, 0), this, kTraceId) == FALSE) return false;
  const int dpi = GetDpi();
  constexpr int kNumberWidth = 44;
  constexpr int kScrollBar = 24;
  // The events have numbers of their own: those of rows change when the first ones go.
  trace_.EnableRowHeader(FALSE);
  trace_.InsertColumn(0, _T("#"), kNumberWidth * dpi / kUsualDpi, DT_RIGHT, FALSE);
  trace_.InsertColumn(1, _T("Event"), (kTraceWidth - kNumberWidth - kScrollBar) * dpi / kUsualDpi, -1, FALSE);
  CRect client;
  GetClientRect(&client);
  PlaceGrids(client.Width(), client.Height());
  return true;
}

void EventWindow::PlaceGrids(int width, int height) {
  // The table gives way first: a trace that is cut off is of no use.
  const int trace = std::min(width, kTraceWidth * GetDpi() / kUsualDpi);
  Grid().MoveWindow(0, 0, width - trace, height);
  trace_.MoveWindow(width - trace, 0, trace, height);
}

void EventWindow::OnSize(UINT type, int width, int height) {
  CWnd::OnSize(type, width, height);
  // The first sizes come before the grids have windows.
  if (Grid().m_hWnd != nullptr && trace_.m_hWnd != nullptr) PlaceGrids(width, height);
}

BOOL EventWindow::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) {
  // A caller who only asks for the handler raises nothing.
  if (code == CN_EVENT && extra != nullptr && info == nullptr) Note(*static_cast<const AFX_EVENT*>(extra));
  return GridWindow::OnCmdMsg(id, code, extra, info);
}

void EventWindow::Note(const AFX_EVENT& event) {
  if (IsNoise(event.m_dispid)) return;
  pending_.push_back(EventText(event));
  if (asked_ || m_hWnd == nullptr) return;
  asked_ = PostMessage(kShowTrace) != FALSE;
}

LRESULT EventWindow::OnShowTrace(WPARAM /*w*/, LPARAM /*l*/) {
  asked_ = false;
  for (const CString& line : std::exchange(pending_, {})) {
    const int row = trace_.AddRow(TRUE);
    if (row < 0) break;
    trace_.SetValue(row, 0, _variant_t(++noted_), FALSE);
    trace_.SetValue(row, 1, _variant_t(line), FALSE);
  }
  while (trace_.GetRowCount() > kMostLines) trace_.RemoveRow(0, FALSE);
  trace_.AdjustLayout();
  // The latest one is marked, and in sight.
  trace_.SetRow(trace_.GetRowCount() - 1);
  return 0;
}

void EventWindow::Play(int row, int column) {
  CBCGPGridItem* const item = table_->GetItem(row, column);
  if (item == nullptr) return;
  const CPoint at = item->GetRect().CenterPoint();
  const auto place = static_cast<LPARAM>((at.y & 0xFFFF) << 16 | (at.x & 0xFFFF));
  table_->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, place);
  table_->SendMessage(WM_LBUTTONUP, 0, place);
  if (table_->m_hWnd == nullptr || table_->GetRow(row) == nullptr) return;
  table_->EditItem(table_->GetRow(row));
  table_->EndEditItem(TRUE);
}

}  // namespace lorv::tool
