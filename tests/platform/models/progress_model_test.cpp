#include "platform/models/progress_model.h"

#include <gtest/gtest.h>

#include "platform/ports/progress_dialog.h"

namespace lorv {
namespace {

TEST(ProgressModel, ShareDoneFillsTheBar) {
  const struct {
    DWORD position;
    DWORD total;
    int bar;
  } rows[] = {{0, 4, 0},         {1, 4, 250},           {4, 4, 1000},
              {5, 4, 1000},      {0, 0, 1000},          {3, 0, 1000},
              {1, 3, 333},       {0xFFFFFFFF, 4, 1000}, {0x7FFFFFFF, 0xFFFFFFFF, 499},
              {1, 0xFFFFFFFF, 0}};
  for (const auto& row : rows) {
    ProgressModel model;
    model.SetProgress(row.position, row.total, 0);
    EXPECT_EQ(model.Bar(), row.bar) << row.position << " of " << row.total;
  }
}

TEST(ProgressModel, OnlyTheFirstTwoLinesAreTheOperations) {
  ProgressModel model;
  for (const DWORD line : {0U, 1U, 2U, 3U, 0xFFFFFFFFU}) model.SetLine(line, _T("x"), line == 2);
  EXPECT_EQ(model.Line(0).text, CString(_T("x")));
  EXPECT_FALSE(model.Line(0).path);
  EXPECT_EQ(model.Line(1).text, CString(_T("x")));
  EXPECT_TRUE(model.Line(1).path);
  EXPECT_TRUE(model.Line(2).text.IsEmpty());
  model.SetLine(1, nullptr, false);
  EXPECT_TRUE(model.Line(0).text.IsEmpty()) << "no text is an empty one";
}

TEST(ProgressModel, TimeIsReportedWhereItIsAskedFor) {
  ProgressModel reported;
  reported.Begin(kProgressAutoTime, 500);
  reported.SetProgress(1, 3, 30500);
  EXPECT_EQ(reported.Line(2).text.ToUtf8(), "大约还需 60 秒");
  reported.Timer(kProgressTimerReset, 30000);
  reported.SetProgress(1, 3, 30500);
  EXPECT_TRUE(reported.Line(2).text.IsEmpty()) << "the time begins anew";
  reported.Timer(7, 50000);
  reported.SetProgress(1, 3, 32000);
  EXPECT_EQ(reported.Line(2).text.ToUtf8(), "大约还需 4 秒") << "other actions change nothing";
  ProgressModel silent;
  silent.Begin(0, 0);
  silent.SetProgress(1, 3, 30000);
  EXPECT_TRUE(silent.Line(2).text.IsEmpty());
}

TEST(ProgressModel, CancellingIsSaidForGood) {
  ProgressModel model;
  model.Begin(kProgressAutoTime, 0);
  model.SetCancelMessage(_T("wait"));
  EXPECT_TRUE(model.Line(2).text.IsEmpty());
  EXPECT_FALSE(model.Cancelled());
  model.Cancel();
  EXPECT_TRUE(model.Cancelled());
  EXPECT_EQ(model.Line(2).text, CString(_T("wait")));
  model.SetProgress(1, 3, 30000);
  EXPECT_EQ(model.Line(2).text, CString(_T("wait"))) << "no time is shown any more";
  model.SetCancelMessage(_T("soon"));
  EXPECT_EQ(model.Line(2).text, CString(_T("soon")));
  model.Cancel();
  EXPECT_TRUE(model.Cancelled());
}

TEST(ProgressModel, TimeLeftIsReportedFromTheFirstSecondOn) {
  const struct {
    std::int64_t milliseconds;
    DWORD position;
    DWORD total;
    const char* text;
  } rows[] = {
      {30000, 1, 3, "大约还需 60 秒"},
      {999, 1, 3, ""},
      {1000, 1, 3, "大约还需 2 秒"},
      {1000, 0, 3, ""},
      {1000, 3, 3, ""},
      {1000, 4, 3, ""},
      {45000, 1, 3, "大约还需 90 秒"},
      {45001, 1, 3, "大约还需 2 分钟"},
      {60000, 1, 0xFFFFFFFF, "大约还需 4294967294 分钟"},
      {1000, 999, 1000, "大约还需 1 秒"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(TimeLeftText(row.milliseconds, row.position, row.total).ToUtf8(), row.text) << row.milliseconds;
}

}  // namespace
}  // namespace lorv
