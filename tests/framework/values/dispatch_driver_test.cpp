#include "framework/values/dispatch_driver.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "framework/objects/exceptions.h"
#include "framework/values/variant.h"

namespace {

// Notes what it is called with, and answers by pointer.
class NotingObject : public IDispatch {
 public:
  std::vector<VARTYPE> kinds;
  DISPID member = 0;
  WORD flags = 0;
  UINT named = 0;
  HRESULT answer_code = S_OK;
  _variant_t answer;
  ULONG count = 1;
  std::vector<_variant_t> plain;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++count; }
  ULONG STDMETHODCALLTYPE Release() override { return --count; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD how, DISPPARAMS* params, VARIANT* result,
                                   EXCEPINFO* failure, UINT*) override {
    member = id;
    flags = how;
    named = params->cNamedArgs;
    for (UINT i = params->cArgs; i-- > 0;) Take(params->rgvarg[i]);
    if (answer_code == DISP_E_EXCEPTION) failure->bstrDescription = SysAllocString(_T("refused"));
    if (result != nullptr && SUCCEEDED(answer_code)) VariantCopy(result, &answer);
    return answer_code;
  }
  virtual ~NotingObject() = default;

 private:
  void Take(VARIANTARG& value) {
    kinds.push_back(value.vt);
    if ((value.vt & VT_BYREF) == 0) {
      plain.emplace_back(value);
    } else if (value.vt == (VT_BYREF | VT_I2)) {
      *value.piVal = static_cast<short>(*value.piVal + 1);
    } else if (value.vt == (VT_BYREF | VT_VARIANT)) {
      static_cast<_variant_t&>(*value.pvarVal) = _variant_t(_T("answer"));
    }
  }
};

const BYTE* Types(const char* types) {
  return reinterpret_cast<const BYTE*>(types);
}

}  // namespace

TEST(DispatchDriver, PassesArgumentsByTheirTypes) {
  NotingObject object;
  COleDispatchDriver driver(&object, FALSE);
  short answer = 4;
  _variant_t value(7);
  const _variant_t lent(_T("lent"));
  driver.InvokeHelper(
      12, DISPATCH_METHOD, VT_EMPTY, nullptr,
      Types(VTS_I2 VTS_I4 VTS_R4 VTS_R8 VTS_BOOL VTS_BSTR VTS_VARIANT VTS_DISPATCH VTS_PI2 VTS_PVARIANT), -3,
      LONG{70000}, 1.5, 2.5, TRUE, static_cast<LPCTSTR>(_T("text")), static_cast<const VARIANT*>(&lent),
      static_cast<LPDISPATCH>(nullptr), &answer, static_cast<VARIANT*>(&value));
  EXPECT_EQ(object.member, 12);
  EXPECT_EQ(object.flags, DISPATCH_METHOD);
  EXPECT_EQ(object.named, 0U);
  EXPECT_EQ(object.kinds, (std::vector<VARTYPE>{VT_I2, VT_I4, VT_R4, VT_R8, VT_BOOL, VT_BSTR, VT_BSTR,
                                                VT_DISPATCH, VT_BYREF | VT_I2, VT_BYREF | VT_VARIANT}));
  const std::vector<_variant_t> plain = {_variant_t(short{-3}),
                                         _variant_t(70000),
                                         _variant_t(1.5F),
                                         _variant_t(2.5),
                                         _variant_t(true),
                                         _variant_t(_T("text")),
                                         lent};
  for (std::size_t i = 0; i < plain.size(); ++i) EXPECT_EQ(object.plain[i], plain[i]) << i;
  EXPECT_EQ(answer, 5);
  EXPECT_EQ(CString(value.bstrVal), _T("answer"));
}

TEST(DispatchDriver, GivesTheResultInTheKindAskedFor) {
  NotingObject object;
  COleDispatchDriver driver(&object, FALSE);
  object.answer = _variant_t(_T("12"));
  LONG number = 0;
  driver.InvokeHelper(1, DISPATCH_PROPERTYGET, VT_I4, &number, nullptr);
  EXPECT_EQ(number, 12);
  short small_number = 0;
  driver.InvokeHelper(1, DISPATCH_PROPERTYGET, VT_I2, &small_number, nullptr);
  EXPECT_EQ(small_number, 12);
  double real = 0;
  driver.InvokeHelper(1, DISPATCH_PROPERTYGET, VT_R8, &real, nullptr);
  EXPECT_EQ(real, 12.0);
  float narrow = 0;
  driver.InvokeHelper(1, DISPATCH_PROPERTYGET, VT_R4, &narrow, nullptr);
  EXPECT_EQ(narrow, 12.0F);
  BOOL flag = FALSE;
  driver.InvokeHelper(1, DISPATCH_PROPERTYGET, VT_BOOL, &flag, nullptr);
  EXPECT_EQ(flag, TRUE);
  VARIANT whole = {};
  driver.InvokeHelper(1, DISPATCH_PROPERTYGET, VT_VARIANT, &whole, nullptr);
  EXPECT_EQ(_variant_t(whole, false), object.answer);
  driver.InvokeHelper(1, DISPATCH_PROPERTYPUT, VT_EMPTY, nullptr, Types(VTS_I2), 3);
  EXPECT_EQ(object.named, 1U);
}

TEST(DispatchDriver, FailureIsRaisedWithItsWords) {
  NotingObject object;
  COleDispatchDriver driver(&object, FALSE);
  const auto call = [&] {
    LONG number = 5;
    try {
      driver.InvokeHelper(1, DISPATCH_METHOD, VT_I4, &number, nullptr);
    } catch (COleDispatchException* failure) {
      const CString words = failure->m_strDescription;
      failure->Delete();
      return words;
    } catch (COleException* failure) {
      const HRESULT code = failure->m_sc;
      failure->Delete();
      CString words;
      words.Format(_T("%08X %d"), static_cast<unsigned>(code), static_cast<int>(number));
      return words;
    }
    return CString(_T("none"));
  };
  object.answer_code = DISP_E_MEMBERNOTFOUND;
  EXPECT_EQ(call(), _T("80020003 5"));
  object.answer_code = DISP_E_EXCEPTION;
  EXPECT_EQ(call(), _T("refused"));
}

TEST(DispatchDriver, RefusesWhatItCannotPass) {
  NotingObject object;
  COleDispatchDriver driver(&object, FALSE);
  const std::string many(lorv::kMostCallArguments + 1, '\x02');
  for (const char* types : {"\x02\x63", "\x4A", many.c_str()}) {
    try {
      driver.InvokeHelper(1, DISPATCH_METHOD, VT_EMPTY, nullptr, Types(types), 1, 2, 3, 4, 5, 6, 7, 8, 9, 10,
                          11, 12, 13, 14, 15, 16, 17);
      ADD_FAILURE() << types;
    } catch (COleException* failure) {
      failure->Delete();
    }
  }
  EXPECT_EQ(object.member, 0);
  const std::string most(lorv::kMostCallArguments, '\x02');
  driver.InvokeHelper(1, DISPATCH_METHOD, VT_EMPTY, nullptr, Types(most.c_str()), 1, 2, 3, 4, 5, 6, 7, 8, 9,
                      10, 11, 12, 13, 14, 15, 16);
  EXPECT_EQ(object.plain.back(), _variant_t(short{16}));
}

TEST(DispatchDriver, ReleasesWhatItIsToRelease) {
  NotingObject object;
  object.count = 3;
  { const COleDispatchDriver kept(&object, FALSE); }
  EXPECT_EQ(object.count, 3U);
  { const COleDispatchDriver taken(&object); }
  EXPECT_EQ(object.count, 2U);
  COleDispatchDriver driver;
  driver.InvokeHelper(1, DISPATCH_METHOD, VT_EMPTY, nullptr, nullptr);
  driver.AttachDispatch(&object);
  EXPECT_EQ(driver.DetachDispatch(), &object);
  driver.ReleaseDispatch();
  EXPECT_EQ(object.count, 2U);
}
