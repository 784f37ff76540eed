#include "report/print_error_log.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "platform/headless/services/headless_platform.h"
#include "tests/support/data.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

class PrintErrorLog : public testing::Test {
 protected:
  std::string Written(LPCTSTR path) { return machine_.files.BytesOf(path); }
  bool HasFolder(LPCTSTR path) { return machine_.files.Exists(path); }

  HeadlessPlatform machine_;
  ScopedPlatform scope_{machine_.Ports()};
  CPrintErrorLog log_;
};

CString Letters(int count) {
  return CString(TCHAR('x'), count);
}

static_assert(std::has_virtual_destructor_v<CPrintErrorLog>);

TEST_F(PrintErrorLog, StartsEmpty) {
  EXPECT_EQ(log_.Lines().GetSize(), 0);
  log_.AddOneString(_T("a"));
  EXPECT_FALSE(log_.OutputErrorLog(_T(""), _T("a.txt"), false, false));  // no default folder either
}

TEST_F(PrintErrorLog, KeepsLinesInTheOrderOfAdding) {
  log_.AddOneString(_T("second % line"));
  log_.AddErrorLog(_T("%s-%d-%.2f"), _T("墙"), 7, 1.5);
  log_.AddOneString(nullptr);
  log_.AddErrorLog(nullptr);
  ASSERT_EQ(log_.Lines().GetSize(), 4);
  EXPECT_EQ(Utf8(log_.Lines()[0]), "second % line");
  EXPECT_EQ(Utf8(log_.Lines()[1]), "墙-7-1.50");
  EXPECT_EQ(Utf8(log_.Lines()[2]), "");
  EXPECT_EQ(Utf8(log_.Lines()[3]), "");
  log_.InitErrorLog();
  EXPECT_EQ(log_.Lines().GetSize(), 0);
}

TEST_F(PrintErrorLog, FormattedLinesHold512Units) {
  for (const int length : {511, 512, 513, 5000}) {
    log_.AddErrorLog(_T("%s"), Letters(length));
    EXPECT_EQ(log_.Lines()[log_.Lines().GetUpperBound()], Letters(std::min(length, kMaxLogLine))) << length;
  }
  log_.AddOneString(Letters(513));  // a line as it stands is not cut
  EXPECT_EQ(log_.Lines()[4].GetLength(), 513);
}

TEST_F(PrintErrorLog, WritesTheLinesAndKeepsOrForgetsThem) {
  log_.AddOneString(_T("one"));
  log_.AddOneString(_T("two"));
  EXPECT_TRUE(log_.OutputErrorLog(_T("C:\\Log"), _T("a.txt"), false, false));
  EXPECT_EQ(Written(_T("C:\\Log\\a.txt")), "one\r\ntwo\r\n");
  EXPECT_EQ(log_.Lines().GetSize(), 2);
  EXPECT_TRUE(log_.OutputErrorLog(_T("C:\\Log"), _T("b.txt"), true, false));
  EXPECT_EQ(Written(_T("C:\\Log\\b.txt")), "one\r\ntwo\r\n");
  EXPECT_EQ(log_.Lines().GetSize(), 0);
  EXPECT_TRUE(machine_.shell.started.empty());
}

TEST_F(PrintErrorLog, ReplacesWhatStoodThere) {
  machine_.files.Put(_T("C:\\Log\\a.txt"), "old\r\nold\r\n");
  log_.AddOneString(_T("new"));
  EXPECT_TRUE(log_.OutputErrorLog(_T("C:\\Log"), _T("a.txt"), false, false));
  EXPECT_EQ(Written(_T("C:\\Log\\a.txt")), "new\r\n");
}

TEST_F(PrintErrorLog, TheDefaultFolderServesWhenNoneIsGiven) {
  log_.SetDefaultUsingPath(_T("C:\\Default"));
  log_.AddOneString(_T("x"));
  EXPECT_TRUE(log_.OutputErrorLog(nullptr, _T("a.txt"), false, false));
  EXPECT_EQ(Written(_T("C:\\Default\\a.txt")), "x\r\n");
  EXPECT_TRUE(log_.OutputErrorLog(_T("C:\\Given"), _T("b.txt"), false, false));
  EXPECT_EQ(Written(_T("C:\\Given\\b.txt")), "x\r\n");
}

TEST_F(PrintErrorLog, NoLinesIsFalseButTheFolderIsMade) {
  EXPECT_FALSE(HasFolder(_T("C:\\Log")));
  EXPECT_FALSE(log_.OutputErrorLog(_T("C:\\Log"), _T("a.txt"), true, true));
  EXPECT_TRUE(HasFolder(_T("C:\\Log")));
  EXPECT_FALSE(machine_.files.Exists(_T("C:\\Log\\a.txt")));
  EXPECT_TRUE(machine_.shell.started.empty());
}

TEST_F(PrintErrorLog, FailuresKeepTheLines) {
  log_.AddOneString(_T("x"));
  EXPECT_FALSE(log_.OutputErrorLog(_T("C:\\no\\such"), _T("a.txt"), true, true));
  machine_.files.refused.insert(_T("C:\\Log\\a.txt"));
  EXPECT_FALSE(log_.OutputErrorLog(_T("C:\\Log"), _T("a.txt"), true, true));
  EXPECT_EQ(log_.Lines().GetSize(), 1);
  EXPECT_TRUE(machine_.shell.started.empty());
  EXPECT_TRUE(log_.OutputErrorLog(_T("C:\\Other"), _T("a.txt"), true, true));
}

TEST_F(PrintErrorLog, OpensTheFileInTheViewer) {
  log_.AddOneString(_T("x"));
  EXPECT_TRUE(log_.OutputErrorLog(_T("C:\\Log"), _T("a.txt"), false, true));
  ASSERT_EQ(machine_.shell.started.size(), 1U);
  EXPECT_EQ(Utf8(machine_.shell.started[0].parameters), "C:\\Log\\a.txt");
  machine_.shell.starts = false;
  EXPECT_FALSE(log_.OutputErrorLog(_T("C:\\Log"), _T("b.txt"), true, true));
  EXPECT_EQ(Written(_T("C:\\Log\\b.txt")), "x\r\n");  // written, and forgotten as asked
  EXPECT_EQ(log_.Lines().GetSize(), 0);
}

TEST_F(PrintErrorLog, SeparatorComesEvenBehindASeparator) {
  log_.AddOneString(_T("x"));
  EXPECT_TRUE(log_.OutputErrorLog(_T("C:\\Log\\"), _T("a.txt"), false, true));
  EXPECT_EQ(Utf8(machine_.shell.started.at(0).parameters), "C:\\Log\\\\a.txt");
}

TEST_F(PrintErrorLog, HeaderExample) {
  log_.AddErrorLog(_T("%s: %d"), _T("KL1"), 3);
  machine_.files.MakeFolder(_T("C:\\Temp"));
  EXPECT_TRUE(log_.OutputErrorLog(_T("C:\\Temp"), _T("check.txt"), true, false));
  EXPECT_EQ(Written(_T("C:\\Temp\\check.txt")), "KL1: 3\r\n");
}

TEST(PrintErrorLogFile, LandsOnTheDisk) {
  const test::ScratchFolder scratch;
  const auto bytes = (scratch.Path() / "log").u8string();
  const CString folder = CString::FromUtf8({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  CPrintErrorLog log;
  log.AddOneString(_T("墙"));
  EXPECT_TRUE(log.OutputErrorLog(folder, _T("a.txt"), true, false));
  EXPECT_EQ(test::ReadBytes(scratch.Path() / "log" / "a.txt"), "\xC7\xBD\r\n");
}

}  // namespace
}  // namespace lorv
