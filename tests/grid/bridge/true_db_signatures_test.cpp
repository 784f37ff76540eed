#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>
#include <vector>

#include "grid/CBcgTrueDbGridCtrl.h"
#include "grid/bridge/event_dispatch.h"
#include "tests/support/member_signatures.h"

// The names that the suite's dialogs call, one by one: what changes a signature, or the order of what is
// replaced, does not compile or fails here. An explicit instantiation may name private members: that is how
// the fields and the private operations are reached.

namespace {

using lorv_test::ExpectAscending;
using lorv_test::Has;
using lorv_test::Is;
using lorv_test::SlotOf;

using Grid = CBcgTrueDbGridCtrl;

template <class Tag, auto member>
struct Opens {
  friend auto MemberOf(Tag /*tag*/) { return member; }
};

}  // namespace

#define LORV_OPEN(field)                                          \
  namespace {                                                     \
  struct Tag_##field {                                            \
    friend auto MemberOf(Tag_##field tag);                        \
  };                                                              \
  template struct Opens<Tag_##field, &CBcgTrueDbGridCtrl::field>; \
  }

LORV_OPEN(first_row_seen_)
LORV_OPEN(left_column_seen_)
LORV_OPEN(row_height_seen_)
LORV_OPEN(current_row_seen_)
LORV_OPEN(current_column_seen_)
LORV_OPEN(old_value_)
LORV_OPEN(fetch_columns_)
LORV_OPEN(fetch_row_style_)
LORV_OPEN(allow_update_)
LORV_OPEN(FireEvent)
LORV_OPEN(FireEventV)
LORV_OPEN(MouseDownToDbGrid)
LORV_OPEN(MouseUpToDbGrid)
LORV_OPEN(ValueCompare)

namespace {

class Opened : public Grid {
 public:
  using Grid::GetThisMessageMap;
  using Grid::OnDraw;
  using Grid::OnDrawItem;
  using Grid::OnDrawRowHeaderItem;
  using Grid::OnHeaderColumnClick;
  using Grid::OnInplaceEditKeyDown;
  using Grid::OnSelChanged;
  using Grid::OnSelChanging;
  using Grid::OnUpdateHScrollPos;
  using Grid::OnUpdateVScrollPos;
  using Grid::SetHeaderItemWidth;
  using Grid::TrackToolTip;
};

}  // namespace

TEST(TrueDbSignatures, Methods) {
  static_assert(Is<void (Grid::*)()>(&Grid::ReBind) &&
                Is<void (Grid::*)(int)>(&Grid::ReBindAndRestoreGridState));
  static_assert(Is<void (Grid::*)()>(&Grid::Refresh) && Is<void (Grid::*)()>(&Grid::Update));
  static_assert(Is<int (Grid::*)()>(&Grid::Append) && Is<void (Grid::*)(int, int)>(&Grid::ReDim));
  static_assert(Is<int (Grid::*)(int) const>(&Grid::GetCount));
  static_assert(Is<int (Grid::*)(int) const>(&Grid::GetUpperBound));
  static_assert(Is<int (Grid::*)() const>(&Grid::GetColCount));
  static_assert(Is<int (Grid::*)() const>(&Grid::GetCurEditRow));
  static_assert(Has<int (Grid::*)() const>(&Grid::GetRow));
  static_assert(Has<CBCGPGridRow* (Grid::*)(int) const>(&Grid::GetRow));
  static_assert(Is<_variant_t (Grid::*)() const>(&Grid::GetBookmark));
  static_assert(Is<void (Grid::*)(const VARIANT&)>(&Grid::SetBookmark));
  static_assert(Is<_variant_t (Grid::*)(int)>(&Grid::RowBookmark));
  static_assert(Is<std::vector<int> (Grid::*)() const>(&Grid::GetSelBookmarks));
  static_assert(Is<int (Grid::*)(int, int, const VARIANT&, int, int, int) const>(&Grid::Find));
  static_assert(Is<int (Grid::*)(int, const VARIANT&) const>(&Grid::FindVal));
  static_assert(Is<void (Grid::*)(CERecordset*)>(&Grid::SetDataSource));
  static_assert(Is<void (Grid::*)(bool)>(&Grid::SetFetchRowStyle));
  static_assert(Is<void (Grid::*)(int, bool)>(&Grid::SetFetchColumnStyle));
  static_assert(Has<void (Grid::*)(const CUIntArray&, bool)>(&Grid::SetFetchColumnsStyle));
  static_assert(Has<void (Grid::*)(const std::vector<int>&, bool)>(&Grid::SetFetchColumnsStyle));
  static_assert(Is<void (Grid::*)(bool)>(&Grid::SetFetchStyle));
  static_assert(Is<void (Grid::*)(bool)>(&Grid::SetAllowUpdate));
  static_assert(Is<void (Grid::*)(int, int, bool)>(&Grid::SetLocked));
  static_assert(Is<void (Grid::*)(int, int, bool)>(&Grid::SetDropDownList));
  static_assert(Is<void (Grid::*)(CString&) const>(&Grid::ChangeValueItem));
  static_assert(Is<COLORREF (Grid::*)() const>(&Grid::GetBackColor));
  static_assert(Is<void (Grid::*)(int)>(&Grid::Change) && Is<bool (Grid::*)(int) const>(&Grid::IsDelete));
  static_assert(Is<int (Grid::*)(int, int) const>(&Grid::PointAt));
  static_assert(Is<void (Grid::*)(int)>(&Grid::PostMsg));
  static_assert(lorv::kMessagePostEvent == 0x39FF);
}

TEST(TrueDbSignatures, PrivateOperations) {
  EXPECT_TRUE((Is<void (Grid::*)(DISPID, const BYTE*, ...)>(MemberOf(Tag_FireEvent{}))));
  EXPECT_TRUE((Is<void (Grid::*)(DISPID, const BYTE*, va_list)>(MemberOf(Tag_FireEventV{}))));
  EXPECT_TRUE((Is<void (Grid::*)(UINT, CPoint)>(MemberOf(Tag_MouseDownToDbGrid{}))));
  EXPECT_TRUE((Is<void (Grid::*)(UINT, CPoint)>(MemberOf(Tag_MouseUpToDbGrid{}))));
  EXPECT_TRUE((Is<bool (*)(long, bool, const VARIANT&, const VARIANT&)>(MemberOf(Tag_ValueCompare{}))));
}

TEST(TrueDbSignatures, FieldsStandInTheirOrderAndBeginAsDescribed) {
  const Grid grid;
  const std::vector<const void*> places = {
      &(grid.*MemberOf(Tag_first_row_seen_{})),      &(grid.*MemberOf(Tag_left_column_seen_{})),
      &(grid.*MemberOf(Tag_row_height_seen_{})),     &(grid.*MemberOf(Tag_current_row_seen_{})),
      &(grid.*MemberOf(Tag_current_column_seen_{})), &(grid.*MemberOf(Tag_old_value_{})),
      &(grid.*MemberOf(Tag_fetch_columns_{})),       &(grid.*MemberOf(Tag_fetch_row_style_{})),
      &(grid.*MemberOf(Tag_allow_update_{}))};
  for (std::size_t i = 1; i < places.size(); ++i) EXPECT_LT(places[i - 1], places[i]) << "field " << i;
  EXPECT_EQ(grid.*MemberOf(Tag_first_row_seen_{}), 0);
  EXPECT_EQ(grid.*MemberOf(Tag_left_column_seen_{}), 0);
  EXPECT_EQ(grid.*MemberOf(Tag_row_height_seen_{}), 16);
  EXPECT_EQ(grid.*MemberOf(Tag_current_row_seen_{}), -1);
  EXPECT_EQ(grid.*MemberOf(Tag_current_column_seen_{}), -1);
  EXPECT_EQ((grid.*MemberOf(Tag_old_value_{})).vt, VT_EMPTY);
  EXPECT_FALSE((grid.*MemberOf(Tag_fetch_columns_{})).Has(0));
  EXPECT_FALSE(grid.*MemberOf(Tag_fetch_row_style_{}));
  EXPECT_TRUE(grid.*MemberOf(Tag_allow_update_{}));
}

TEST(TrueDbSignatures, ReplacedOperationsKeepTheOrderOfTheirSlots) {
  const std::vector<std::ptrdiff_t> slots = {
      SlotOf(&Grid::OnFilterBarChanged),
      SlotOf(&Grid::OnItemChanged),
      SlotOf(&Grid::OnBeginDrag),
      SlotOf(&Grid::EditItem),
      SlotOf(&Grid::OnClickButton),
      SlotOf(&Grid::EndEditItem),
      SlotOf(&Opened::OnDrawItem),
      SlotOf(&Opened::OnDraw),
      SlotOf(&Opened::OnDrawRowHeaderItem),
      SlotOf(&Opened::OnHeaderColumnClick),
      SlotOf(&Opened::OnUpdateVScrollPos),
      SlotOf(&Opened::OnUpdateHScrollPos),
      SlotOf(&Opened::OnInplaceEditKeyDown),
      SlotOf(&Opened::OnSelChanging),
      SlotOf(&Opened::OnSelChanged),
      SlotOf(&Opened::SetHeaderItemWidth),
      SlotOf(&Opened::TrackToolTip),
      SlotOf(static_cast<CBCGPGridRow* (Grid::*)(int) const>(&Grid::GetRow)),
      SlotOf(&Grid::OnComboItemSelect)};
  for (std::size_t i = 1; i < slots.size(); ++i) EXPECT_LT(slots[i - 1], slots[i]) << "place " << i;
}

TEST(TrueDbSignatures, MessageTableHasTheRowsInTheirOrder) {
  const std::vector<UINT> expected = {WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_LBUTTONUP,
                                      WM_RBUTTONUP,   WM_MOUSEMOVE,   WM_CHAR,
                                      WM_KEYUP,       WM_KEYDOWN,     14847};
  std::vector<UINT> rows;
  for (const AFX_MSGMAP_ENTRY* row = Opened::GetThisMessageMap()->entries; row->handler != nullptr; ++row)
    rows.push_back(row->nMessage);
  EXPECT_EQ(rows, expected);
}

TEST(TrueDbSignatures, ClassesStandInTheirOrder) {
  const std::unique_ptr<CObject> made(RUNTIME_CLASS(CBcgTrueDbGridCtrl)->CreateObject());
  ASSERT_NE(made, nullptr);
  EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CBCGPBasicGridCtrl)));
  EXPECT_STREQ(made->GetRuntimeClass()->m_lpszClassName, "CBcgTrueDbGridCtrl");
  static_assert(std::is_base_of_v<COleDispatchDriver, CGridDispatchDriver>);
  static_assert(std::is_base_of_v<IDispatch, CGridDispatchDriver::CInvokeDisp>);
  static_assert(std::has_virtual_destructor_v<CGridDispatchDriver::CInvokeDisp>);
}

TEST(TrueDbSignatures, ObjectOfAnEventKnowsNothingElse) {
  CGridDispatchDriver::CInvokeDisp events(7, nullptr);
  EXPECT_EQ(events.QueryInterface(IID_NULL, nullptr), 0);
  EXPECT_EQ(events.AddRef(), 0U);
  EXPECT_EQ(events.Release(), 0U);
  EXPECT_EQ(events.GetTypeInfoCount(nullptr), 0);
  EXPECT_EQ(events.GetTypeInfo(0, 0, nullptr), 0);
  EXPECT_EQ(events.GetIDsOfNames(IID_NULL, nullptr, 0, 0, nullptr), 0);
}

TEST(TrueDbSignatures, ArgumentsOfEventsAreThoseOfTheTable) {
  using lorv::EventTakes;
  using lorv::KnownEvent;
  static_assert(EventTakes<>(KnownEvent(-600)) && EventTakes<short*, short>(KnownEvent(-602)));
  static_assert(EventTakes<short, short, LONG, LONG>(KnownEvent(-605)));
  static_assert(EventTakes<short, VARIANT*, short*>(KnownEvent(5)) && !EventTakes<short>(KnownEvent(5)));
  static_assert(EventTakes<short, short, LONG, BSTR*, bool, IDispatch*>(KnownEvent(49)));
  static_assert(!EventTakes<short, short*>(KnownEvent(-602)));
  EXPECT_EQ(lorv::EndedTypes(KnownEvent(55)).back(), 0);
  EXPECT_EQ(lorv::EndedTypes(KnownEvent(55))[8], 0x42);
}
