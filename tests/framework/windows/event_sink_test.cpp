#include "framework/windows/event_sink.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "framework/values/variant.h"

namespace {

using Notes = std::vector<std::string>;

class Sheet : public CCmdTarget {
 public:
  Notes notes;

  DECLARE_EVENTSINK_MAP()

 private:
  void OnHeadClick(short column) { notes.push_back("head " + std::to_string(column)); }
  void OnEdit(short column, VARIANT* old, short* cancel) {
    notes.push_back("edit " + std::to_string(column));
    static_cast<_variant_t&>(*old) = _variant_t(9);
    *cancel = 1;
  }
  BOOL OnMaybe(long number, BOOL flag, const VARIANT& value, BSTR* text) {
    notes.push_back("maybe " + std::to_string(number) + " " + std::to_string(flag) + " " +
                    std::to_string(value.lVal));
    SysFreeString(*text);
    *text = SysAllocString(_T("tip"));
    return FALSE;
  }
  void OnAny() { notes.emplace_back("any"); }
};

BEGIN_EVENTSINK_MAP(Sheet, CCmdTarget)
ON_EVENT(Sheet, 7, 10, OnHeadClick, VTS_I2)
ON_EVENT(Sheet, 7, 5, OnEdit, VTS_I2 VTS_PVARIANT VTS_PI2)
ON_EVENT(Sheet, 7, 6, OnMaybe, VTS_I4 VTS_BOOL VTS_VARIANT VTS_PBSTR)
ON_EVENT_RANGE(Sheet, 20, 29, -600, OnAny, VTS_NONE)
END_EVENTSINK_MAP()

class Bill : public Sheet {
  DECLARE_EVENTSINK_MAP()

 private:
  void OnHead(short column) { notes.push_back("bill " + std::to_string(column)); }
};

BEGIN_EVENTSINK_MAP(Bill, Sheet)
ON_EVENT(Bill, 7, 10, OnHead, VTS_I2)
END_EVENTSINK_MAP()

struct Handlers {
  void Two(short, short*) {}
};

// The arguments stand the last one first.
BOOL Send(CCmdTarget& target, UINT id, DISPID event, std::vector<VARIANTARG> values,
          HRESULT* code = nullptr) {
  DISPPARAMS params = {values.data(), nullptr, static_cast<UINT>(values.size()), 0};
  AFX_EVENT record;
  record.m_dispid = event;
  record.m_pDispParams = &params;
  const BOOL handled = target.OnCmdMsg(id, CN_EVENT, &record, nullptr);
  if (code != nullptr) *code = record.m_hResult;
  return handled;
}

VARIANTARG ByPointer(VARTYPE kind, void* place) {
  VARIANTARG value = {};
  value.vt = static_cast<VARTYPE>(kind | VT_BYREF);
  value.byref = place;
  return value;
}

}  // namespace

TEST(EventSink, EventGoesToItsHandler) {
  Sheet sheet;
  EXPECT_EQ(Send(sheet, 7, 10, {_variant_t(short{3})}), TRUE);
  EXPECT_EQ(Send(sheet, 8, 10, {_variant_t(short{3})}), FALSE);
  EXPECT_EQ(Send(sheet, 7, 11, {_variant_t(short{3})}), FALSE);
  EXPECT_EQ(sheet.notes, (Notes{"head 3"}));
}

TEST(EventSink, RangeOfControls) {
  Sheet sheet;
  for (const UINT id : {19U, 20U, 29U, 30U}) Send(sheet, id, -600, {});
  EXPECT_EQ(sheet.notes, (Notes{"any", "any"}));
}

TEST(EventSink, HandlerAnswersThroughPointers) {
  Sheet sheet;
  _variant_t old(_T("old"));
  short cancel = 0;
  Send(sheet, 7, 5, {ByPointer(VT_I2, &cancel), ByPointer(VT_VARIANT, &old), _variant_t(short{2})});
  EXPECT_EQ(sheet.notes, (Notes{"edit 2"}));
  EXPECT_EQ(cancel, 1);
  EXPECT_EQ(old, _variant_t(9));
}

TEST(EventSink, HandlerMayPassTheEventOn) {
  Sheet sheet;
  _bstr_t text(_T(""));
  EXPECT_EQ(Send(sheet, 7, 6,
                 {ByPointer(VT_BSTR, &text.GetBSTR()), _variant_t(5), _variant_t(true), _variant_t(70000)}),
            FALSE);
  EXPECT_EQ(sheet.notes, (Notes{"maybe 70000 1 5"}));
  EXPECT_EQ(text, _bstr_t(_T("tip")));
}

TEST(EventSink, OtherArgumentsAreNotDelivered) {
  Sheet sheet;
  HRESULT code = S_OK;
  EXPECT_EQ(Send(sheet, 7, 10, {_variant_t(3)}, &code), FALSE);
  EXPECT_EQ(code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(Send(sheet, 7, 10, {}), FALSE);
  EXPECT_EQ(Send(sheet, 7, 10, {_variant_t(short{1}), _variant_t(short{1})}), FALSE);
  EXPECT_EQ(
      Send(sheet, 7, 5, {ByPointer(VT_I2, nullptr), ByPointer(VT_VARIANT, nullptr), _variant_t(short{2})}),
      FALSE);
  EXPECT_EQ(sheet.notes, Notes{});
}

TEST(EventSink, DerivedSinkComesFirst) {
  Bill bill;
  Send(bill, 7, 10, {_variant_t(short{1})});
  Send(bill, 20, -600, {});
  EXPECT_EQ(bill.notes, (Notes{"bill 1", "any"}));
}

TEST(EventSink, CanBeAskedWithoutRunning) {
  Sheet sheet;
  AFX_EVENT record;
  record.m_dispid = 10;
  AFX_CMDHANDLERINFO info;
  EXPECT_EQ(sheet.OnCmdMsg(7, CN_EVENT, &record, &info), TRUE);
  EXPECT_EQ(info.pTarget, &sheet);
  EXPECT_EQ(sheet.notes, Notes{});
  record.m_eventKind = AFX_EVENT::propRequest;
  EXPECT_EQ(sheet.OnCmdMsg(7, CN_EVENT, &record, nullptr), FALSE);
  EXPECT_EQ(sheet.OnCmdMsg(7, CN_EVENT, nullptr, nullptr), FALSE);
}

TEST(EventSink, HandlersTakeExactlyTheirTypes) {
  static_assert(lorv::TakesArgument<short>(0x02) && !lorv::TakesArgument<int>(0x02));
  static_assert(lorv::TakesArgument<long>(0x03) && lorv::TakesArgument<int>(0x03));
  static_assert(lorv::TakesArgument<BOOL>(0x0B) && lorv::TakesArgument<LPDISPATCH>(0x09));
  static_assert(lorv::TakesArgument<VARIANT>(0x0C) && !lorv::TakesArgument<VARIANT*>(0x0C));
  static_assert(lorv::TakesArgument<short*>(0x42) && lorv::TakesArgument<LONG*>(0x43));
  static_assert(lorv::TakesArgument<float*>(0x44) && lorv::TakesArgument<BSTR*>(0x48));
  static_assert(lorv::TakesArgument<VARIANT*>(0x4C) && !lorv::TakesArgument<short*>(0x4C));
  static_assert(!lorv::TakesArgument<short>(0x01));
  EXPECT_TRUE(lorv::HandlerTakes(&Handlers::Two, VTS_I2 VTS_PI2));
  EXPECT_FALSE(lorv::HandlerTakes(&Handlers::Two, VTS_I2));
}
