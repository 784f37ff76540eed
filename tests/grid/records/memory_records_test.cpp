#include "grid/records/memory_records.h"

#include <gtest/gtest.h>

#include "tests/grid/bridge/bridge_desk.h"

namespace {

using lorv::MemoryRecords;

class MemoryRecordsTest : public lorv_test::BridgeDesk {
 protected:
  MemoryRecordsTest() {
    records.Add({_variant_t(_T("beam")), _variant_t(2)});
    records.Add({_variant_t(_T("slab"))});
    records.Add({_variant_t(_T("wall")), _variant_t(7.5)});
  }
  MemoryRecords records{{_T("name"), _T("qty")}};
};

}  // namespace

TEST_F(MemoryRecordsTest, GoesFromTheFirstRecordToItsEnd) {
  EXPECT_EQ(records.GetFieldCount(), 2);
  EXPECT_EQ(records.GetFieldName(1), _T("qty"));
  EXPECT_EQ(records.GetFieldName(2), _T(""));
  EXPECT_EQ(records.GetFieldName(-1), _T(""));
  records.MoveNext();
  EXPECT_EQ(records.GetFieldValue(0), _variant_t(_T("slab")));
  EXPECT_EQ(records.GetFieldValue(1).vt, VT_EMPTY);
  EXPECT_EQ(records.GetFieldValue(9).vt, VT_EMPTY);
  records.MoveNext();
  EXPECT_FALSE(records.IsEOF());
  records.MoveNext();
  EXPECT_TRUE(records.IsEOF());
  records.MoveNext();
  EXPECT_EQ(records.GetFieldValue(0).vt, VT_EMPTY);
  records.MoveFirst();
  EXPECT_EQ(records.GetFieldValue(1), _variant_t(2));
}

TEST_F(MemoryRecordsTest, FirstBindingNamesColumnsAndTheSecondFillsThem) {
  grid->SetDataSource(&records);
  EXPECT_EQ(grid->GetColCount(), 2);
  EXPECT_EQ(grid->GetColumnName(0), _T("name"));
  EXPECT_EQ(grid->GetColumnName(1), _T("qty"));
  EXPECT_EQ(grid->GetColsWidth(), _T("80,80"));
  EXPECT_EQ(grid->GetCount(1), 3);
  for (int row = 0; row < 3; ++row) EXPECT_EQ(Text(row, 0), _T("")) << row;
  grid->SetDataSource(&records);
  EXPECT_EQ(grid->GetCount(1), 3);
  EXPECT_EQ(Text(0, 0), _T("beam"));
  EXPECT_EQ(grid->GetValue(2, 1), _variant_t(7.5));
  EXPECT_FALSE(records.IsEOF());
  EXPECT_EQ(records.GetFieldValue(0), _variant_t(_T("beam")));
}

TEST_F(MemoryRecordsTest, FieldsAndColumnsMayDifferInNumber) {
  grid->InsertColumns(_T("a"), _T(""), 0);
  grid->AppendRows(5);
  grid->SetDataSource(&records);
  EXPECT_EQ(grid->GetCount(1), 3);
  EXPECT_EQ(Text(1, 0), _T("slab"));
  grid->InsertColumns(_T("b,c"), _T(""), 0);
  grid->SetDataSource(&records);
  EXPECT_EQ(Text(0, 1), _T("2"));
  EXPECT_EQ(Text(0, 2), _T(""));
}

TEST_F(MemoryRecordsTest, SetAtItsEndLeavesTheTableEmpty) {
  Fill(2, 2);
  while (!records.IsEOF()) records.MoveNext();
  grid->SetDataSource(&records);
  EXPECT_EQ(grid->GetCount(1), 0);
  EXPECT_EQ(grid->GetColCount(), 2);
  EXPECT_TRUE(records.IsEOF());
  grid->SetDataSource(nullptr);
  EXPECT_EQ(grid->GetColCount(), 2);
}

TEST_F(MemoryRecordsTest, HandlersOfABindingMayDoAnything) {
  const std::function<void()> deeds[] = {[this] { grid->RemoveAll(); }, [this] { grid->ReDim(2, 1); },
                                         [this] { grid->SetDataSource(&records); },
                                         [this] { grid->DestroyWindow(); }, [this] { grid.reset(); }};
  for (const auto& deed : deeds) {
    grid.reset();
    MakeGrid();
    Fill(2, 2);
    int left = 1;
    sheet->on = [&](int event) {
      if (event == 15 && left-- > 0) deed();
    };
    records.MoveFirst();
    grid->SetDataSource(&records);
    sheet->on = nullptr;
    if (grid == nullptr) continue;
    EXPECT_LE(grid->GetCurSelItemID().m_nRow, grid->GetRowCount());
  }
}
