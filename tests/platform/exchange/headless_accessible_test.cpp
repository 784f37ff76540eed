#include "framework/windows/accessible_table.h"
#include "framework/windows/accessible_window.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "tests/platform/exchange/accessible_suite.h"

namespace lorv_test {
namespace {

using lorv::AccessibleObject;

class PlainObject : public HeldObject {
 public:
  explicit PlainObject(std::shared_ptr<AccessibleObject> object) : object_(std::move(object)) {}
  static Ref Made(std::shared_ptr<AccessibleObject> object) {
    return object == nullptr ? nullptr : std::make_unique<PlainObject>(std::move(object));
  }

  SeenObject See() const override {
    return {object_->Exists(), object_->Role(),         object_->Name(),      object_->Value(),
            object_->State(),  CRect(object_->Place()), object_->ChildCount()};
  }
  Ref Child(int index) const override { return Made(object_->Child(index)); }
  Ref Parent() const override { return Made(object_->Parent()); }
  Ref At(POINT screen) const override { return Made(object_->At(screen)); }
  Ref Focused() const override { return Made(object_->FocusedChild()); }
  std::vector<Ref> Selected() const override {
    std::vector<Ref> all;
    for (const auto& one : object_->Selected()) all.push_back(Made(one));
    return all;
  }
  bool SetValue(const CString& value) override { return object_->SetValue(value); }
  void DoFirstAction() override {
    const auto actions = object_->Actions();
    if (!actions.empty()) object_->Do(actions.front());
  }

 private:
  std::shared_ptr<AccessibleObject> object_;
};

class PlainReader : public AccessReader {
 public:
  HeldObject::Ref Of(HWND window) override { return PlainObject::Made(lorv::AccessibleOf(window)); }
  std::vector<std::string> TakeEvents(HWND window) override {
    std::vector<std::string> events;
    auto& desktop = dynamic_cast<lorv::HeadlessDesktop&>(lorv::DesktopInForce());
    for (const auto& reported : desktop.TakeReports())
      if (reported.window == window)
        events.push_back(std::string(NameOfEvent(reported.event)) + " " + std::to_string(reported.number));
    return events;
  }
};

struct InMemory {
  static std::unique_ptr<lorv::Desktop> Make() { return std::make_unique<lorv::HeadlessDesktop>(); }
  static constexpr bool kGuardsEdits = true;
  static std::unique_ptr<AccessReader> Reader() { return std::make_unique<PlainReader>(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Headless, Accessible, InMemory);

// What only plain data can show.
class PlainAccessible : public AccessScene {
 protected:
  PlainAccessible() : AccessScene(std::make_unique<lorv::HeadlessDesktop>()) {}
  std::shared_ptr<AccessibleObject> Of(const CWnd& window) { return lorv::AccessibleOf(window.m_hWnd); }
  lorv::HeadlessDesktop& Memory() { return dynamic_cast<lorv::HeadlessDesktop&>(*desktop_); }
};

TEST_F(PlainAccessible, NumbersAreThoseOfTheHeader) {
  EXPECT_EQ(lorv::NumberOfCell(cells.m_hWnd, {-1, -1}), 1);
  EXPECT_EQ(lorv::NumberOfCell(cells.m_hWnd, {0, 0}), 6);
  EXPECT_EQ(lorv::NumberOfCell(cells.m_hWnd, {4, 0}), 0) << "no such row";
  EXPECT_EQ(lorv::NumberOfCell(cells.m_hWnd, {0, 3}), 0) << "no such column";
  EXPECT_EQ(lorv::NumberOfCell(cells.m_hWnd, {-2, 0}), 0);
  EXPECT_EQ(lorv::NumberOfCell(frame.m_hWnd, {0, 0}), 0) << "no table";
  EXPECT_EQ(lorv::NumberOfCell(nullptr, {0, 0}), 0);
}

TEST_F(PlainAccessible, EveryNumberLeadsBackToItsCell) {
  const auto table = Of(cells);
  for (int row = -1; row < 4; ++row) {
    for (int column = -1; column < 3; ++column) {
      const auto cell = table->Numbered(lorv::NumberOfCell(cells.m_hWnd, {row, column}));
      ASSERT_NE(cell, nullptr);
      EXPECT_EQ(cell->Row(), row);
      EXPECT_EQ(cell->Column(), column);
      EXPECT_EQ(table->Child(cell->IndexInParent())->Number(), cell->Number());
    }
  }
  EXPECT_EQ(table->Numbered(0), nullptr);
  EXPECT_EQ(table->Numbered(21), nullptr);
  EXPECT_EQ(table->Numbered(-1), nullptr);
  EXPECT_EQ(table->Child(-1), nullptr);
  EXPECT_EQ(table->Child(20), nullptr);
}

TEST_F(PlainAccessible, ACellBeyondWhatCanBeCountedHasItsNumber) {
  cells.count = {100000, 1000000};
  const auto cell = Of(cells)->CellAt(999999, 99999);
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(cell->Number(), std::int64_t{100001} * 1000001);
  EXPECT_EQ(cell->IndexInParent(), -1);
}

TEST_F(PlainAccessible, AnEmptyTableHasItsCornerOnly) {
  cells.count = {0, 0};
  EXPECT_EQ(Of(cells)->ChildCount(), 1);
  EXPECT_EQ(Of(cells)->CellAt(0, 0), nullptr);
  EXPECT_TRUE(Of(cells)->Selected().empty()) << "what was selected is gone";
}

TEST_F(PlainAccessible, CellsAreSelectedAndHeadersAreNot) {
  EXPECT_TRUE(Of(cells)->CellAt(0, 0)->Select(true));
  EXPECT_EQ(cells.chosen, (std::vector<lorv::CellAddress>{{0, 0}}));
  EXPECT_TRUE(Of(cells)->CellAt(0, 0)->Select(false));
  EXPECT_TRUE(cells.chosen.empty());
  EXPECT_FALSE(Of(cells)->CellAt(-1, 0)->Select(true));
}

TEST_F(PlainAccessible, AnActionThatIsNotOfferedIsNotDone) {
  EXPECT_FALSE(Of(cells)->CellAt(0, 0)->Do(lorv::AccessAction::Edit));
  EXPECT_FALSE(Of(cells)->CellAt(0, 1)->Do(lorv::AccessAction::Toggle));
  EXPECT_TRUE(cells.done.empty());
}

TEST_F(PlainAccessible, MoreSelectedThanAreReportedAreCutOff) {
  cells.count = {1, 10000};
  cells.chosen.clear();
  for (int row = 0; row < static_cast<int>(lorv::kMaxReportedSelection) - 1; ++row)
    cells.chosen.push_back({row, 0});
  EXPECT_EQ(Of(cells)->Selected().size(), lorv::kMaxReportedSelection - 1);
  cells.chosen.push_back({9998, 0});
  EXPECT_EQ(Of(cells)->Selected().size(), lorv::kMaxReportedSelection);
  cells.chosen.push_back({9999, 0});
  EXPECT_EQ(Of(cells)->Selected().size(), lorv::kMaxReportedSelection);
}

TEST_F(PlainAccessible, AFrameHasItsWindowsAsChildren) {
  const auto tree = Of(frame);
  EXPECT_EQ(tree->Role(), lorv::AccessRole::Window);
  EXPECT_EQ(tree->Name(), CString(_T("楼层")));
  ASSERT_EQ(tree->ChildCount(), 11);
  EXPECT_EQ(tree->Child(4)->Role(), lorv::AccessRole::Button);
  EXPECT_EQ(tree->Child(4)->IndexInParent(), 4);
  EXPECT_EQ(tree->Child(11), nullptr);
  POINT on_cell = OnCells(95, 45);
  EXPECT_EQ(tree->At(on_cell)->Value(), CString(_T("3600"))) << "the innermost";
  edit.SetFocus();
  EXPECT_EQ(tree->FocusedChild()->Window(), edit.m_hWnd);
}

TEST_F(PlainAccessible, ChoosingAnItemReportsTheParent) {
  EXPECT_TRUE(Of(list)->Child(2)->Select(true));
  EXPECT_EQ(list.GetCurSel(), 2);
  EXPECT_TRUE(Of(choice)->SetValue(_T("C25")));
  EXPECT_EQ(choice.GetCurSel(), 1);
  EXPECT_FALSE(Of(choice)->SetValue(_T("C99"))) << "nothing else can be chosen";
  EXPECT_EQ(frame.reported, (std::vector<std::string>{"9:1", "10:1"}));
}

TEST_F(PlainAccessible, AChoiceOpensItsList) {
  EXPECT_TRUE((Of(choice)->State() & lorv::kAccessExpandable) != 0);
  EXPECT_TRUE(Of(choice)->Do(lorv::AccessAction::ShowList));
  EXPECT_TRUE((Of(choice)->State() & lorv::kAccessExpanded) != 0);
  EXPECT_TRUE(Of(choice)->Do(lorv::AccessAction::ShowList));
  EXPECT_FALSE((Of(choice)->State() & lorv::kAccessExpanded) != 0);
}

TEST_F(PlainAccessible, NothingIsDoneWithADisabledControl) {
  press.EnableWindow(FALSE);
  edit.EnableWindow(FALSE);
  EXPECT_FALSE(Of(press)->Do(lorv::AccessAction::Press));
  EXPECT_FALSE(Of(edit)->SetValue(_T("1")));
  EXPECT_FALSE(Of(edit)->Do(lorv::AccessAction::Focus));
  edit.EnableWindow();
  EXPECT_TRUE(Of(edit)->Do(lorv::AccessAction::Focus));
  EXPECT_EQ(CWnd::GetFocus(), &edit);
}

TEST_F(PlainAccessible, ControlsReportWhatTheUserChanges) {
  Memory().TakeReports();
  edit.SetFocus();
  Memory().Type(_T("7"));
  Memory().RunUntilIdle();
  check.SendMessage(BM_CLICK);
  using Report = lorv::HeadlessDesktop::Report;
  const std::vector<Report> reported = Memory().TakeReports();
  EXPECT_EQ(std::count(reported.begin(), reported.end(), Report{edit.m_hWnd, lorv::AccessEvent::Focus, 0}),
            1);
  EXPECT_EQ(std::count(reported.begin(), reported.end(), Report{edit.m_hWnd, lorv::AccessEvent::Value, 0}),
            1);
  EXPECT_EQ(std::count(reported.begin(), reported.end(), Report{check.m_hWnd, lorv::AccessEvent::State, 0}),
            1);
}

TEST_F(PlainAccessible, KeyMarksAreNotReadOut) {
  EXPECT_EQ(lorv::WithoutKeyMarks(_T("&Save && close")), CString(_T("Save & close")));
  EXPECT_EQ(lorv::WithoutKeyMarks(_T("a&")), CString(_T("a&"))) << "it marks nothing";
  EXPECT_EQ(lorv::WithoutKeyMarks(_T("")), CString());
}

TEST_F(PlainAccessible, AHandleThatNamesNothingHasNoObject) {
  EXPECT_EQ(lorv::AccessibleOf(nullptr), nullptr);
  const HWND gone = edit.m_hWnd;
  const auto object = Of(edit);
  edit.DestroyWindow();
  EXPECT_EQ(lorv::AccessibleOf(gone), nullptr);
  EXPECT_FALSE(object->Exists());
  EXPECT_EQ(object->Name(), CString());
  EXPECT_FALSE(object->SetValue(_T("1")));
  EXPECT_EQ(object->ChildCount(), 0);
}

}  // namespace
}  // namespace lorv_test
