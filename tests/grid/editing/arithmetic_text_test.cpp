#include "grid/editing/arithmetic_text.h"

#include <gtest/gtest.h>

namespace {

CString Evaluated(LPCTSTR typed) {
  CString text = _T("kept");
  const bool done = lorv::ArithmeticText(CString(typed), text);
  EXPECT_EQ(done, text != _T("kept")) << CString(typed).ToUtf8();
  return text;
}

}  // namespace

TEST(ArithmeticText, HeaderExample) {
  EXPECT_EQ(Evaluated(_T("1+2/4")), _T("1.5"));
}

TEST(ArithmeticText, KeepsThreeDecimals) {
  EXPECT_EQ(Evaluated(_T("2/3")), _T("0.667"));
  EXPECT_EQ(Evaluated(_T("2*3")), _T("6"));
}

TEST(ArithmeticText, LeavesWhatIsNoFormulaAlone) {
  for (LPCTSTR typed : {_T("12"), _T("-1.5"), _T("a=1+2"), _T("1=1"), _T("1+"), _T("(2"), _T("梁")})
    EXPECT_EQ(Evaluated(typed), _T("kept"));
}
