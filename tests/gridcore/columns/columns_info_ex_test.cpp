#include "gridcore/columns/columns_info_ex.h"

#include <gtest/gtest.h>

namespace {

using Numbers = CArray<int, int>;

Numbers Of(std::initializer_list<int> numbers) {
  Numbers array;
  for (const int number : numbers) array.Add(number);
  return array;
}

class HeaderItems : public testing::Test {
 protected:
  HeaderItems() {
    info.InsertColumns(0, 4, 50);
    info.SetHeaderLineCount(2);
  }
  CBCGPGridHeaderItem* Add(std::initializer_list<int> columns, std::initializer_list<int> lines) {
    const Numbers c = Of(columns);
    const Numbers l = Of(lines);
    return info.AddHeaderItem(&c, &l, nullptr, _T("尺寸"), 1, 7);
  }
  CBCGPGridColumnsInfoEx info;
};

}  // namespace

TEST_F(HeaderItems, SpanColumnsAndLines) {
  const CBCGPGridHeaderItem* item = Add({1, 0, 1}, {0});
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(item->columns, (std::vector<int>{0, 1}));
  EXPECT_EQ(item->text, _T("尺寸"));
  EXPECT_EQ(item->flag, 7);
  info.ReposHeaderItems(20);
  EXPECT_EQ(item->rect, CRect(0, 0, 100, 20));
  EXPECT_EQ(info.GetHeaderItemAt(1, 0), item);
  EXPECT_EQ(info.GetHeaderItemAt(1, 1), nullptr);
  EXPECT_EQ(info.GetHeaderItemAt(2, 0), nullptr);
}

TEST_F(HeaderItems, RefuseWhatIsOutside) {
  EXPECT_EQ(Add({}, {0}), nullptr);
  EXPECT_EQ(Add({0}, {}), nullptr);
  EXPECT_EQ(Add({4}, {0}), nullptr);
  EXPECT_EQ(Add({-1, 0}, {0}), nullptr);
  EXPECT_EQ(Add({0}, {2}), nullptr);
  EXPECT_EQ(info.AddHeaderItem(nullptr, nullptr, nullptr, _T(""), 0, 0), nullptr);
  EXPECT_EQ(info.GetHeaderItemCount(), 0);
}

TEST_F(HeaderItems, LinesAreCutToTheirLimits) {
  info.SetHeaderLineCount(0);
  EXPECT_EQ(info.GetHeaderLineCount(), 1);
  info.SetHeaderLineCount(CBCGPGridColumnsInfoEx::kMaxHeaderLines + 1);
  EXPECT_EQ(info.GetHeaderLineCount(), CBCGPGridColumnsInfoEx::kMaxHeaderLines);
}

TEST_F(HeaderItems, LeaveTheOtherLinesToTheColumnsName) {
  Add({0, 1}, {0});
  int first = -1;
  int last = -1;
  EXPECT_TRUE(info.GetOwnHeaderLines(0, first, last));
  EXPECT_EQ(first, 1);
  EXPECT_EQ(last, 1);
  EXPECT_TRUE(info.GetOwnHeaderLines(2, first, last));
  EXPECT_EQ(first, 0);
  EXPECT_EQ(last, 1);
  Add({0}, {1});
  EXPECT_FALSE(info.GetOwnHeaderLines(0, first, last));
  EXPECT_FALSE(info.GetOwnHeaderLines(9, first, last));
}

TEST_F(HeaderItems, GoWithTheirColumns) {
  CBCGPGridHeaderItem* item = Add({1, 2}, {0});
  CBCGPGridHeaderItem* child = Add({2}, {1});
  child->parent = item;
  info.InsertColumn(0, _T("new"), 10);
  EXPECT_EQ(item->columns, (std::vector<int>{2, 3}));
  info.DeleteColumn(2);
  EXPECT_EQ(item->columns, (std::vector<int>{2}));
  info.DeleteColumn(2);
  EXPECT_EQ(info.GetHeaderItemCount(), 0);
}

TEST_F(HeaderItems, HiddenColumnsTakeNoRoom) {
  const CBCGPGridHeaderItem* item = Add({0, 1}, {0, 1});
  info.SetColumnVisible(0, FALSE);
  info.ReposHeaderItems(18);
  EXPECT_EQ(item->rect, CRect(0, 0, 50, 36));
  info.SetColumnVisible(1, FALSE);
  info.ReposHeaderItems(18);
  EXPECT_TRUE(item->rect.IsRectEmpty());
}

TEST_F(HeaderItems, AnsweredByNumber) {
  const CBCGPGridHeaderItem* item = Add({3}, {0});
  EXPECT_EQ(info.GetHeaderItem(0), item);
  EXPECT_EQ(info.GetHeaderItem(1), nullptr);
  EXPECT_EQ(info.GetHeaderItem(-1), nullptr);
  info.RemoveAllHeaderItems();
  EXPECT_EQ(info.GetHeaderItemCount(), 0);
}
