#include "framework/values/variant.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

#include "framework/objects/exceptions.h"
#include "tests/framework/objects/counted_object.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::CountedObject;
using test::Utf8;

template <class Action>
HRESULT CodeOf(Action action) {
  try {
    action();
  } catch (const _com_error& e) {
    return e.Error();
  }
  return S_OK;
}

VARIANT OfTag(VARTYPE type) {
  VARIANT value{};
  value.vt = type;
  return value;
}

TEST(Variant, HeaderExample) {
  EXPECT_EQ(static_cast<long>(_variant_t(_T("12"))), 12);
}

TEST(Variant, TagsHaveThePlatformsCodes) {
  EXPECT_EQ(_variant_t().vt, 0);
  EXPECT_EQ(VT_NULL, 1);
  EXPECT_EQ(_variant_t(short{1}).vt, 2);
  EXPECT_EQ(_variant_t(1).vt, 3);
  EXPECT_EQ(_variant_t(1L).vt, 3);
  EXPECT_EQ(_variant_t(1.0f).vt, 4);
  EXPECT_EQ(_variant_t(1.0).vt, 5);
  EXPECT_EQ(_variant_t(CY{}).vt, 6);
  EXPECT_EQ(_variant_t(1.0, VT_DATE).vt, 7);
  EXPECT_EQ(_variant_t(_T("x")).vt, 8);
  EXPECT_EQ(_variant_t(CString(_T("x"))).vt, 8);
  EXPECT_EQ(_variant_t(static_cast<IDispatch*>(nullptr)).vt, 9);
  EXPECT_EQ(_variant_t(1L, VT_ERROR).vt, 10);
  EXPECT_EQ(_variant_t(true).vt, 11);
  EXPECT_EQ(VT_VARIANT, 12);
  EXPECT_EQ(_variant_t(static_cast<IUnknown*>(nullptr)).vt, 13);
  EXPECT_EQ(_variant_t(1u).vt, 19);
  EXPECT_EQ(_variant_t(1LL).vt, 20);
  EXPECT_EQ(_variant_t(true).boolVal, -1);
}

TEST(Variant, SecondArgumentChoosesTheTag) {
  EXPECT_EQ(_variant_t(5L, VT_BOOL).boolVal, -1);
  EXPECT_EQ(_variant_t(5, VT_BOOL).boolVal, -1);
  EXPECT_EQ(_variant_t(short{0}, VT_BOOL).vt, VT_BOOL);
  EXPECT_EQ(_variant_t(DISP_E_PARAMNOTFOUND, VT_ERROR).scode, DISP_E_PARAMNOTFOUND);
  EXPECT_EQ(CodeOf([] { _variant_t(5L, VT_R8); }), E_INVALIDARG);
  EXPECT_EQ(CodeOf([] { _variant_t(5, VT_BSTR); }), E_INVALIDARG);
  EXPECT_EQ(CodeOf([] { _variant_t(5.0, VT_I4); }), E_INVALIDARG);
  EXPECT_EQ(CodeOf([] { _variant_t(short{5}, VT_I4); }), E_INVALIDARG);
}

TEST(Variant, CopiesAreIndependent) {
  _variant_t a(_T("墙"));
  const _variant_t b(a);
  EXPECT_NE(a.bstrVal, b.bstrVal);
  a = 5L;
  EXPECT_EQ(Utf8(TextView(b.bstrVal, SysStringLen(b.bstrVal))), "墙");
  const _variant_t& same = a;
  a = same;
  EXPECT_EQ(a.lVal, 5);
  a = b;
  a = _variant_t(a);
  EXPECT_TRUE(a == b);
}

// Texts of the same length are written over each other, others take new memory: nothing shows but the value.
TEST(Variant, TextOverTextIsTheNewOne) {
  const CString texts[] = {_T(""),  _T("a"), _T("b"), CString(_T("a\0b"), 3), CString(_T("a\0c"), 3),
                           _T("墙")};
  for (const CString& before : texts) {
    for (const CString& after : texts) {
      const _variant_t source(after);
      _variant_t value(before);
      value = source;
      EXPECT_NE(value.bstrVal, source.bstrVal);
      EXPECT_EQ(CString(value.bstrVal, static_cast<int>(SysStringLen(value.bstrVal))), after);
      EXPECT_EQ(value.bstrVal[SysStringLen(value.bstrVal)], 0);
    }
  }
  _variant_t null(_T("x"));
  SysFreeString(null.bstrVal);
  null.bstrVal = nullptr;
  _variant_t value(_T("y"));
  value = null;
  EXPECT_EQ(SysStringLen(value.bstrVal), 0U);
  null = _variant_t(_T(""));
  EXPECT_EQ(SysStringLen(null.bstrVal), 0U);
}

TEST(Variant, ZeroUnitsInsideATextSurvive) {
  const _variant_t value(CString(_T("a\0b"), 3));
  const _variant_t copy(value);
  EXPECT_EQ(SysStringLen(copy.bstrVal), 3u);
  EXPECT_EQ(_bstr_t(copy).length(), 3u);
}

TEST(Variant, MovingLeavesTheEmptyValue) {
  _variant_t a(_T("x"));
  const BSTR text = a.bstrVal;
  _variant_t b(std::move(a));
  EXPECT_EQ(b.bstrVal, text);
  EXPECT_EQ(a.vt, VT_EMPTY);  // NOLINT(bugprone-use-after-move): the promise under test
  a = std::move(b);
  EXPECT_EQ(a.bstrVal, text);
  EXPECT_EQ(b.vt, VT_EMPTY);  // NOLINT(bugprone-use-after-move): the promise under test
  _variant_t& same = a;
  a = std::move(same);
  EXPECT_EQ(a.bstrVal, text);
}

TEST(Variant, GrowingArrayMovesAndDoesNotCopy) {
  std::vector<_variant_t> cells;
  cells.emplace_back(_T("x"));
  const BSTR text = cells[0].bstrVal;
  for (int i = 0; i < 100; ++i) cells.emplace_back(i);
  EXPECT_EQ(cells[0].bstrVal, text);
}

TEST(Variant, FailedCopyRaisesAndLeavesTheValue) {
  const VARIANT wrong = OfTag(15);
  EXPECT_EQ(CodeOf([&] { _variant_t copy(wrong); }), DISP_E_BADVARTYPE);
  _variant_t value(5L);
  EXPECT_EQ(CodeOf([&] { value = wrong; }), DISP_E_BADVARTYPE);
  EXPECT_EQ(value.lVal, 5);
  EXPECT_EQ(CodeOf([] { _variant_t copy(static_cast<const VARIANT*>(nullptr)); }), E_POINTER);
}

TEST(Variant, FailedConversionRaisesAndLeavesTheValue) {
  _variant_t value(_T("abc"));
  EXPECT_EQ(CodeOf([&] { value.ChangeType(VT_I4); }), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(Utf8(static_cast<LPCTSTR>(_bstr_t(value))), "abc");
  EXPECT_EQ(CodeOf([&] { (void)static_cast<double>(value); }), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(CodeOf([] { _bstr_t text{_variant_t(OfTag(VT_NULL))}; }), DISP_E_TYPEMISMATCH);
}

TEST(Variant, ObjectsAreCounted) {
  CountedObject object;
  {
    const _variant_t a(static_cast<IUnknown*>(&object));
    EXPECT_EQ(object.Count(), 2u);
    const _variant_t b(a);
    EXPECT_EQ(object.Count(), 3u);
    IUnknown* held = b;
    EXPECT_EQ(object.Count(), 4u);
    held->Release();
    object.AddRef();
    const _variant_t taken(static_cast<IUnknown*>(&object), false);
    EXPECT_EQ(object.Count(), 4u);
    EXPECT_TRUE(a == b);
  }
  EXPECT_EQ(object.Count(), 1u);
}

TEST(Variant, EqualsByTagAndContents) {
  EXPECT_TRUE(_variant_t(5) == _variant_t(5L));
  EXPECT_FALSE(_variant_t(5) == _variant_t(5.0));
  EXPECT_FALSE(_variant_t(_T("5")) == _variant_t(5));
  EXPECT_TRUE(_variant_t(_T("a")) == _variant_t(CString(_T("a"))));
  EXPECT_FALSE(_variant_t(_T("a")) == _variant_t(_T("A")));
  EXPECT_TRUE(_variant_t() == _variant_t());
  EXPECT_TRUE(_variant_t(true) == _variant_t(true));
  EXPECT_FALSE(_variant_t(1LL) == _variant_t(2LL));
  EXPECT_FALSE(_variant_t(1.0f) == _variant_t(2.0f));
  EXPECT_TRUE(_variant_t(static_cast<unsigned char>(3)) == _variant_t(static_cast<unsigned char>(3)));
}

TEST(Variant, AttachAndDetachPassWhatIsHeld) {
  _variant_t a(_T("x"));
  VARIANT raw = a.Detach();
  EXPECT_EQ(a.vt, VT_EMPTY);
  const BSTR text = raw.bstrVal;
  _variant_t b(7L);
  b.Attach(raw);
  EXPECT_EQ(raw.vt, VT_EMPTY);
  EXPECT_EQ(b.bstrVal, text);
  raw = b.Detach();
  const _variant_t c(raw, false);
  EXPECT_EQ(c.bstrVal, text);
  VARIANT* address = b.GetAddress();
  EXPECT_EQ(address->vt, VT_EMPTY);
}

TEST(Variant, ConvertsToPlainTypes) {
  const _variant_t value(_T("65"));
  EXPECT_EQ(static_cast<short>(value), 65);
  EXPECT_EQ(static_cast<int>(value), 65);
  EXPECT_EQ(static_cast<long long>(value), 65);
  EXPECT_EQ(static_cast<unsigned short>(value), 65);
  EXPECT_EQ(static_cast<unsigned long long>(value), 65u);
  EXPECT_EQ(static_cast<float>(value), 65.0f);
  EXPECT_EQ(static_cast<CY>(value).int64, 650000);
  EXPECT_EQ(Utf8(static_cast<LPCTSTR>(static_cast<_bstr_t>(_variant_t(1.5)))), "1.5");
}

TEST(Variant, SystemFunctionsKeepTheirPromises) {
  VARIANT a{};
  VariantInit(&a);
  EXPECT_EQ(a.vt, VT_EMPTY);
  const _variant_t text(_T("12"));
  EXPECT_EQ(VariantCopy(&a, const_cast<_variant_t*>(&text)), S_OK);
  EXPECT_EQ(VariantCopy(&a, &a), S_OK);
  EXPECT_EQ(SysStringLen(a.bstrVal), 2u);
  EXPECT_EQ(VariantClear(&a), S_OK);
  EXPECT_EQ(a.vt, VT_EMPTY);
  VARIANT wrong = OfTag(15);
  EXPECT_EQ(VariantClear(&wrong), DISP_E_BADVARTYPE);
  EXPECT_EQ(VariantCopy(&a, &wrong), DISP_E_BADVARTYPE);
  EXPECT_EQ(VariantChangeType(&a, const_cast<_variant_t*>(&text), 0, VT_I4), S_OK);
  EXPECT_EQ(a.lVal, 12);
  VARIANT reference = OfTag(VT_I4 | VT_BYREF);
  reference.byref = &a.lVal;
  _variant_t copy;
  EXPECT_EQ(VariantCopyInd(&copy, &reference), S_OK);
  EXPECT_EQ(copy.vt, VT_I4);
  EXPECT_EQ(copy.lVal, 12);
}

TEST(COleVariant, HeaderExample) {
  COleVariant value(_T("x"));
  try {
    value.ChangeType(VT_I4);
    ADD_FAILURE() << "was converted";
  } catch (COleException* e) {
    EXPECT_EQ(e->m_sc, DISP_E_TYPEMISMATCH);
    e->Delete();
  }
  EXPECT_EQ(value.vt, VT_BSTR);
}

TEST(COleVariant, IsATaggedValueLikeAnyOther) {
  COleVariant value(12.5);
  value.ChangeType(VT_BSTR);
  EXPECT_EQ(Utf8(static_cast<LPCTSTR>(_bstr_t(value))), "12.5");
  value = _variant_t(3L);
  EXPECT_EQ(value.vt, VT_I4);
  const COleVariant copy(value);
  EXPECT_TRUE(copy == value);
  COleVariant other;
  other.ChangeType(VT_R8, &copy);
  EXPECT_EQ(other.dblVal, 3);
}

TEST(Bstr, NoTextDiffersFromTheEmptyText) {
  const _bstr_t none;
  const _bstr_t empty(_T(""));
  EXPECT_TRUE(!none);
  EXPECT_FALSE(!empty);
  EXPECT_EQ(none.length(), 0u);
  EXPECT_TRUE(none < empty);
  EXPECT_FALSE(none == empty);
  EXPECT_TRUE(none == _bstr_t(static_cast<LPCTSTR>(nullptr)));
  EXPECT_EQ(static_cast<LPCTSTR>(none), nullptr);
}

TEST(Bstr, JoinsComparesAndCopies) {
  _bstr_t a(_T("KL"));
  const _bstr_t b = a;
  a += _bstr_t(_T("12"));
  EXPECT_EQ(Utf8(a.View()), "KL12");
  EXPECT_EQ(Utf8((b + a).View()), "KLKL12");
  EXPECT_TRUE(b < a);
  EXPECT_EQ(a.length(), 4u);
  const _bstr_t& same = a;
  a = same;
  EXPECT_EQ(Utf8(a.View()), "KL12");
  _bstr_t none;
  none += none;
  EXPECT_TRUE(!none);
  none += b;
  EXPECT_TRUE(none == b);
}

TEST(Bstr, PassesItsTextOn) {
  _bstr_t a(_T("x"));
  const BSTR copied = a.copy();
  EXPECT_NE(copied, a.copy(false));
  SysFreeString(copied);
  const BSTR text = a.Detach();
  EXPECT_TRUE(!a);
  _bstr_t b(text, false);
  EXPECT_EQ(b.GetBSTR(), text);
  _bstr_t c(text, true);
  EXPECT_NE(c.GetBSTR(), text);
  c.Assign(c.GetBSTR());
  EXPECT_EQ(Utf8(c.View()), "x");
  *b.GetAddress() = SysAllocString(_T("y"));
  EXPECT_EQ(Utf8(b.View()), "y");
  b.Attach(SysAllocString(_T("z")));
  EXPECT_EQ(Utf8(b.View()), "z");
}

}  // namespace
}  // namespace lorv
