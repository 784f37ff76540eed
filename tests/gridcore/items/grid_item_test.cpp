#include "gridcore/items/grid_item.h"

#include <gtest/gtest.h>

#include <memory>

#include "framework/objects/archive.h"
#include "gridcore/items/value_archive.h"
#include "gridcore/rows/grid_row.h"

namespace {

class Typed : public CBCGPGridItem {
 public:
  using CBCGPGridItem::CBCGPGridItem;
  _variant_t Of(LPCTSTR text) const { return ValueOfText(CString(text)); }
};

_variant_t Again(const _variant_t& value) {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  lorv::WriteValue(out, value);
  out.Close();
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  return lorv::ReadValue(in);
}

}  // namespace

TEST(GridItem, HeaderExample) {
  EXPECT_EQ(CBCGPGridItem(_variant_t(7)).FormatItem(), _T("7"));
}

TEST(GridItem, BeginsPlain) {
  const CBCGPGridItem item{_variant_t()};
  EXPECT_TRUE(item.IsEnabled());
  EXPECT_TRUE(item.IsAllowEdit());
  EXPECT_FALSE(item.IsReadOnly());
  EXPECT_FALSE(item.IsItemChanged());
  EXPECT_EQ(item.GetBackgroundColor(), lorv::kNoColour);
  EXPECT_EQ(item.GetTextColor(), lorv::kNoColour);
  EXPECT_EQ(item.GetImage(), -1);
  EXPECT_EQ(item.GetFlags(), 0U);
  EXPECT_EQ(item.GetOptionCount(), 0);
  EXPECT_EQ(item.GetParentRow(), nullptr);
  EXPECT_TRUE(item.GetGridItemID().IsNull());
  EXPECT_TRUE(item.GetRect().IsRectEmpty());
  EXPECT_EQ(item.GetOwnerList(), nullptr);
  EXPECT_EQ(item.GetInPlaceWnd(), nullptr);
}

TEST(GridItem, TakesNoMoreRoomThanItSays) {
  EXPECT_LE(sizeof(CBCGPGridItem), 64U);
}

TEST(GridItem, DataStaysBesideWhatIsRare) {
  CBCGPGridItem item{_variant_t(), 7};
  EXPECT_EQ(item.GetData(), 7U);
  item.AddOption(_T("C20"));
  EXPECT_EQ(item.GetData(), 7U);
  item.SetData(static_cast<DWORD_PTR>(-1));
  item.SetImage(3, FALSE);
  EXPECT_EQ(item.GetData(), static_cast<DWORD_PTR>(-1));
  EXPECT_EQ(item.GetImage(), 3);
  EXPECT_EQ(CString(item.GetOption(0)), _T("C20"));
}

TEST(GridItem, StatesOfAnArchiveAreThoseThatThereAre) {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  lorv::WriteValue(out, _variant_t(1));
  out << lorv::kNoColour << lorv::kNoColour << -1 << static_cast<unsigned short>(0xFFFF);
  out.Close();
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  CBCGPGridItem item{_variant_t()};
  item.ReadFromArchive(in);
  EXPECT_TRUE(item.IsReadOnly());
  EXPECT_TRUE(item.IsItemChanged());
  EXPECT_EQ(item.GetOptionCount(), 0) << "what is rare is no state";
}

TEST(GridItem, DateReadsAsYearMonthDay) {
  EXPECT_EQ(CBCGPGridItem(_variant_t(45000.0, VT_DATE)).FormatItem(), _T("2023-03-15"));
}

TEST(GridItem, OptionsMakeAList) {
  CBCGPGridItem item{_variant_t()};
  EXPECT_TRUE(item.AddOption(_T("C20")));
  EXPECT_TRUE(item.AddOption(_T("C20")));
  EXPECT_FALSE(item.AddOption(_T("C20"), TRUE));
  EXPECT_EQ(item.GetFlags(), lorv::kItemHasList);
  EXPECT_EQ(item.GetOptionCount(), 2);
  EXPECT_EQ(CString(item.GetOption(1)), _T("C20"));
  EXPECT_EQ(item.GetOption(2), nullptr);
  EXPECT_EQ(item.GetOption(-1), nullptr);
  item.RemoveAllOptions();
  EXPECT_EQ(item.GetOptionCount(), 0);
}

TEST(GridItem, ChangeTypeGivesAnEmptyValueOfTheKind) {
  CBCGPGridItem item{_variant_t(7)};
  item.ChangeType(_variant_t(_T("text")));
  EXPECT_EQ(item.GetValue().vt, VT_BSTR);
  EXPECT_EQ(item.FormatItem(), _T(""));
  item.ChangeType(_variant_t(2.5));
  EXPECT_EQ(item.GetValue(), _variant_t(0.0));
}

TEST(GridItem, TypedTextKeepsTheKindWhereItCan) {
  EXPECT_EQ(Typed(_variant_t(7)).Of(_T("12")), _variant_t(12));
  EXPECT_EQ(Typed(_variant_t(7.5)).Of(_T("1.25")), _variant_t(1.25));
  EXPECT_EQ(Typed(_variant_t(7)).Of(_T("2*B")), _variant_t(_T("2*B")));
  EXPECT_EQ(Typed(_variant_t()).Of(_T("12")), _variant_t(_T("12")));
  EXPECT_EQ(Typed(_variant_t(_T("a"))).Of(_T("12")), _variant_t(_T("12")));
}

TEST(GridItem, ArchiveCarriesValueAndLooks) {
  CBCGPGridItem item(_variant_t(_T("梁")));
  item.SetBackgroundColor(RGB(1, 2, 3));
  item.SetTextColor(RGB(4, 5, 6));
  item.SetImage(9);
  item.SetReadOnly();
  item.AllowEdit(FALSE);
  CMemFile file;
  CArchive out(&file, CArchive::store);
  item.WriteToArchive(out);
  out.Close();
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  CBCGPGridItem copy{_variant_t()};
  copy.ReadFromArchive(in);
  EXPECT_EQ(copy.GetValue(), item.GetValue());
  EXPECT_EQ(copy.GetBackgroundColor(), RGB(1, 2, 3));
  EXPECT_EQ(copy.GetTextColor(), RGB(4, 5, 6));
  EXPECT_EQ(copy.GetImage(), 9);
  EXPECT_TRUE(copy.IsReadOnly());
  EXPECT_FALSE(copy.IsAllowEdit());
}

TEST(GridItem, IsStoredAsAnObject) {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  CBCGPGridItem item(_variant_t(3.5));
  out.WriteObject(&item);
  out.Close();
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  const std::unique_ptr<CObject> back(in.ReadObject(RUNTIME_CLASS(CBCGPGridItem)));
  EXPECT_EQ(static_cast<CBCGPGridItem&>(*back).GetValue(), _variant_t(3.5));
}

TEST(ValueArchive, EachKindComesBack) {
  const TCHAR zero_inside[] = {'a', 0, 'b'};
  for (const _variant_t& value :
       {_variant_t(), _variant_t(7), _variant_t(2.5), _variant_t(true), _variant_t(45000.0, VT_DATE),
        _variant_t(_T("C30")), _variant_t(CString(zero_inside, 3)), _variant_t(static_cast<short>(-3)),
        _variant_t(1LL << 40)})
    EXPECT_EQ(Again(value), value) << value.vt;
}

TEST(ValueArchive, NullTextStaysNull) {
  const _variant_t back = Again(_variant_t(static_cast<LPCTSTR>(nullptr)));
  EXPECT_EQ(back.vt, VT_BSTR);
  EXPECT_EQ(back.bstrVal, nullptr);
}

TEST(ValueArchive, HostileTagIsRefused) {
  const BYTE bytes[] = {0x09, 0x40, 1, 2, 3, 4, 5, 6, 7, 8};
  CMemFile file(bytes, sizeof bytes);
  CArchive in(&file, CArchive::load);
  try {
    lorv::ReadValue(in);
    FAIL();
  } catch (CArchiveException* e) {
    EXPECT_EQ(e->m_cause, CArchiveException::badClass);
    e->Delete();
  }
}

TEST(GridRow, HeaderExample) {
  CBCGPGridRow row;
  row.AddItem(new CBCGPGridItem(_variant_t(7)));
  EXPECT_EQ(row.GetItem(0)->GetColumnId(), 0);
  EXPECT_EQ(row.GetItem(0)->GetParentRow(), &row);
}

TEST(GridRow, StandsAloneWithoutAGrid) {
  CBCGPGridRow row(4, 99);
  EXPECT_EQ(row.GetRowId(), -1);
  EXPECT_EQ(row.GetData(), 99U);
  EXPECT_EQ(row.GetItemCount(), 0);
  EXPECT_TRUE(row.GetRect().IsRectEmpty());
  EXPECT_EQ(row.AddItem(nullptr), -1);
  EXPECT_EQ(row.GetItem(0), nullptr);
  EXPECT_EQ(row.GetItem(-1), nullptr);
  row.SetLinesNumber(0);
  EXPECT_EQ(row.GetLinesNumber(), 1);
  EXPECT_EQ(row.GetInPlaceWnd(), nullptr);
  EXPECT_EQ(row.GetComboWnd(), nullptr);
  const std::unique_ptr<CBCGPGridItem> item(row.CreateItem(0, 0));
  EXPECT_NE(item, nullptr);
}

TEST(GridRow, ReplacesItsCells) {
  CBCGPGridRow row;
  row.AddItem(new CBCGPGridItem(_variant_t(1)));
  const std::unique_ptr<CBCGPGridItem> old(row.GetItem(0));
  auto* fresh = new CBCGPGridItem(_variant_t(2));
  EXPECT_TRUE(row.ReplaceItem(0, fresh, TRUE, TRUE));
  EXPECT_EQ(row.GetItem(0), fresh);
  EXPECT_EQ(old->GetParentRow(), nullptr);
  CBCGPGridItem outside{_variant_t(3)};
  EXPECT_FALSE(row.ReplaceItem(1, &outside));
  EXPECT_FALSE(row.ReplaceItem(-1, &outside));
  EXPECT_FALSE(row.ReplaceItem(0, nullptr));
}
