// The eight tables as data: how many rows, which stand first and last, and that keys follow positions.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "prompts/prompt_row.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

struct Expected {
  const char* name;
  const PromptTable* table;
  std::size_t rows;
  const char* first[2];
  const char* last[2];
};

const Expected kTables[] = {
    {"steel input",
     &kSteelInputTable,
     91,
     {"\n'%s'钢筋,描述[%s]错误:%s.", "\n'%s'Steel desc[%s] cause error: %s."},
     {"墙替代箍水平筋", "WallReplaceHoop"}},
    {"object classes", &kObjectClassTable, 112, {"墙", "Wall"}, {"自定义主筋", "StUseDefMain"}},
    {"command line",
     &kCommandLineTable,
     13,
     {"(A)添加实体/<按下shift移除实体>", "(Add Entity)/<Press Shift Key To Remove Ent>"},
     {"请输入弧线上的点", "Intput Point On Arc"}},
    {"failures",
     &kFailureTable,
     5,
     {"\n创建对话框失败!", "\nCreate Window Failed!"},
     {"没有找到砼墙", "Find No Beton Wall"}},
    {"shapes", &kShapeTable, 6, {"矩形", "Rectangle"}, {"Z形", "ZShape"}},
    {"points", &kPointTable, 9, {"原点", "Origin Point"}, {"端点", "Edge Point"}},
    {"drawing", &kDrawingTable, 34, {"点选", "Draw By Point"}, {"请选择楼梯", "Input the stair"}},
    {"show switches", &kShowSwitchTable, 10, {"轴网显示\n", "Show Axis"}, {"基础砖模板隐藏\n", "Hide brick"}},
};

void ExpectRow(const PromptRow& row, const char* const (&texts)[2]) {
  EXPECT_EQ(Utf8(row.text[0]), texts[0]);
  EXPECT_EQ(Utf8(row.text[1]), texts[1]);
}

TEST(PromptTables, HoldAllRowsFromFirstToLast) {
  for (const Expected& expected : kTables) {
    SCOPED_TRACE(expected.name);
    ASSERT_EQ(expected.table->size(), expected.rows);
    ExpectRow(expected.table->front(), expected.first);
    ExpectRow(expected.table->back(), expected.last);
  }
}

TEST(PromptTables, KeysArePositionsButForOneRow) {
  for (const Expected& expected : kTables) {
    for (std::size_t i = 0; i < expected.table->size(); ++i) {
      const bool exception = expected.table == &kObjectClassTable && i == 106;
      EXPECT_EQ((*expected.table)[i].key, exception ? 1000 : static_cast<std::int64_t>(i)) << expected.name;
    }
  }
  ExpectRow(kObjectClassTable[106], {"砼结构", "Code_Beton"});
  ExpectRow(kObjectClassTable[107], {"砌体结构", "Brickwork"});
}

TEST(PromptTables, NoTextIsMissing) {
  for (const Expected& expected : kTables) {
    for (const PromptRow& row : *expected.table) {
      EXPECT_FALSE(Utf8(row.text[0]).empty()) << expected.name << " " << row.key;
      EXPECT_FALSE(Utf8(row.text[1]).empty()) << expected.name << " " << row.key;
    }
  }
}

// The sum of all units by their position: a change of any text anywhere changes it.
std::uint64_t Fingerprint(const PromptTable& table) {
  std::uint64_t sum = 14695981039346656037ULL;
  for (const PromptRow& row : table) {
    for (LPCTSTR text : row.text) {
      for (LPCTSTR at = text; *at != 0; ++at)
        sum = (sum ^ static_cast<std::uint16_t>(*at)) * 1099511628211ULL;
      sum = (sum ^ 0xFFFF) * 1099511628211ULL;
    }
  }
  return sum;
}

TEST(PromptTables, OddRowsThatAreEasilyLost) {
  ExpectRow(kSteelInputTable[10], {"是否重新按平法生成钢筋？\n选择\"是\"，必须点\"布置\"按钮,"
                                   "否则已布钢筋将被删除。\n选择\"否\"，点\"布置\""
                                   "按钮，只修改平法显示。",
                                   "Are you sure recalculate with beam plane, it will over before value?"});
  ExpectRow(kSteelInputTable[22], {"截面名称不能为空!\n", "section name can not null!\n"});
  ExpectRow(kSteelInputTable[36], {"主肋梁布置", "plane Mian beam"});
  ExpectRow(kSteelInputTable[71],
            {"是否是自动识别梁筋?\n'是':为梁筋;'否':为条基筋.",
             "Is auto ident beam steel?\n'Yes' is beam steel;'No' is bar found steel."});
  ExpectRow(kSteelInputTable[85], {"柱表", "Column Tabel"});
  ExpectRow(kObjectClassTable[35], {"天棚", "CeilngDec"});
  ExpectRow(kFailureTable[1], {"\n发生例外情况!", "Unkown Exception"});
  ExpectRow(kDrawingTable[3], {"请输入窗口的第一点", "Input Window Fisrt Corner"});
  ExpectRow(kDrawingTable[18], {"纯挑梁", "Pick Surport To Draw"});
  ExpectRow(kShowSwitchTable[1], {"轴网隐藏\n", "\tHide Axis"});
}

TEST(PromptTables, TextsAreThoseThatCallersHaveStored) {
  EXPECT_EQ(Fingerprint(kSteelInputTable), 0xE6D51F9829602494ULL);
  EXPECT_EQ(Fingerprint(kObjectClassTable), 0xFBDB2134A438CD44ULL);
  EXPECT_EQ(Fingerprint(kCommandLineTable), 0xB7A2BDC2526E26F6ULL);
  EXPECT_EQ(Fingerprint(kFailureTable), 0xAC867F5C4FD535BAULL);
  EXPECT_EQ(Fingerprint(kShapeTable), 0xBFEF2D8EF99EB969ULL);
  EXPECT_EQ(Fingerprint(kPointTable), 0xABA6ADB2658005CFULL);
  EXPECT_EQ(Fingerprint(kDrawingTable), 0xC763B1E92C4DA1EBULL);
  EXPECT_EQ(Fingerprint(kShowSwitchTable), 0xC5E750A1325F14BCULL);
}

}  // namespace
}  // namespace lorv
