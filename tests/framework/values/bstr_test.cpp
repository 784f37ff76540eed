#include "framework/values/bstr.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

#include "framework/text/utf8.h"
#include "framework/values/com_error.h"
#include "framework/values/variant.h"
#include "tests/support/print.h"

namespace {

using lorv::TextView;

std::string TextOf(const _bstr_t& text) {
  return lorv::TextToUtf8(text.View());
}

}  // namespace

TEST(BstrText, HeaderExample) {
  EXPECT_EQ(TextOf(_bstr_t(_variant_t(true))), "-1");
}

TEST(BstrText, AValueWithoutATextRaisesItsCode) {
  _variant_t null;
  null.vt = VT_NULL;
  try {
    const _bstr_t text(null);
    FAIL() << "null has no text";
  } catch (const _com_error& failure) {
    EXPECT_EQ(failure.Error(), DISP_E_TYPEMISMATCH);
  }
}

TEST(BstrText, NoTextIsNoPointer) {
  const _bstr_t none;
  EXPECT_EQ(static_cast<LPCTSTR>(none), nullptr);
  EXPECT_EQ(none.length(), 0U);
  EXPECT_TRUE(!none);
  EXPECT_EQ(none.copy(), nullptr);
  EXPECT_EQ(static_cast<LPCTSTR>(_bstr_t(static_cast<LPCTSTR>(nullptr))), nullptr);
  EXPECT_EQ(static_cast<LPCTSTR>(_bstr_t(static_cast<BSTR>(nullptr), true)), nullptr);
  EXPECT_TRUE(lorv::TextOfBstr(nullptr).empty());
}

TEST(BstrText, OrderPutsNothingBeforeEverything) {
  const _bstr_t none;
  const _bstr_t empty(_T(""));
  const _bstr_t a(_T("a"));
  const _bstr_t b(_T("b"));
  EXPECT_TRUE(none == _bstr_t());
  EXPECT_TRUE(none < empty);
  EXPECT_TRUE(empty < a);
  EXPECT_TRUE(a < b);
  EXPECT_TRUE(_bstr_t(_T("B")) < a);  // by unit, not by letter
  EXPECT_FALSE(none == empty);
}

TEST(BstrText, LengthIsThatOfItsUnits) {
  const CString held(TextView(_T("a\0b"), 3));
  const _bstr_t text(held);
  EXPECT_EQ(text.length(), 3U);
  EXPECT_EQ(lorv::TextOfBstr(static_cast<LPTSTR>(text)), held.View());
  EXPECT_EQ(SysStringByteLen(static_cast<LPTSTR>(text)), 6U);
  EXPECT_EQ(static_cast<LPCTSTR>(text)[3], 0);
}

TEST(BstrText, CopiesAreIndependent) {
  _bstr_t first(_T("梁"));
  _bstr_t second(first);
  static_cast<LPTSTR>(second)[0] = _T('x');
  EXPECT_EQ(TextOf(first), "梁");
  EXPECT_EQ(TextOf(second), "x");
  _bstr_t& same = first;
  first = same;
  EXPECT_EQ(TextOf(first), "梁");
  BSTR taken = first.copy();
  EXPECT_NE(taken, static_cast<LPTSTR>(first));
  SysFreeString(taken);
  EXPECT_EQ(first.copy(false), static_cast<LPTSTR>(first));
}

TEST(BstrText, MovingLeavesNothing) {
  _bstr_t first(_T("ab"));
  const LPCTSTR units = first;
  _bstr_t second(std::move(first));
  EXPECT_EQ(static_cast<LPCTSTR>(second), units);
  EXPECT_EQ(static_cast<LPCTSTR>(first), nullptr);  // NOLINT(bugprone-use-after-move): that is the promise
  first = std::move(second);
  EXPECT_EQ(static_cast<LPCTSTR>(first), units);
}

TEST(BstrText, TheReceiverOfTheAddressFillsIt) {
  _bstr_t text(_T("old"));
  BSTR* const address = text.GetAddress();
  EXPECT_EQ(*address, nullptr);
  *address = SysAllocString(_T("new"));
  EXPECT_EQ(TextOf(text), "new");
  const BSTR given = text.Detach();
  EXPECT_TRUE(!text);
  text.Attach(given);
  EXPECT_EQ(text.GetBSTR(), given);
  // Taking over its own text by a copy must not free what is copied.
  text.Assign(given);
  EXPECT_EQ(TextOf(text), "new");
}

TEST(BstrText, JoinsAsTextsDo) {
  std::mt19937 random(2);
  _bstr_t text;
  std::basic_string<TCHAR> model;
  for (int round = 0; round < 100; ++round) {
    const std::basic_string<TCHAR> piece(random() % 5, static_cast<TCHAR>('a' + round % 26));
    text += _bstr_t(CString(TextView(piece)));
    model += piece;
    ASSERT_EQ(text.View(), TextView(model));
  }
  const _bstr_t with_zero(CString(TextView(_T("a\0b"), 3)));
  EXPECT_EQ((with_zero + with_zero).length(), 6U);
  text += text;
  EXPECT_EQ(text.length(), 2 * model.size());
  EXPECT_EQ(TextOf(_bstr_t() + _bstr_t(_T("x"))), "x");
  EXPECT_TRUE(!(_bstr_t() + _bstr_t()));
}
