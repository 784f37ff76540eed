#include "report/content/failure_message.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/report/counted_failure.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

std::string Message(CException* caught) {
  return Utf8(MessageOf(caught));
}

TEST(FailureMessage, EveryCauseOfAFileFailureHasItsText) {
  const char* texts[] = {
      "没有错误发生.",
      "错误类型不明.",
      "不能找到文件.",
      "路径错误.",
      "打开文件数量太多.",
      "文件不能访问.",
      "试图使用错误的文件句柄.",
      "当前的工作路径不能被删除.",
      "文件目录不存在.",
      "当设置一个文件的指针的时候,发生错误.",
      "硬件错误.",
      "SHARE.EXE 不能加载,或者是因为共享错误.",
      "不能锁定文件,因为已经被锁定.",
      "磁盘满.",
      "到文件尾.",
  };
  int cause = 0;
  for (const char* text : texts) EXPECT_EQ(Message(new CFileException(cause++)), text) << cause - 1;
}

TEST(FailureMessage, CauseOutsideTheTableAsksTheFailure) {
  for (const int cause : {15, 99, -1}) {
    CFileException failure(cause);
    TCHAR own[260];
    failure.GetErrorMessage(own, 260);
    EXPECT_EQ(Message(new CFileException(cause)), Utf8(LPCTSTR{own})) << cause;
  }
}

TEST(FailureMessage, LackOfMemoryHasItsText) {
  EXPECT_EQ(Message(new CMemoryException), "内存出界");
}

TEST(FailureMessage, OtherFailuresSpeakForThemselves) {
  EXPECT_EQ(Message(new COleDispatchException(_T("墙已删除"), 0, 0)), "墙已删除");
}

TEST(FailureMessage, NullIsUnknown) {
  EXPECT_EQ(Message(nullptr), "未知错误.");
}

TEST(FailureMessage, FailureObjectIsDeletedOnce) {
  int deleted = 0;
  EXPECT_EQ(Message(new test::CountedFailure(deleted, _T("x"))), "x");
  EXPECT_EQ(deleted, 1);
}

TEST(FailureMessage, AutomationFailureGivesItsDescriptionAndStays) {
  const _com_error failure(-1, CString(_T("表格正忙")));
  EXPECT_EQ(Utf8(MessageOf(&failure)), "表格正忙");
  EXPECT_EQ(Utf8(MessageOf(&failure)), "表格正忙");
}

TEST(FailureMessage, AutomationFailureWithoutDescriptionIsEmpty) {
  const _com_error failure(-1);
  EXPECT_EQ(Utf8(MessageOf(&failure)), "");
  EXPECT_EQ(Utf8(MessageOf(static_cast<_com_error*>(nullptr))), "");
}

TEST(FailureMessage, TextIsTakenAsItIs) {
  EXPECT_EQ(Utf8(MessageOf(_T("x"))), "x");
  EXPECT_EQ(Utf8(MessageOf(_T(""))), "");
  EXPECT_EQ(Utf8(MessageOf(static_cast<LPCTSTR>(nullptr))), "");
}

TEST(FailureMessage, LongTextIsCutAtItsLimit) {
  for (const int length : {258, 259, 260, 100000}) {
    const CString text(_T('m'), length);
    const int kept = length < 259 ? length : 259;
    EXPECT_EQ(MessageOf(text.GetString()).GetLength(), kept) << length;
    const _com_error automation(-1, text);
    EXPECT_EQ(MessageOf(&automation).GetLength(), kept) << length;
    EXPECT_EQ(MessageOf(new COleDispatchException(text, 0, 0)).GetLength(), kept) << length;
  }
}

}  // namespace
}  // namespace lorv
