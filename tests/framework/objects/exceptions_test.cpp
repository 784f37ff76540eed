#include "framework/objects/exceptions.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "framework/values/com_error.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

std::string MessageOf(const CException& e, UINT size = 260) {
  TCHAR text[260];
  std::fill(std::begin(text), std::end(text), TCHAR{'#'});
  EXPECT_TRUE(e.GetErrorMessage(text, size));
  return Utf8(static_cast<LPCTSTR>(text));
}

template <class Kind, class Action>
bool Raises(Action action) {
  try {
    action();
  } catch (CException* e) {
    const bool right = e->IsKindOf(RUNTIME_CLASS(Kind)) != 0 && dynamic_cast<Kind*>(e) != nullptr;
    e->Delete();
    return right;
  }
  return false;
}

TEST(Exceptions, HelpersThrowTheirKindByPointer) {
  EXPECT_TRUE(Raises<CMemoryException>([] { AfxThrowMemoryException(); }));
  EXPECT_TRUE(Raises<CNotSupportedException>([] { AfxThrowNotSupportedException(); }));
  EXPECT_TRUE(Raises<CInvalidArgException>([] { AfxThrowInvalidArgException(); }));
  EXPECT_TRUE(Raises<CResourceException>([] { AfxThrowResourceException(); }));
  EXPECT_TRUE(Raises<CUserException>([] { AfxThrowUserException(); }));
  EXPECT_TRUE(Raises<CFileException>([] { AfxThrowFileException(CFileException::diskFull); }));
  EXPECT_TRUE(Raises<CArchiveException>([] { AfxThrowArchiveException(CArchiveException::badIndex); }));
  EXPECT_TRUE(Raises<COleException>([] { AfxThrowOleException(E_FAIL); }));
  EXPECT_TRUE(Raises<COleDispatchException>([] { AfxThrowOleDispatchException(7, _T("x")); }));
}

TEST(Exceptions, NoMemoryCanBeThrownAndDeletedAgainAndAgain) {
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(Raises<CMemoryException>([] { AfxThrowMemoryException(); }));
}

TEST(Exceptions, StackObjectSurvivesItsDelete) {
  CNotSupportedException e(FALSE);
  e.Delete();
  EXPECT_EQ(MessageOf(e), "不支持此操作。");
}

TEST(Exceptions, MessageIsCutToTheBuffer) {
  const CInvalidArgException e;
  EXPECT_EQ(MessageOf(e), "遇到不适当的参数。");
  EXPECT_EQ(MessageOf(e, 10), "遇到不适当的参数。");
  EXPECT_EQ(MessageOf(e, 9), "遇到不适当的参数");
  EXPECT_EQ(MessageOf(e, 1), "");
}

TEST(Exceptions, NoBufferIsRefusedAndUntouched) {
  const CInvalidArgException e;
  TCHAR text[1] = {'#'};
  EXPECT_FALSE(e.GetErrorMessage(text, 0));
  EXPECT_EQ(text[0], '#');
  EXPECT_FALSE(e.GetErrorMessage(nullptr, 260));
}

TEST(Exceptions, HelpContextIsCleared) {
  UINT help = 5;
  TCHAR text[4];
  EXPECT_TRUE(CMemoryException().GetErrorMessage(text, 4, &help));
  EXPECT_EQ(help, 0u);
}

TEST(Exceptions, EveryKindHasATextOfItsOwn) {
  EXPECT_EQ(MessageOf(CException()), "操作失败。");
  EXPECT_EQ(MessageOf(CMemoryException()), "内存不足。");
  EXPECT_EQ(MessageOf(CResourceException()), "找不到所需的资源。");
  EXPECT_EQ(MessageOf(COleDispatchException(_T("单元格被保护"), 0, 1)), "单元格被保护");
  EXPECT_FALSE(MessageOf(COleException(E_OUTOFMEMORY)).empty());
}

TEST(CFileException, FifteenCausesCountFromZero) {
  EXPECT_EQ(static_cast<int>(CFileException::none), 0);
  EXPECT_EQ(static_cast<int>(CFileException::fileNotFound), 2);
  EXPECT_EQ(static_cast<int>(CFileException::directoryFull), 8);
  EXPECT_EQ(static_cast<int>(CFileException::endOfFile), 14);
}

TEST(CFileException, TextNamesTheFile) {
  EXPECT_EQ(MessageOf(CFileException(CFileException::fileNotFound, 2, _T("a.txt"))), "a.txt: 找不到文件。");
  EXPECT_EQ(MessageOf(CFileException(CFileException::endOfFile)), "已到文件末尾。");
  EXPECT_EQ(MessageOf(CFileException(15)), "文件操作失败。");
  EXPECT_EQ(MessageOf(CFileException(-1)), "文件操作失败。");
}

TEST(CFileException, KnowsTheSystemsNumbers) {
  EXPECT_EQ(CFileException::ErrnoToException(0), CFileException::none);
  EXPECT_EQ(CFileException::ErrnoToException(ENOENT), CFileException::fileNotFound);
  EXPECT_EQ(CFileException::ErrnoToException(EACCES), CFileException::accessDenied);
  EXPECT_EQ(CFileException::ErrnoToException(ENOSPC), CFileException::diskFull);
  EXPECT_EQ(CFileException::ErrnoToException(-12345), CFileException::genericException);
  EXPECT_EQ(CFileException::OsErrorToException(2), CFileException::fileNotFound);
  EXPECT_EQ(CFileException::OsErrorToException(3), CFileException::badPath);
  EXPECT_EQ(CFileException::OsErrorToException(32), CFileException::sharingViolation);
  EXPECT_EQ(CFileException::OsErrorToException(112), CFileException::diskFull);
  EXPECT_EQ(CFileException::OsErrorToException(99999), CFileException::genericException);
}

TEST(CFileException, ThrownFromASystemNumberKeepsIt) {
  try {
    CFileException::ThrowErrno(ENOENT, _T("x"));
  } catch (CFileException* e) {
    EXPECT_EQ(e->m_cause, CFileException::fileNotFound);
    EXPECT_EQ(e->m_lOsError, ENOENT);
    EXPECT_EQ(Utf8(e->m_strFileName), "x");
    e->Delete();
  }
  EXPECT_TRUE(Raises<CFileException>([] { CFileException::ThrowOsError(5); }));
}

TEST(COleException, ProcessGivesTheCodeOfWhatWasCaught) {
  const COleException ole(DISP_E_OVERFLOW);
  EXPECT_EQ(COleException::Process(&ole), DISP_E_OVERFLOW);
  const CMemoryException memory;
  EXPECT_EQ(COleException::Process(&memory), E_OUTOFMEMORY);
  const CNotSupportedException unsupported;
  EXPECT_EQ(COleException::Process(&unsupported), E_NOTIMPL);
  const CUserException user;
  EXPECT_EQ(COleException::Process(&user), E_UNEXPECTED);
  EXPECT_EQ(COleException::Process(nullptr), E_UNEXPECTED);
}

}  // namespace
}  // namespace lorv
