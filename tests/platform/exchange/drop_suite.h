#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "framework/windows/drag_drop.h"
#include "tests/support/print.h"

// The same tests of what is dropped on windows, for every kind of desktop: each instantiates them with what
// makes its own desktop and drags something in.
namespace lorv_test {

using lorv::test::Utf8;

// Something dragged over one window, from outside.
class DragUser {
 public:
  DragUser() = default;
  DragUser(const DragUser&) = delete;
  DragUser& operator=(const DragUser&) = delete;
  virtual ~DragUser() = default;
  // The mouse comes to that point of the window's client area; what a drop there would do.
  virtual DROPEFFECT Move(HWND window, POINT client, DWORD keys) = 0;
  virtual void Leave(HWND window) = 0;
  // What was done.
  virtual DROPEFFECT Drop(HWND window, POINT client, DWORD keys) = 0;
};

// Takes texts by copying or moving, on its left half only.
class NotedTarget : public COleDropTarget {
 public:
  std::vector<std::string> notes;
  BOOL takes = TRUE;
  std::function<void()> on_over;

 protected:
  DROPEFFECT OnDragEnter(CWnd* window, COleDataObject* data, DWORD keys, CPoint at) override {
    notes.push_back("enter " + Place(at));
    return COleDropTarget::OnDragEnter(window, data, keys, at);
  }
  DROPEFFECT OnDragOver(CWnd* /*window*/, COleDataObject* data, DWORD keys, CPoint at) override {
    if (on_over) on_over();
    if (data->HasText() == 0 || at.x >= 50) return DROPEFFECT_NONE;
    return lorv::UsualDropEffect(keys, GetAllowedEffects() & (DROPEFFECT_COPY | DROPEFFECT_MOVE));
  }
  void OnDragLeave(CWnd* /*window*/) override { notes.push_back("leave"); }
  BOOL OnDrop(CWnd* window, COleDataObject* data, DROPEFFECT effect, CPoint at) override {
    notes.push_back("drop " + Place(at) + " by " + std::to_string(effect) + ": " + Utf8(data->GetText()));
    EXPECT_EQ(window->m_hWnd, GetWindowHandle());
    return takes;
  }

 private:
  static std::string Place(CPoint at) { return std::to_string(at.x) + "," + std::to_string(at.y); }
};

using Notes = std::vector<std::string>;

template <class Maker>
class DropIn : public testing::Test {
 protected:
  DropIn() : desktop_(Maker::Make()), scope_(*desktop_) {
    frame_.Create(nullptr, _T("frame"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(100, 100, 600, 500), nullptr,
                  0);
    sheet_.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(20, 20, 120, 100), &frame_, 7);
    for (int i = 0; i < 100 && desktop_->Pump(false); ++i) {
    }
  }
  std::unique_ptr<DragUser> Bring(const lorv::TransferData& data, DROPEFFECT allowed) {
    return Maker::Bring(*desktop_, data, allowed);
  }
  std::unique_ptr<DragUser> BringText(LPCTSTR text, DROPEFFECT allowed = DROPEFFECT_COPY) {
    lorv::TransferData data;
    data.SetText(text);
    return Bring(data, allowed);
  }

  std::unique_ptr<lorv::Desktop> desktop_;
  lorv::ScopedDesktop scope_;
  CWnd frame_;
  CWnd sheet_;
  NotedTarget target_;
};

TYPED_TEST_SUITE_P(DropIn);

TYPED_TEST_P(DropIn, TheReceiverHearsOfItInOrder) {
  ASSERT_TRUE(this->target_.Register(&this->sheet_));
  const auto user = this->BringText(_T("C30"));
  EXPECT_EQ(user->Move(this->sheet_.m_hWnd, {10, 11}, 0), static_cast<DROPEFFECT>(DROPEFFECT_COPY));
  EXPECT_EQ(user->Move(this->sheet_.m_hWnd, {60, 11}, 0), static_cast<DROPEFFECT>(DROPEFFECT_NONE));
  EXPECT_EQ(user->Move(this->sheet_.m_hWnd, {20, 21}, 0), static_cast<DROPEFFECT>(DROPEFFECT_COPY));
  EXPECT_EQ(user->Drop(this->sheet_.m_hWnd, {20, 21}, 0), static_cast<DROPEFFECT>(DROPEFFECT_COPY));
  EXPECT_EQ(this->target_.notes, (Notes{"enter 10,11", "drop 20,21 by 1: C30"}));
}

TYPED_TEST_P(DropIn, ADragGoesOnWithoutADrop) {
  ASSERT_TRUE(this->target_.Register(&this->sheet_));
  const auto user = this->BringText(_T("C30"));
  user->Move(this->sheet_.m_hWnd, {10, 11}, 0);
  user->Leave(this->sheet_.m_hWnd);
  EXPECT_EQ(this->target_.notes, (Notes{"enter 10,11", "leave"}));
}

TYPED_TEST_P(DropIn, KeysChooseAmongWhatIsAllowed) {
  ASSERT_TRUE(this->target_.Register(&this->sheet_));
  const auto both = this->BringText(_T("a"), DROPEFFECT_COPY | DROPEFFECT_MOVE);
  EXPECT_EQ(both->Move(this->sheet_.m_hWnd, {10, 11}, 0), static_cast<DROPEFFECT>(DROPEFFECT_MOVE));
  EXPECT_EQ(both->Move(this->sheet_.m_hWnd, {10, 11}, MK_CONTROL), static_cast<DROPEFFECT>(DROPEFFECT_COPY));
  EXPECT_EQ(both->Move(this->sheet_.m_hWnd, {10, 11}, MK_SHIFT), static_cast<DROPEFFECT>(DROPEFFECT_MOVE));
  EXPECT_EQ(both->Drop(this->sheet_.m_hWnd, {10, 11}, MK_SHIFT), static_cast<DROPEFFECT>(DROPEFFECT_MOVE));
}

TYPED_TEST_P(DropIn, WhatTheSourceForbidsIsNone) {
  ASSERT_TRUE(this->target_.Register(&this->sheet_));
  const auto user = this->BringText(_T("a"), DROPEFFECT_COPY);
  EXPECT_EQ(user->Move(this->sheet_.m_hWnd, {10, 11}, MK_SHIFT), static_cast<DROPEFFECT>(DROPEFFECT_NONE));
}

TYPED_TEST_P(DropIn, ADropThatIsRefusedDidNothing) {
  ASSERT_TRUE(this->target_.Register(&this->sheet_));
  this->target_.takes = FALSE;
  const auto user = this->BringText(_T("a"));
  user->Move(this->sheet_.m_hWnd, {10, 11}, 0);
  EXPECT_EQ(user->Drop(this->sheet_.m_hWnd, {10, 11}, 0), static_cast<DROPEFFECT>(DROPEFFECT_NONE));
  EXPECT_EQ(this->target_.notes.size(), 2U);
}

TYPED_TEST_P(DropIn, ContentComesInAllItsFormats) {
  class Reading : public COleDropTarget {
   public:
    CString text;
    std::vector<BYTE> cells, html;
    BOOL has_other = TRUE;

   protected:
    DROPEFFECT OnDragOver(CWnd* /*window*/, COleDataObject* /*data*/, DWORD /*keys*/,
                          CPoint /*at*/) override {
      return DROPEFFECT_COPY;
    }
    BOOL OnDrop(CWnd* /*window*/, COleDataObject* data, DROPEFFECT /*effect*/, CPoint /*at*/) override {
      text = data->GetText();
      cells = data->GetData(_T("application/x-lorv-cells"));
      html = data->GetData(_T("text/html"));
      has_other = data->IsDataAvailable(_T("application/x-lorv-none"));
      return TRUE;
    }
  };
  Reading reading;
  ASSERT_TRUE(reading.Register(&this->sheet_));
  lorv::TransferData data;
  data.SetText(_T("梁\t2\r\n柱\t3"));
  data.SetHtml("<b>x</b>");
  data.Set(_T("application/x-lorv-cells"), {1, 0, 255, 2});
  const auto user = this->Bring(data, DROPEFFECT_COPY);
  user->Move(this->sheet_.m_hWnd, {10, 11}, 0);
  user->Drop(this->sheet_.m_hWnd, {10, 11}, 0);
  EXPECT_EQ(reading.text, CString(_T("梁\t2\r\n柱\t3")));
  EXPECT_EQ(reading.cells, (std::vector<BYTE>{1, 0, 255, 2}));
  EXPECT_EQ(std::string(reading.html.begin(), reading.html.end()), "<b>x</b>");
  EXPECT_FALSE(reading.has_other);
}

TYPED_TEST_P(DropIn, ADisabledWindowTakesNothing) {
  ASSERT_TRUE(this->target_.Register(&this->sheet_));
  this->sheet_.EnableWindow(FALSE);
  const auto user = this->BringText(_T("a"));
  EXPECT_EQ(user->Move(this->sheet_.m_hWnd, {10, 11}, 0), static_cast<DROPEFFECT>(DROPEFFECT_NONE));
  EXPECT_TRUE(this->target_.notes.empty());
}

TYPED_TEST_P(DropIn, ATargetMayTakeItselfOutInTheMiddle) {
  ASSERT_TRUE(this->target_.Register(&this->sheet_));
  const auto user = this->BringText(_T("a"));
  user->Move(this->sheet_.m_hWnd, {10, 11}, 0);
  this->target_.on_over = [this] { this->target_.Revoke(); };
  user->Move(this->sheet_.m_hWnd, {20, 11}, 0);
  EXPECT_EQ(user->Drop(this->sheet_.m_hWnd, {20, 11}, 0), static_cast<DROPEFFECT>(DROPEFFECT_NONE));
  EXPECT_EQ(this->target_.notes, (Notes{"enter 10,11"}));
  EXPECT_EQ(this->target_.GetWindowHandle(), nullptr);
}

// What it promised before counts no more; the next question is answered as ever.
TYPED_TEST_P(DropIn, ATargetThatThrowsTakesNothing) {
  ASSERT_TRUE(this->target_.Register(&this->sheet_));
  const auto user = this->BringText(_T("C30"));
  const HWND sheet = this->sheet_.m_hWnd;
  EXPECT_EQ(user->Move(sheet, {10, 11}, 0), static_cast<DROPEFFECT>(DROPEFFECT_COPY));
  this->target_.on_over = [] { throw std::runtime_error("over"); };
  for (const bool drops : {false, true}) {
    DROPEFFECT done = DROPEFFECT_NONE;
    // The exception ends at the system's edge, or comes to who calls where there is no system.
    try {
      done = drops ? user->Drop(sheet, {12, 11}, 0) : user->Move(sheet, {12, 11}, 0);
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), "over");
    }
    EXPECT_EQ(done, static_cast<DROPEFFECT>(DROPEFFECT_NONE));
  }
  EXPECT_EQ(this->target_.notes, (Notes{"enter 10,11"}));
  this->target_.on_over = nullptr;
  const auto next = this->BringText(_T("C40"));
  next->Move(sheet, {10, 11}, 0);
  EXPECT_EQ(next->Drop(sheet, {10, 11}, 0), static_cast<DROPEFFECT>(DROPEFFECT_COPY));
}

TYPED_TEST_P(DropIn, AWindowMayEndAsSomethingIsDraggedOverIt) {
  ASSERT_TRUE(this->target_.Register(&this->sheet_));
  const auto user = this->BringText(_T("C30"));
  user->Move(this->sheet_.m_hWnd, {10, 11}, 0);
  this->target_.on_over = [this] { this->sheet_.DestroyWindow(); };
  user->Move(this->sheet_.m_hWnd, {20, 11}, 0);
  EXPECT_EQ(this->sheet_.m_hWnd, nullptr);
  EXPECT_EQ(this->target_.GetWindowHandle(), nullptr);
  EXPECT_EQ(this->target_.notes, (Notes{"enter 10,11"}));
}

TYPED_TEST_P(DropIn, AWindowHasOneTargetAndATargetOneWindow) {
  NotedTarget other;
  EXPECT_FALSE(other.Register(nullptr));
  ASSERT_TRUE(this->target_.Register(&this->sheet_));
  EXPECT_FALSE(other.Register(&this->sheet_));
  EXPECT_FALSE(this->target_.Register(&this->frame_));
  this->target_.Revoke();
  this->target_.Revoke();
  EXPECT_TRUE(other.Register(&this->sheet_));
  this->sheet_.DestroyWindow();
  EXPECT_EQ(other.GetWindowHandle(), nullptr) << "the window is gone";
  EXPECT_TRUE(other.Register(&this->frame_));
}

REGISTER_TYPED_TEST_SUITE_P(DropIn, TheReceiverHearsOfItInOrder, ADragGoesOnWithoutADrop,
                            KeysChooseAmongWhatIsAllowed, WhatTheSourceForbidsIsNone,
                            ADropThatIsRefusedDidNothing, ContentComesInAllItsFormats,
                            ADisabledWindowTakesNothing, ATargetMayTakeItselfOutInTheMiddle,
                            ATargetThatThrowsTakesNothing, AWindowMayEndAsSomethingIsDraggedOverIt,
                            AWindowHasOneTargetAndATargetOneWindow);

}  // namespace lorv_test
