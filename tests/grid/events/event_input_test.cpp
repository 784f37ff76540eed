#include "grid/events/event_input.h"

#include <gtest/gtest.h>

#include "tests/support/print.h"

using lorv::CutDecimalZeros;
using lorv::EventButton;
using lorv::EventShift;

TEST(EventInput, HeaderExamples) {
  EXPECT_EQ(EventButton(5), 1);
  EXPECT_EQ(EventShift(12), 3);
  EXPECT_EQ(CutDecimalZeros(_T("12.500")), CString(_T("12.5")));
  EXPECT_EQ(CutDecimalZeros(_T("1200")), CString(_T("1200")));
}

TEST(EventInput, EveryFlagHasItsNumber) {
  for (unsigned flags = 0; flags < 64; ++flags) {
    EXPECT_EQ(EventButton(flags), static_cast<short>(flags & 3U)) << flags;
    const unsigned shift = (flags & 12U) / 4U + (flags & 32U) / 8U;
    EXPECT_EQ(EventShift(flags), static_cast<short>(shift)) << flags;
  }
  EXPECT_EQ(EventShift(true, false, true), 5);
  EXPECT_EQ(EventShift(false, true, false), 2);
}

TEST(EventInput, DecimalZerosAndTheirPointGo) {
  struct Case {
    LPCTSTR text;
    LPCTSTR cut;
  };
  for (const Case& wanted :
       {Case{_T("12.000"), _T("12")}, Case{_T("12."), _T("12")}, Case{_T("-1.50"), _T("-1.5")},
        Case{_T("0.0"), _T("0")}, Case{_T("1.2.300"), _T("1.2.3")}, Case{_T("1..0"), _T("1.")},
        Case{_T("+0.10"), _T("+0.1")}, Case{_T("100.0"), _T("100")}})
    EXPECT_EQ(CutDecimalZeros(wanted.text), CString(wanted.cut)) << lorv::test::Utf8(wanted.text);
}

TEST(EventInput, OtherTextsStay) {
  for (const LPCTSTR text :
       {_T("a.0"), _T(""), _T(".500"), _T("1 .0"), _T("1e5.0"), _T("0"), _T("1,50.0"), _T("１.0")})
    EXPECT_EQ(CutDecimalZeros(text), CString(text));
}
