#include "grid/bridge/true_db_grid.h"
#include "grid/events/event_input.h"
#include "gridcore/items/check_item.h"

// The mouse and the keyboard: the grid's own step, and the event that reports it.

namespace {

short ShiftNow() {
  return lorv::EventShift(lorv::IsKeyDown(VK_SHIFT), lorv::IsKeyDown(VK_CONTROL), lorv::IsKeyDown(VK_MENU));
}

}  // namespace

void CBcgTrueDbGridCtrl::MouseDownToDbGrid(UINT flags, CPoint point) {
  Raise<-605>(lorv::EventButton(flags), lorv::EventShift(flags), point.x, point.y);
}

void CBcgTrueDbGridCtrl::MouseUpToDbGrid(UINT flags, CPoint point) {
  Raise<-607>(lorv::EventButton(flags), lorv::EventShift(flags), point.x, point.y);
}

void CBcgTrueDbGridCtrl::OnLButtonDown(UINT flags, CPoint point) {
  if (!CanMouseClick(point)) return;
  const auto life = Watch();
  CBCGPBasicGridCtrl::OnLButtonDown(flags, point);
  if (!life.expired()) MouseDownToDbGrid(flags, point);
}

void CBcgTrueDbGridCtrl::OnRButtonDown(UINT flags, CPoint point) {
  if (!CanMouseClick(point)) return;
  const auto life = Watch();
  CBCGPBasicGridCtrl::OnRButtonDown(flags, point);
  if (!life.expired()) MouseDownToDbGrid(flags, point);
}

void CBcgTrueDbGridCtrl::OnRButtonUp(UINT flags, CPoint point) {
  if (!CanMouseClick(point)) return;
  const auto life = Watch();
  CBCGPBasicGridCtrl::OnRButtonUp(flags, point);
  if (!life.expired()) MouseUpToDbGrid(flags, point);
}

void CBcgTrueDbGridCtrl::OnLButtonUp(UINT flags, CPoint point) {
  if (!CanMouseClick(point)) return;
  const auto life = Watch();
  CBCGPBasicGridCtrl::OnLButtonUp(flags, point);
  if (life.expired()) return;
  MouseUpToDbGrid(flags, point);
  if (life.expired()) return;
  // A box is saved as soon as it is clicked.
  if (dynamic_cast<CBCGPGridCheckItem*>(GetCurSelItem()) != nullptr) EndEditItem(TRUE);
  if (!life.expired()) Raise<-600>();
}

void CBcgTrueDbGridCtrl::OnMouseMove(UINT flags, CPoint point) {
  const auto life = Watch();
  CBCGPBasicGridCtrl::OnMouseMove(flags, point);
  if (!life.expired()) Raise<-606>(lorv::EventButton(flags), lorv::EventShift(flags), point.x, point.y);
}

bool CBcgTrueDbGridCtrl::ReportOfKey(short key) {
  const auto life = Watch();
  Raise<-602>(&key, ShiftNow());
  return !life.expired();
}

void CBcgTrueDbGridCtrl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
  const auto life = Watch();
  auto reported = static_cast<short>(key);
  Raise<-602>(&reported, ShiftNow());
  // The handler may have put another key in its place.
  if (!life.expired()) CBCGPBasicGridCtrl::OnKeyDown(static_cast<unsigned short>(reported), repeat, flags);
}

void CBcgTrueDbGridCtrl::OnChar(UINT unit, UINT repeat, UINT flags) {
  const auto life = Watch();
  CBCGPBasicGridCtrl::OnChar(unit, repeat, flags);
  auto reported = static_cast<short>(unit);
  if (!life.expired()) Raise<-603>(&reported);
}

void CBcgTrueDbGridCtrl::OnKeyUp(UINT key, UINT repeat, UINT flags) {
  const auto life = Watch();
  CBCGPBasicGridCtrl::OnKeyUp(key, repeat, flags);
  auto reported = static_cast<short>(key);
  if (!life.expired()) Raise<-604>(&reported, ShiftNow());
}

BOOL CBcgTrueDbGridCtrl::OnBeginDrag(CPoint point) {
  const auto life = Watch();
  if (GetCurSelItem() != nullptr) {
    _variant_t bookmark(static_cast<long>(GetCurrentRow()));
    Raise<32>(short{0}, static_cast<VARIANT*>(&bookmark), static_cast<short>(CurrentColumn()));
  }
  return life.expired() ? TRUE : CBCGPBasicGridCtrl::OnBeginDrag(point);
}

void CBcgTrueDbGridCtrl::TrackToolTip(CPoint point) {
  CBCGPGridItemID id;
  CRect rect;
  if (HitTest(point, id, rect) == FALSE) {
    CBCGPBasicGridCtrl::TrackToolTip(point);
    return;
  }
  const auto life = Watch();
  _bstr_t text(_T(""));
  Raise<49>(short{0}, static_cast<short>(id.m_nColumn), static_cast<LONG>(id.m_nRow), &text.GetBSTR(), false,
            static_cast<IDispatch*>(nullptr));
  if (!life.expired()) ShowCellToolTips(point, CString(static_cast<LPCTSTR>(text)));
}
