#include "framework/values/com_error.h"

#include <gtest/gtest.h>

#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

TEST(ComError, HeaderExample) {
  EXPECT_EQ(_com_error(E_OUTOFMEMORY).Error(), E_OUTOFMEMORY);
  EXPECT_EQ(_com_error(E_OUTOFMEMORY).Description().length(), 0u);
}

TEST(ComError, WithoutInformationDescriptionIsNoText) {
  const _com_error e(E_FAIL);
  EXPECT_TRUE(!e.Description());
  EXPECT_TRUE(!e.Source());
  EXPECT_EQ(e.ErrorInfo(), nullptr);
}

TEST(ComError, KeepsADescriptionOfItsOwnThroughCopies) {
  const _com_error e(DISP_E_EXCEPTION, CString(_T("单元格被保护")));
  _com_error copy(E_FAIL);
  EXPECT_NE(*copy.ErrorMessage(), 0);
  copy = e;
  EXPECT_EQ(Utf8(static_cast<LPCTSTR>(copy.Description())), "单元格被保护");
  EXPECT_EQ(copy.Error(), DISP_E_EXCEPTION);
  EXPECT_EQ(Utf8(copy.ErrorMessage()), Utf8(e.ErrorMessage()));
}

TEST(ComError, EveryCodeHasAMessage) {
  EXPECT_NE(Utf8(_com_error(E_OUTOFMEMORY).ErrorMessage()), "");
  EXPECT_EQ(Utf8(_com_error(static_cast<HRESULT>(0xA0DE1234)).ErrorMessage()), "Unknown error 0xA0DE1234");
}

TEST(ComError, OldServersNumbersGoThereAndBack) {
  EXPECT_EQ(_com_error(E_FAIL).WCode(), 0);
  EXPECT_EQ(_com_error(_com_error::WCodeToHRESULT(7)).WCode(), 7);
  EXPECT_EQ(_com_error::WCodeToHRESULT(0xFFFF), static_cast<HRESULT>(0x8004FFFF));
  EXPECT_EQ(Utf8(_com_error(_com_error::WCodeToHRESULT(1234)).ErrorMessage()).find("\n"), std::string::npos);
}

TEST(ComError, IssuedAsAValue) {
  EXPECT_THROW(_com_issue_error(E_FAIL), _com_error);
  EXPECT_THROW(_com_raise_error(E_FAIL), _com_error);
  EXPECT_THROW(CheckResult(E_FAIL), _com_error);
  EXPECT_NO_THROW(CheckResult(S_FALSE));
}

}  // namespace
}  // namespace lorv
