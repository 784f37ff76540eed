#include "framework/values/variant_text.h"

#include <gtest/gtest.h>

#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

TEST(VariantToText, HeaderExample) {
  EXPECT_EQ(Utf8(VariantToText(_variant_t(0.1))), "0.1");
}

TEST(VariantToText, EmptyNullAndErrorAreTheEmptyText) {
  VARIANT value{};
  for (const VARTYPE type : {VT_EMPTY, VT_NULL, VT_ERROR}) {
    value.vt = type;
    EXPECT_TRUE(VariantToText(value).IsEmpty()) << type;
  }
}

TEST(VariantToText, DatesGoByYearMonthAndDay) {
  EXPECT_EQ(Utf8(VariantToText(_variant_t(45351.75, VT_DATE))), "2024-02-29");
  EXPECT_EQ(Utf8(VariantToText(_variant_t(0.5, VT_DATE))), "1899-12-30");
  EXPECT_EQ(Utf8(VariantToText(_variant_t(-1.25, VT_DATE))), "1899-12-29");
  EXPECT_EQ(Utf8(VariantToText(_variant_t(-36522.0, VT_DATE))), "1800-01-01");
  EXPECT_EQ(Utf8(VariantToText(_variant_t(1e9, VT_DATE))), "");
}

TEST(VariantToText, AllOthersByConversion) {
  EXPECT_EQ(Utf8(VariantToText(_variant_t(-5))), "-5");
  EXPECT_EQ(Utf8(VariantToText(_variant_t(true))), "-1");
  EXPECT_EQ(Utf8(VariantToText(_variant_t(1e15))), "1E+15");
  EXPECT_EQ(Utf8(VariantToText(_variant_t(0.1f))), "0.1");
  EXPECT_EQ(Utf8(VariantToText(_variant_t(_T("墙 240")))), "墙 240");
  EXPECT_EQ(VariantToText(_variant_t(CString(_T("a\0b"), 3))).GetLength(), 3);
  EXPECT_EQ(Utf8(VariantToText(_variant_t(static_cast<LPCTSTR>(nullptr)))), "");
}

TEST(VariantToText, ObjectRaises) {
  EXPECT_THROW(VariantToText(_variant_t(static_cast<IUnknown*>(nullptr))), _com_error);
}

}  // namespace
}  // namespace lorv
