#include "tools/lorv-desk/events/event_window.h"

#include <algorithm>

#include "framework/values/variant_text.h"
#include "tests/support/headless_desk.h"
#include "tests/support/print.h"
#include "tools/lorv-desk/events/event_text.h"
#include "tools/lorv-desk/sample_grid.h"

namespace lorv::tool {
namespace {

using test::Utf8;
using Texts = std::vector<std::string>;

// The text of an event with these arguments, in the order of its handler.
std::string TextOf(DISPID event, std::vector<VARIANTARG> arguments) {
  std::reverse(arguments.begin(), arguments.end());
  DISPPARAMS params = {};
  params.rgvarg = arguments.data();
  params.cArgs = static_cast<UINT>(arguments.size());
  AFX_EVENT record;
  record.m_dispid = event;
  record.m_pDispParams = &params;
  return Utf8(EventText(record));
}

template <class Value>
VARIANTARG Answer(VARTYPE type, Value* value) {
  VARIANTARG argument = {};
  argument.vt = static_cast<VARTYPE>(type | VT_BYREF);
  argument.byref = value;
  return argument;
}

VARIANTARG Short(short value) {
  return _variant_t(value).Detach();
}

TEST(EventText, HandlersWithTheirArgumentsInOrder) {
  EXPECT_EQ(TextOf(10, {Short(3)}), "OnHeadClickGrid(3)");
  EXPECT_EQ(TextOf(-600, {}), "OnClick()");
  EXPECT_EQ(TextOf(-605, {Short(1), Short(0), Short(20), Short(-4)}), "OnMouseDownTdbgrid(1, 0, 20, -4)");
  EXPECT_EQ(TextOf(4242, {Short(1)}), "4242(1)");
  AFX_EVENT bare;
  bare.m_dispid = 16;
  EXPECT_EQ(Utf8(EventText(bare)), "OnChange()");
}

TEST(EventText, AnswersStandInBracketsAsTheyAre) {
  short cancel = -1;
  _variant_t old(_T("C30"));
  EXPECT_EQ(TextOf(5, {Short(2), Answer<VARIANT>(VT_VARIANT, &old), Answer(VT_I2, &cancel)}),
            "OnBeforeColUpdate(2, [C30], [-1])");
  BSTR tip = nullptr;
  VARIANTARG row = {};
  row.vt = VT_I4;
  row.lVal = 70000;
  VARIANTARG whole = {};
  whole.vt = VT_BOOL;
  VARIANTARG style = {};
  style.vt = VT_DISPATCH;
  EXPECT_EQ(TextOf(49, {Short(0), Short(1), row, Answer(VT_BSTR, &tip), whole, style}),
            "OnFetchCellTipsGrid(0, 1, 70000, [], false, object)");
  LONG effect = 3;
  float x = 1;
  EXPECT_EQ(TextOf(57, {Answer(VT_I4, &effect), Answer(VT_R4, &x), Answer<short>(VT_I2, nullptr)}),
            "OnOLEDragDrop([3], [...], [])");
}

TEST(EventText, NoiseIsWhatComesWithPaintingAndMoving) {
  for (const DISPID noise : {-606, 36, 38, 51}) EXPECT_TRUE(IsNoise(noise)) << noise;
  for (const DISPID reported : {-600, -605, 5, 10, 11, 26, 40, 63})
    EXPECT_FALSE(IsNoise(reported)) << reported;
}

class EventWindows : public lorv_test::Desk {
 protected:
  void Open() {
    window = std::make_unique<EventWindow>();
    ASSERT_TRUE(window->Open(_T("events"), {kSampleGridWidth, kSampleGridHeight}));
    window->ShowWindow(SW_SHOW);
    Run();
    FillSampleGrid(window->Grid(), SampleGrids().back());
    Run();
  }
  // Without arguments.
  Texts Traced() {
    Texts names;
    for (int row = 0; row < window->Trace().GetRowCount(); ++row) {
      const std::string text = Utf8(VariantToText(window->Trace().GetValue(row, 1)));
      names.push_back(text.substr(0, text.find('(')));
    }
    return names;
  }
  static std::ptrdiff_t PlaceOf(const Texts& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) - names.begin();
  }

  std::unique_ptr<EventWindow> window;
};

TEST_F(EventWindows, ShowWhatAClickRaisesInItsOrder) {
  Open();
  const int before = window->Trace().GetRowCount();
  window->Play(2, 2);
  EXPECT_EQ(window->Trace().GetRowCount(), before) << "shown once the handlers have ended";
  Run();
  Texts names = Traced();
  names.erase(names.begin(), names.begin() + before);
  const auto count = static_cast<std::ptrdiff_t>(names.size());
  const auto down = PlaceOf(names, "OnMouseDownTdbgrid");
  const auto leave = PlaceOf(names, "OnBeforeRowColChange");
  const auto moved = PlaceOf(names, "OnRowColChange");
  ASSERT_LT(down, count);
  ASSERT_LT(leave, count);
  ASSERT_LT(moved, count);
  EXPECT_LT(leave, moved);
  EXPECT_LT(PlaceOf(names, "OnMouseUpGrid"), count);
  // The last line is in sight.
  EXPECT_FALSE(window->Trace().GetItem(window->Trace().GetRowCount() - 1, 1)->GetRect().IsRectEmpty());
  EXPECT_GT(window->Trace().GetFirstRow(), 0);
  EXPECT_EQ(PlaceOf(names, "OnPaintGrid"), count) << "noise is left out";
  EXPECT_EQ(PlaceOf(names, "OnMouseMove"), count);
  // Numbered from the first on.
  for (int row = 0; row < window->Trace().GetRowCount(); ++row)
    ASSERT_EQ(Utf8(VariantToText(window->Trace().GetValue(row, 0))), std::to_string(row + 1));
}

TEST_F(EventWindows, KeepTheLastLines) {
  Open();
  // Some eight lines each.
  for (int i = 0; i < EventWindow::kMostLines / 5; ++i) window->Play(i % 2, 2);
  Run();
  ASSERT_EQ(window->Trace().GetRowCount(), EventWindow::kMostLines);
  const int last = _variant_t(window->Trace().GetValue(EventWindow::kMostLines - 1, 0));
  const int first = _variant_t(window->Trace().GetValue(0, 0));
  EXPECT_GT(last, EventWindow::kMostLines);
  EXPECT_EQ(last - first, EventWindow::kMostLines - 1);
}

TEST_F(EventWindows, TheTableGivesWayFirst) {
  Open();
  CRect trace;
  window->Trace().GetClientRect(&trace);
  CRect table;
  window->Grid().GetClientRect(&table);
  const int trace_width = trace.Width();
  EXPECT_GT(table.Width(), trace_width);
  window->SetWindowPos(nullptr, 0, 0, 500, 300, SWP_NOMOVE | SWP_NOZORDER);
  Run();
  window->Trace().GetClientRect(&trace);
  window->Grid().GetClientRect(&table);
  EXPECT_EQ(trace.Width(), trace_width);
  EXPECT_LT(table.Width(), trace_width);
}

TEST_F(EventWindows, EndWithLinesThatAreNotShownYet) {
  Open();
  window->Play(1, 1);
  window.reset();
  Run();
  Open();
  window->Play(1, 1);
  window->DestroyWindow();
  Run();
  EXPECT_EQ(window->m_hWnd, nullptr);
}

TEST_F(EventWindows, NothingIsPlayedInACellThatIsNotThere) {
  Open();
  const int before = window->Trace().GetRowCount();
  window->Play(100, 0);
  window->Play(0, -1);
  Run();
  EXPECT_EQ(window->Trace().GetRowCount(), before);
}

}  // namespace
}  // namespace lorv::tool
