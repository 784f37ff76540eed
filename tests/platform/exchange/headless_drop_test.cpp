#include "framework/ports/drop_port.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "tests/platform/exchange/drop_suite.h"
#include "tests/support/headless_desk.h"

namespace lorv_test {
namespace {

using lorv::UsualDropEffect;

class PlayedDrag : public DragUser {
 public:
  PlayedDrag(lorv::HeadlessDesktop& desktop, const lorv::TransferData& data, DROPEFFECT allowed)
      : desktop_(desktop) {
    desktop_.DragFromOutside(data, allowed);
  }
  DROPEFFECT Move(HWND window, POINT client, DWORD keys) override {
    Hold(keys);
    const POINT origin = desktop_.Find(window)->ClientOrigin();
    desktop_.MoveMouse({origin.x + client.x, origin.y + client.y});
    desktop_.RunUntilIdle();
    return desktop_.DragEffect();
  }
  void Leave(HWND /*window*/) override {
    desktop_.MoveMouse({5, 5});
    desktop_.RunUntilIdle();
  }
  DROPEFFECT Drop(HWND window, POINT client, DWORD keys) override {
    Move(window, client, keys);
    desktop_.MouseUp();
    desktop_.RunUntilIdle();
    return desktop_.DragResult();
  }

 private:
  void Hold(DWORD keys) {
    const std::pair<DWORD, int> held[] = {{MK_CONTROL, VK_CONTROL}, {MK_SHIFT, VK_SHIFT}};
    for (const auto& [bit, key] : held) (keys & bit) != 0 ? desktop_.KeyDown(key) : desktop_.KeyUp(key);
  }
  lorv::HeadlessDesktop& desktop_;
};

struct InMemoryDrops {
  static std::unique_ptr<lorv::Desktop> Make() { return std::make_unique<lorv::HeadlessDesktop>(); }
  static std::unique_ptr<DragUser> Bring(lorv::Desktop& desktop, const lorv::TransferData& data,
                                         DROPEFFECT allowed) {
    return std::make_unique<PlayedDrag>(dynamic_cast<lorv::HeadlessDesktop&>(desktop), data, allowed);
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Headless, DropIn, InMemoryDrops);

// A drag within the program: the mouse is moved while DoDragDrop waits.
class DragOut : public Desk {
 protected:
  DragOut() {
    sheet.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(20, 20, 120, 100), &top, 7);
    source.SetText(_T("C30"));
    EXPECT_TRUE(target.Register(&sheet));
  }
  CWnd sheet;
  NotedTarget target;
  COleDataSource source;
};

TEST_F(DragOut, EndsWithTheButtonAndReportsWhatWasDone) {
  top.SetCapture();
  desktop.MoveMouse(On(sheet, 10, 11));
  desktop.MouseUp();
  EXPECT_EQ(source.DoDragDrop(DROPEFFECT_COPY | DROPEFFECT_MOVE), static_cast<DROPEFFECT>(DROPEFFECT_MOVE));
  EXPECT_EQ(target.notes, (Notes{"enter 10,11", "drop 10,11 by 2: C30"}));
  EXPECT_EQ(CWnd::GetCapture(), nullptr);
  EXPECT_EQ(desktop.KeyState(VK_LBUTTON), 0);
  EXPECT_FALSE(desktop.Dragging());
}

TEST_F(DragOut, EscapeGivesItUp) {
  desktop.MoveMouse(On(sheet, 10, 11));
  desktop.KeyDown(VK_ESCAPE);
  EXPECT_EQ(source.DoDragDrop(), static_cast<DROPEFFECT>(DROPEFFECT_NONE));
  EXPECT_EQ(target.notes, (Notes{"enter 10,11", "leave"}));
}

TEST_F(DragOut, WithNobodyAtTheMouseItIsGivenUp) {
  EXPECT_EQ(source.DoDragDrop(), static_cast<DROPEFFECT>(DROPEFFECT_NONE));
  EXPECT_TRUE(target.notes.empty());
}

TEST_F(DragOut, WhatAReceiverThrowsComesToTheSource) {
  target.on_over = [] { throw std::runtime_error("over"); };
  desktop.MoveMouse(On(sheet, 10, 11));
  EXPECT_THROW(source.DoDragDrop(), std::runtime_error);
  EXPECT_FALSE(desktop.Dragging());
  target.on_over = nullptr;
  desktop.MoveMouse(On(sheet, 12, 11));
  desktop.MouseUp();
  EXPECT_EQ(source.DoDragDrop(DROPEFFECT_COPY), static_cast<DROPEFFECT>(DROPEFFECT_COPY))
      << "the next is as ever";
}

TEST_F(DragOut, AWindowThatGoesInTheMiddleHearsNoMore) {
  target.on_over = [this] { sheet.DestroyWindow(); };
  desktop.MoveMouse(On(sheet, 10, 11));
  desktop.MoveMouse(On(top, 30, 30));
  desktop.MouseUp();
  EXPECT_EQ(source.DoDragDrop(), static_cast<DROPEFFECT>(DROPEFFECT_NONE));
  EXPECT_EQ(target.notes, (Notes{"enter 10,11"}));
}

TEST_F(DragOut, ALabelWithinDoesNotKeepTheDropFromTheWindow) {
  CStatic label;
  label.Create(_T("x"), WS_CHILD | WS_VISIBLE, CRect(0, 0, 40, 40), &sheet, 9);
  desktop.MoveMouse(On(label, 3, 4));
  desktop.MouseUp();
  EXPECT_EQ(source.DoDragDrop(DROPEFFECT_COPY), static_cast<DROPEFFECT>(DROPEFFECT_COPY));
  EXPECT_EQ(target.notes, (Notes{"enter 3,4", "drop 3,4 by 1: C30"}));
}

TEST_F(DragOut, FromOneReceiverToTheNext) {
  CWnd other;
  NotedTarget second;
  other.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(150, 20, 250, 100), &top, 8);
  second.Register(&other);
  desktop.MoveMouse(On(sheet, 10, 11));
  desktop.MoveMouse(On(other, 20, 21));
  desktop.MouseUp();
  EXPECT_EQ(source.DoDragDrop(DROPEFFECT_COPY), static_cast<DROPEFFECT>(DROPEFFECT_COPY));
  EXPECT_EQ(target.notes, (Notes{"enter 10,11", "leave"}));
  EXPECT_EQ(second.notes, (Notes{"enter 20,21", "drop 20,21 by 1: C30"}));
}

TEST_F(DragOut, ADropWhereNothingWouldBeDoneOnlyLeaves) {
  desktop.MoveMouse(On(sheet, 80, 11));
  desktop.MouseUp();
  EXPECT_EQ(source.DoDragDrop(), static_cast<DROPEFFECT>(DROPEFFECT_NONE));
  EXPECT_EQ(target.notes, (Notes{"enter 80,11", "leave"}));
}

TEST_F(DragOut, TheSourceGoesToTheClipboardAsWell) {
  source.SetData(_T("application/x-lorv-cells"), {7});
  EXPECT_TRUE(source.SetClipboard());
  EXPECT_EQ(desktop.ClipboardText(), CString(_T("C30")));
  EXPECT_EQ(desktop.ClipboardBytes(_T("application/x-lorv-cells")), std::vector<BYTE>{7});
  source.Empty();
  EXPECT_TRUE(source.SetClipboard());
  EXPECT_FALSE(desktop.HasClipboardText());
}

TEST(UsualDropEffect, KeysAskAndTheSourceAllows) {
  constexpr DROPEFFECT kAll = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK;
  struct Row {
    DWORD keys;
    DROPEFFECT allowed, effect;
  };
  const Row rows[] = {{0, kAll, DROPEFFECT_MOVE},
                      {0, DROPEFFECT_COPY | DROPEFFECT_LINK, DROPEFFECT_COPY},
                      {0, DROPEFFECT_LINK, DROPEFFECT_LINK},
                      {0, DROPEFFECT_NONE, DROPEFFECT_NONE},
                      {MK_CONTROL, kAll, DROPEFFECT_COPY},
                      {MK_SHIFT, kAll, DROPEFFECT_MOVE},
                      {MK_CONTROL | MK_SHIFT, kAll, DROPEFFECT_LINK},
                      {MK_CONTROL, DROPEFFECT_MOVE, DROPEFFECT_NONE},
                      {MK_LBUTTON, DROPEFFECT_COPY, DROPEFFECT_COPY}};
  for (const Row& row : rows)
    EXPECT_EQ(UsualDropEffect(row.keys, row.allowed), row.effect) << row.keys << " of " << row.allowed;
}

}  // namespace
}  // namespace lorv_test
