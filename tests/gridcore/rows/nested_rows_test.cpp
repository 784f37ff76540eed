#include <random>

#include "tests/gridcore/control/grid_desk.h"

namespace {

class NestedRows : public lorv_test::GridDesk {
 protected:
  NestedRows() { grid->InsertColumn(0, _T("c"), 80); }
  CBCGPGridRow* Fresh(LPCTSTR text) {
    CBCGPGridRow* row = grid->CreateRow(1);
    row->GetItem(0)->SetValue(_variant_t(text));
    return row;
  }
  CBCGPGridRow* Add(LPCTSTR text) {
    CBCGPGridRow* row = Fresh(text);
    grid->AddRow(row, FALSE);
    return row;
  }
  CBCGPGridRow* AddTo(CBCGPGridRow* parent, LPCTSTR text) {
    CBCGPGridRow* row = Fresh(text);
    EXPECT_GE(parent->AddSubItem(row), 0);
    return row;
  }
  // The texts in the order of the numbers, with a point a level, and "-" before what is out of sight.
  std::string Shown() const {
    std::string text;
    for (int i = 0; i < grid->GetRowCount(); ++i) {
      const CBCGPGridRow* row = grid->GetRow(i);
      EXPECT_EQ(row->GetRowId(), i);
      if (i > 0) text += ' ';
      if (grid->GetRowRect(i).IsRectEmpty() != FALSE) text += '-';
      text += std::string(static_cast<std::size_t>(row->GetLevel()), '.');
      text += row->GetItem(0)->FormatItem().ToUtf8();
    }
    return text;
  }
};

}  // namespace

TEST_F(NestedRows, StandBehindTheirRow) {
  CBCGPGridRow* a = Add(_T("a"));
  Add(_T("b"));
  CBCGPGridRow* c = AddTo(a, _T("c"));
  AddTo(a, _T("d"));
  AddTo(c, _T("e"));
  EXPECT_EQ(Shown(), "a .c ..e .d b");
  EXPECT_EQ(a->GetSubItemsCount(), 2);
  EXPECT_EQ(a->GetAllSubItemsCount(), 3);
  EXPECT_EQ(a->GetSubItem(1)->GetRowId(), 3);
  EXPECT_EQ(a->GetSubItem(2), nullptr);
  EXPECT_EQ(c->GetParentRow(), a);
  EXPECT_EQ(grid->GetRowCount(), 5);
}

TEST_F(NestedRows, AreFoundByTheirNumber) {
  CBCGPGridRow* a = Add(_T("a"));
  CBCGPGridRow* b = Add(_T("b"));
  CBCGPGridRow* c = AddTo(a, _T("c"));
  CBCGPGridRow* d = AddTo(c, _T("d"));
  EXPECT_EQ(a->FindSubItemById(1), c);
  EXPECT_EQ(a->FindSubItemById(2), d);
  EXPECT_EQ(c->FindSubItemById(2), d);
  for (const int id : {-1, 0, 3, 4}) EXPECT_EQ(a->FindSubItemById(id), nullptr) << id;
  EXPECT_EQ(b->FindSubItemById(1), nullptr);
  EXPECT_EQ(d->FindSubItemById(2), nullptr);
  CBCGPGridRow alone;
  EXPECT_EQ(alone.FindSubItemById(0), nullptr);
}

TEST_F(NestedRows, AreTakenOverWithTheirOwn) {
  CBCGPGridRow* whole = Fresh(_T("w"));
  CBCGPGridRow* inner = Fresh(_T("x"));
  EXPECT_EQ(whole->AddSubItem(inner), 0);
  EXPECT_EQ(inner->AddSubItem(Fresh(_T("y"))), 0);
  EXPECT_EQ(whole->GetRowId(), -1);
  Add(_T("a"));
  grid->AddRow(whole, TRUE);
  Add(_T("b"));
  EXPECT_EQ(Shown(), "a w .x ..y b");
}

TEST_F(NestedRows, NewOnesStandBesideTheRowOfThePlace) {
  CBCGPGridRow* a = Add(_T("a"));
  AddTo(a, _T("b"));
  grid->InsertRowBefore(1, Fresh(_T("c")));
  grid->InsertRowAfter(1, Fresh(_T("d")));
  EXPECT_EQ(Shown(), "a .c .d .b");
  EXPECT_EQ(a->GetSubItem(1)->GetItem(0)->FormatItem(), CString(_T("d")));
  grid->InsertRowAfter(0, Fresh(_T("e")));
  EXPECT_EQ(Shown(), "a .c .d .b e");
  grid->InsertRowBefore(0, Fresh(_T("f")));
  EXPECT_EQ(Shown(), "f a .c .d .b e");
}

TEST_F(NestedRows, GoWithTheirRow) {
  CBCGPGridRow* a = Add(_T("a"));
  Add(_T("b"));
  AddTo(AddTo(a, _T("c")), _T("d"));
  AddTo(a, _T("e"));
  EXPECT_EQ(grid->RemoveRow(1, TRUE), 1);
  EXPECT_EQ(Shown(), "a .e b");
  EXPECT_EQ(a->GetAllSubItemsCount(), 1);
  delete grid->GetRow(1);
  EXPECT_EQ(Shown(), "a b");
  AddTo(a, _T("f"));
  EXPECT_EQ(grid->RemoveRow(0, TRUE), 1);
  EXPECT_EQ(Shown(), "b");
  AddTo(grid->GetRow(0), _T("g"));
  grid->RemoveAll();
  EXPECT_EQ(grid->GetRowCount(), 0);
}

TEST_F(NestedRows, GoTogetherFromOneList) {
  CBCGPGridRow* a = Add(_T("a"));
  Add(_T("b"));
  AddTo(a, _T("c"));
  std::vector<CBCGPGridItem*> items;
  std::vector<CBCGPGridRow*> rows;
  for (const int row : {0, 1, 2}) grid->PrepareRemoveRow(row, items, rows);
  EXPECT_EQ(grid->DoRemoveRows(items, rows), 2);
  EXPECT_EQ(grid->GetRowCount(), 0);
}

TEST_F(NestedRows, CollapsedAreOutOfSight) {
  CBCGPGridRow* a = Add(_T("a"));
  Add(_T("b"));
  CBCGPGridRow* c = AddTo(a, _T("c"));
  AddTo(c, _T("d"));
  grid->SetCurSel({2, 0});
  c->Expand(FALSE);
  EXPECT_EQ(Shown(), "a .c -..d b");
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(1, 0));
  a->Expand(FALSE);
  EXPECT_EQ(Shown(), "a -.c -..d b");
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(0, 0));
  Key(VK_DOWN);
  a->Expand(TRUE);
  EXPECT_EQ(Shown(), "a .c -..d b");
  c->Expand(TRUE);
  EXPECT_EQ(Shown(), "a .c ..d b");
  AddTo(c, _T("e"));
  EXPECT_EQ(Shown(), "a .c ..d ..e b");
}

TEST_F(NestedRows, AreSortedWithinTheirRow) {
  CBCGPGridRow* b = Add(_T("b"));
  Add(_T("a"));
  CBCGPGridRow* y = AddTo(b, _T("y"));
  AddTo(b, _T("x"));
  AddTo(y, _T("2"));
  AddTo(y, _T("1"));
  grid->Sort(0);
  EXPECT_EQ(Shown(), "a b .x .y ..1 ..2");
  grid->Sort(0, FALSE);
  EXPECT_EQ(Shown(), "b .y ..2 ..1 .x a");
  EXPECT_EQ(b->FindSubItemById(1), y);
}

TEST_F(NestedRows, WhatCannotBeTakenStaysTheCallers) {
  CBCGPGridRow* a = Add(_T("a"));
  CBCGPGridRow* b = AddTo(a, _T("b"));
  EXPECT_EQ(a->AddSubItem(nullptr), -1);
  EXPECT_EQ(a->AddSubItem(a), -1);
  EXPECT_EQ(a->AddSubItem(b), -1);
  EXPECT_EQ(grid->AddRow(b, TRUE), -1);
  CBCGPGridRow own;
  EXPECT_EQ(own.AddSubItem(&own), -1);
  auto* inner = new CBCGPGridRow;
  own.AddSubItem(inner);
  EXPECT_EQ(inner->AddSubItem(&own), -1);
  EXPECT_EQ(a->AddSubItem(inner), -1);
  EXPECT_EQ(grid->AddRow(inner, TRUE), -1);
  EXPECT_EQ(Shown(), "a .b");
}

TEST_F(NestedRows, LevelsHaveALimit) {
  CBCGPGridRow* row = Add(_T("a"));
  for (int level = 1; level < lorv::kMaxRowLevels; ++level) row = AddTo(row, _T("b"));
  EXPECT_EQ(row->GetLevel(), lorv::kMaxRowLevels - 1);
  const std::unique_ptr<CBCGPGridRow> more(Fresh(_T("c")));
  EXPECT_EQ(row->AddSubItem(more.get()), -1);
  const std::unique_ptr<CBCGPGridRow> deep(Fresh(_T("d")));
  deep->AddSubItem(Fresh(_T("e")));
  EXPECT_EQ(row->GetParentRow()->AddSubItem(deep.get()), -1);
  EXPECT_EQ(row->GetParentRow()->GetParentRow()->AddSubItem(Fresh(_T("f"))), 1);
}

TEST_F(NestedRows, AnEditorOfANestedRowClosesWithTheWhole) {
  CBCGPGridRow* a = Add(_T("a"));
  AddTo(a, _T("b"));
  Choose(1, 0);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(grid->RemoveRow(0, TRUE), 1);
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(grid->GetRowCount(), 0);
}

// Rows come, go, collapse and move; a plain list of levels and names is what they must be.
TEST_F(NestedRows, RandomStepsFollowAPlainModel) {
  struct Plain {
    int level;
    std::string name;
  };
  std::vector<Plain> model;
  std::mt19937 random(3);
  const auto end_of = [&](std::size_t at) {
    std::size_t end = at + 1;
    while (end < model.size() && model[end].level > model[at].level) ++end;
    return end;
  };
  for (int step = 0; step < 1500; ++step) {
    CString name;
    name.Format(_T("n%d"), step);
    const std::size_t at = model.empty() ? 0 : random() % model.size();
    const auto what = model.empty() ? 0 : random() % 6;
    if (what == 0) {
      Add(name);
      model.push_back({0, name.ToUtf8()});
    } else if (what <= 2) {
      const std::size_t end = end_of(at);
      if (model[at].level >= 8) continue;
      AddTo(grid->GetRow(static_cast<int>(at)), name);
      model.insert(model.begin() + static_cast<long>(end), {model[at].level + 1, name.ToUtf8()});
    } else if (what == 3) {
      grid->InsertRowBefore(static_cast<int>(at), Fresh(name), FALSE);
      model.insert(model.begin() + static_cast<long>(at), {model[at].level, name.ToUtf8()});
    } else if (what == 4) {
      const int level = model[at].level;
      grid->InsertRowAfter(static_cast<int>(at), Fresh(name), FALSE);
      model.insert(model.begin() + static_cast<long>(end_of(at)), {level, name.ToUtf8()});
    } else if (model.size() > 30 || random() % 2 == 0) {
      ASSERT_EQ(grid->RemoveRow(static_cast<int>(at), FALSE), 1);
      model.erase(model.begin() + static_cast<long>(at), model.begin() + static_cast<long>(end_of(at)));
    }
    std::string wanted;
    for (const Plain& row : model)
      wanted +=
          (wanted.empty() ? "" : " ") + std::string(static_cast<std::size_t>(row.level), '.') + row.name;
    ASSERT_EQ(Shown(), wanted) << step;
  }
}
