#include <gtest/gtest.h>

#include "tests/support/data.h"
#include "tests/tools/run_tool.h"

namespace lorv::test {
namespace {

class SheetVerb : public testing::Test {
 protected:
  std::string Path(const char* name) const { return (scratch_.Path() / name).string(); }
  void Put(const char* name, const std::string& bytes) const { WriteBytes(scratch_.Path() / name, bytes); }
  std::string Bytes(const char* name) const { return ReadBytes(scratch_.Path() / name); }

 private:
  ScratchFolder scratch_;
};

TEST_F(SheetVerb, ATableBecomesAWorkbookAndComesBack) {
  Put("t.csv", "名称,长\n墙,12.50\n007,\"a, b\"\n");
  const ToolRun made = RunTool({"sheet", Path("t.csv"), "--out", Path("t.xlsx"), "--sheet", "清单"});
  EXPECT_EQ(made.code, 0) << made.err;
  EXPECT_EQ(RunTool({"sheet", Path("t.xlsx")}).out, "1\t清单\t3 x 2\n");
  EXPECT_EQ(RunTool({"sheet", Path("t.xlsx"), "--sheet", "1"}).out,
            "名称,长\r\n墙,12.50\r\n007,\"a, b\"\r\n");
  EXPECT_EQ(RunTool({"sheet", Path("t.xlsx"), "--sheet", "清单", "--out", Path("b.csv")}).code, 0);
  EXPECT_EQ(Bytes("b.csv"), "名称,长\r\n墙,12.50\r\n007,\"a, b\"\r\n");
}

TEST_F(SheetVerb, WhatCannotBeUsedIsTold) {
  Put("t.csv", "a\n");
  Put("bad.xlsx", "PK no archive");
  const ToolRun bad = RunTool({"sheet", Path("bad.xlsx")});
  EXPECT_EQ(bad.code, 2);
  EXPECT_EQ(bad.err, "lorv: 文件不是有效的工作簿。\n");
  EXPECT_EQ(RunTool({"sheet", Path("none.xlsx")}).code, 2);
  EXPECT_EQ(RunTool({"sheet", Path("t.csv"), "--sheet", "2"}).err, "lorv: there is no sheet \"2\"\n");
  const ToolRun named = RunTool({"sheet", Path("t.csv"), "--out", Path("n.xlsx"), "--sheet", "a/b"});
  EXPECT_EQ(named.code, 2);
  EXPECT_NE(named.err.find("不能作为工作表名称"), std::string::npos);
  EXPECT_EQ(Bytes("n.xlsx"), "");
}

}  // namespace
}  // namespace lorv::test
