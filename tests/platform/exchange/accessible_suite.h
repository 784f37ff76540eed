#pragma once

#include "tests/platform/exchange/accessible_scene.h"

// The same tests of accessible objects for every kind of desktop: each instantiates them with what makes its
// own desktop and its own reader.
namespace lorv_test {

using lorv::AccessEvent;
using lorv::AccessRole;
using lorv::CellAddress;

template <class Maker>
class Accessible : public AccessScene {
 protected:
  Accessible() : AccessScene(Maker::Make()), reader_(Maker::Reader()) {}
  HeldObject::Ref Of(const CWnd& window) { return reader_->Of(window.m_hWnd); }
  // The object of a cell or a header, as a child of its table.
  HeldObject::Ref Cell(int row, int column) {
    return Of(cells)->Child((row + 1) * (static_cast<int>(cells.count.cx) + 1) + column + 1);
  }
  SeenObject See(const CWnd& window) { return Of(window)->See(); }

  std::unique_ptr<AccessReader> reader_;
};

TYPED_TEST_SUITE_P(Accessible);

TYPED_TEST_P(Accessible, ATableHasHeadersAndCellsAsChildren) {
  const SeenObject table = this->See(this->cells);
  EXPECT_EQ(table.role, AccessRole::Table);
  EXPECT_EQ(table.name, CString(_T("构件")));
  EXPECT_EQ(table.children, 5 * 4);
  const SeenObject column = this->Cell(-1, 1)->See();
  EXPECT_EQ(column.role, AccessRole::ColumnHeader);
  EXPECT_EQ(column.name, CString(_T("长度")));
  const SeenObject row = this->Cell(2, -1)->See();
  EXPECT_EQ(row.role, AccessRole::RowHeader);
  EXPECT_EQ(row.name, CString(_T("3")));
}

TYPED_TEST_P(Accessible, ACellHasNameValueAndPlace) {
  const SeenObject cell = this->Cell(1, 1)->See();
  EXPECT_EQ(cell.role, AccessRole::Cell);
  EXPECT_EQ(cell.name, CString(_T("2 长度")));
  EXPECT_EQ(cell.value, CString(_T("3600")));
  const POINT corner = this->OnCells(90, 40);
  EXPECT_EQ(cell.place, CRect(CPoint(corner), SIZE{60, 20}));
  EXPECT_EQ(cell.children, 0);
}

TYPED_TEST_P(Accessible, StatesOfCellsAreReported) {
  this->cells.SetFocus();
  this->Settle();
  const SeenObject current = this->Cell(1, 1)->See();
  EXPECT_TRUE(current.Has(lorv::kAccessFocused | lorv::kAccessSelected)) << current.state;
  EXPECT_FALSE(current.Has(lorv::kAccessReadOnly));
  const SeenObject other = this->Cell(0, 0)->See();
  EXPECT_TRUE(other.Has(lorv::kAccessReadOnly)) << other.state;
  EXPECT_FALSE(other.Has(lorv::kAccessFocused));
  EXPECT_FALSE(other.Has(lorv::kAccessSelected));
  EXPECT_TRUE(this->Cell(0, 2)->See().Has(lorv::kAccessChecked));
  EXPECT_FALSE(this->Cell(1, 2)->See().Has(lorv::kAccessChecked));
  EXPECT_TRUE(this->Cell(3, 1)->See().Has(lorv::kAccessExpanded));
}

TYPED_TEST_P(Accessible, TheCurrentCellHasTheFocusOnlyWithItsWindow) {
  this->edit.SetFocus();
  this->Settle();
  EXPECT_FALSE(this->Cell(1, 1)->See().Has(lorv::kAccessFocused));
  this->cells.SetFocus();
  this->Settle();
  const auto focused = this->Of(this->cells)->Focused();
  ASSERT_NE(focused, nullptr);
  EXPECT_EQ(focused->See().value, CString(_T("3600")));
}

TYPED_TEST_P(Accessible, AValueIsSetWhereTheUserCould) {
  this->Cell(1, 1)->SetValue(_T("4.2"));
  EXPECT_EQ(this->cells.texts[std::pair(1, 1)], CString(_T("4.2")));
  this->Cell(1, 0)->SetValue(_T("x"));
  EXPECT_EQ(this->cells.texts.count(std::pair(1, 0)), 0U) << "read-only";
  this->Cell(-1, 1)->SetValue(_T("x"));
  EXPECT_EQ(this->cells.texts.size(), 1U) << "a header";
}

TYPED_TEST_P(Accessible, TheFirstActionIsDone) {
  this->Cell(2, 1)->DoFirstAction();
  this->Cell(3, 2)->DoFirstAction();
  this->Cell(0, 0)->DoFirstAction();
  EXPECT_EQ(this->cells.done, (std::vector<std::string>{"edit 2", "toggle 3"}));
}

TYPED_TEST_P(Accessible, APointHitsACellAHeaderOrNothing) {
  const auto table = this->Of(this->cells);
  EXPECT_EQ(table->At(this->OnCells(95, 45))->See().value, CString(_T("3600")));
  EXPECT_EQ(table->At(this->OnCells(95, 5))->See().role, AccessRole::ColumnHeader);
  const auto beside = table->At(this->OnCells(380, 130));
  EXPECT_TRUE(beside == nullptr || beside->See().role == AccessRole::Table);
}

TYPED_TEST_P(Accessible, TheSelectedOnesAreListed) {
  const auto selected = this->Of(this->cells)->Selected();
  ASSERT_EQ(selected.size(), 2U);
  EXPECT_EQ(selected[0]->See().name, CString(_T("2 长度")));
  EXPECT_EQ(selected[1]->See().name, CString(_T("3 名称")));
  this->cells.chosen = {{0, 1}};
  EXPECT_EQ(this->Of(this->cells)->Selected().size(), 1U);
  this->cells.chosen.clear();
  EXPECT_TRUE(this->Of(this->cells)->Selected().empty());
}

TYPED_TEST_P(Accessible, ThePartsParentIsTheTable) {
  const auto parent = this->Cell(1, 1)->Parent();
  ASSERT_NE(parent, nullptr);
  EXPECT_EQ(parent->See().role, AccessRole::Table);
}

TYPED_TEST_P(Accessible, EventsCarryTheNumberOfTheCell) {
  this->reader_->TakeEvents(this->cells.m_hWnd);
  this->cells.ReportAccessibleCell(AccessEvent::Focus, {1, 1});
  this->cells.ReportAccessibleCell(AccessEvent::Value, {1, 1});
  this->cells.ReportAccessibleCell(AccessEvent::State, {0, 2});
  this->cells.ReportAccessible(AccessEvent::Selection);
  this->cells.ReportAccessible(AccessEvent::Structure);
  EXPECT_EQ(this->reader_->TakeEvents(this->cells.m_hWnd),
            (std::vector<std::string>{"focus 11", "value 11", "state 8", "selection 0", "structure 0"}));
}

TYPED_TEST_P(Accessible, AnObjectOutlivesItsRowAndItsWindow) {
  const auto table = this->Of(this->cells);
  const auto cell = this->Cell(3, 1);
  this->cells.count.cy = 2;
  EXPECT_FALSE(cell->See().there);
  this->cells.count.cy = 4;
  EXPECT_TRUE(cell->See().there);
  this->cells.DestroyWindow();
  this->Settle();
  EXPECT_FALSE(cell->See().there);
  EXPECT_FALSE(cell->SetValue(_T("x")));
  cell->DoFirstAction();
  EXPECT_EQ(cell->Child(0), nullptr);
  EXPECT_TRUE(this->cells.done.empty());
  EXPECT_EQ(this->cells.texts.size(), 1U);
}

TYPED_TEST_P(Accessible, AMillionRowsAreAskedForOneByOne) {
  this->cells.count = {400, 1000000};
  const SeenObject table = this->See(this->cells);
  EXPECT_EQ(table.children, 401 * 1000001);
  const SeenObject last = this->Cell(999999, 1)->See();
  EXPECT_EQ(last.name, CString(_T("1000000 长度")));
  EXPECT_TRUE(last.Has(lorv::kAccessOffscreen));
  this->cells.count = {100000, 1000000};
  EXPECT_GE(this->See(this->cells).children, 0x7FFFFFF0) << "no more than can be counted";
}

TYPED_TEST_P(Accessible, LabelsAndButtonsHaveTheirTexts) {
  const SeenObject seen_label = this->See(this->label);
  EXPECT_EQ(seen_label.role, AccessRole::Label);
  EXPECT_EQ(seen_label.name, CString(_T("长度(L)")));
  const SeenObject seen_press = this->See(this->press);
  EXPECT_EQ(seen_press.role, AccessRole::Button);
  EXPECT_EQ(seen_press.name, CString(_T("Press & go")));
  EXPECT_EQ(this->See(this->check).role, AccessRole::CheckBox);
  EXPECT_EQ(this->See(this->radio).role, AccessRole::RadioButton);
  EXPECT_EQ(this->See(this->box).role, AccessRole::Group);
  EXPECT_EQ(this->See(this->box).name, CString(_T("组")));
}

TYPED_TEST_P(Accessible, AnEditIsNamedByTheLabelBeforeIt) {
  this->edit.SetWindowText(_T("3.6"));
  const SeenObject seen_edit = this->See(this->edit);
  EXPECT_EQ(seen_edit.role, AccessRole::Text);
  EXPECT_EQ(seen_edit.name, CString(_T("长度(L)")));
  EXPECT_EQ(seen_edit.value, CString(_T("3.6")));
  this->label.SetWindowText(_T("宽度"));
  EXPECT_EQ(this->See(this->edit).name, CString(_T("宽度")));
  EXPECT_FALSE(seen_edit.Has(lorv::kAccessReadOnly));
  EXPECT_TRUE(this->See(this->shut).Has(lorv::kAccessReadOnly));
  this->secret.SetWindowText(_T("abc"));
  EXPECT_TRUE(this->See(this->secret).Has(lorv::kAccessProtected));
  EXPECT_NE(this->See(this->secret).value, CString(_T("abc")));
}

TYPED_TEST_P(Accessible, AnEditTakesAValueUnlessItIsReadOnly) {
  this->Of(this->edit)->SetValue(_T("12"));
  this->Settle();
  CString text;
  this->edit.GetWindowText(text);
  EXPECT_EQ(text, CString(_T("12")));
  EXPECT_NE(std::find(this->frame.reported.begin(), this->frame.reported.end(), "2:768"),
            this->frame.reported.end());
  if (!TypeParam::kGuardsEdits) return;
  this->Of(this->shut)->SetValue(_T("12"));
  this->shut.GetWindowText(text);
  EXPECT_EQ(text, CString());
}

TYPED_TEST_P(Accessible, AButtonIsPressed) {
  this->Of(this->press)->DoFirstAction();
  const auto& reported = this->frame.reported;
  EXPECT_TRUE(this->DispatchUntil(
      [&] { return std::find(reported.begin(), reported.end(), "5:0") != reported.end(); }));
}

TYPED_TEST_P(Accessible, ACheckBoxIsToggled) {
  EXPECT_FALSE(this->See(this->check).Has(lorv::kAccessChecked));
  this->Of(this->check)->DoFirstAction();
  EXPECT_TRUE(this->DispatchUntil([&] { return this->check.GetCheck() == BST_CHECKED; }));
  EXPECT_TRUE(this->See(this->check).Has(lorv::kAccessChecked));
  EXPECT_EQ(std::count(this->frame.reported.begin(), this->frame.reported.end(), "6:0"), 1);
}

TYPED_TEST_P(Accessible, ADisabledControlIsSoReported) {
  EXPECT_FALSE(this->See(this->edit).Has(lorv::kAccessDisabled));
  this->edit.EnableWindow(FALSE);
  EXPECT_TRUE(this->See(this->edit).Has(lorv::kAccessDisabled));
  this->press.ShowWindow(SW_HIDE);
  EXPECT_TRUE(this->See(this->press).Has(lorv::kAccessHidden));
}

TYPED_TEST_P(Accessible, AListHasItsItems) {
  this->list.SetCurSel(1);
  const SeenObject seen_list = this->See(this->list);
  EXPECT_EQ(seen_list.role, AccessRole::List);
  ASSERT_EQ(seen_list.children, 3);
  const SeenObject item = this->Of(this->list)->Child(1)->See();
  EXPECT_EQ(item.role, AccessRole::ListItem);
  EXPECT_EQ(item.name, CString(_T("C25")));
  EXPECT_TRUE(item.Has(lorv::kAccessSelected));
  EXPECT_FALSE(this->Of(this->list)->Child(0)->See().Has(lorv::kAccessSelected));
  const SeenObject seen_choice = this->See(this->choice);
  EXPECT_EQ(seen_choice.role, AccessRole::DropDown);
  this->choice.SetCurSel(2);
  EXPECT_EQ(this->See(this->choice).value, CString(_T("C30")));
}

REGISTER_TYPED_TEST_SUITE_P(Accessible, ATableHasHeadersAndCellsAsChildren, ACellHasNameValueAndPlace,
                            StatesOfCellsAreReported, TheCurrentCellHasTheFocusOnlyWithItsWindow,
                            AValueIsSetWhereTheUserCould, TheFirstActionIsDone,
                            APointHitsACellAHeaderOrNothing, TheSelectedOnesAreListed,
                            ThePartsParentIsTheTable, EventsCarryTheNumberOfTheCell,
                            AnObjectOutlivesItsRowAndItsWindow, AMillionRowsAreAskedForOneByOne,
                            LabelsAndButtonsHaveTheirTexts, AnEditIsNamedByTheLabelBeforeIt,
                            AnEditTakesAValueUnlessItIsReadOnly, AButtonIsPressed, ACheckBoxIsToggled,
                            ADisabledControlIsSoReported, AListHasItsItems);

}  // namespace lorv_test
