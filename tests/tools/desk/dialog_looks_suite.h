#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "framework/drawing/device_context.h"
#include "framework/windows/dialog.h"
#include "tests/support/print.h"
#include "tools/lorv-desk/sample_dialogs.h"

// What every desktop owes to the eyes: each dialog has its size and caption, and no text in it is cut off.
// A desktop joins by a type with Make() and kHasPictures, and INSTANTIATE_TYPED_TEST_SUITE_P.
namespace lorv::test {

template <class Source>
class DialogLooks : public testing::Test {
 protected:
  DialogLooks() : desktop_(Source::Make()), scope_(*desktop_) {}

  void Settle() const {
    while (desktop_->Pump(false)) {
    }
  }
  // Opens each dialog in turn, without waiting for an answer.
  template <class Look>
  void ForEach(Look look) {
    for (const tool::SampleDialog& sample : tool::SampleDialogs()) {
      SCOPED_TRACE(sample.name);
      const auto dialog = sample.make();
      ASSERT_NE(dialog->Create(*sample.form), 0);
      dialog->ShowWindow(SW_SHOW);
      Settle();
      look(*dialog, *sample.form);
      dialog->DestroyWindow();
      Settle();
    }
  }

  // The room that a text takes in the control's font: in one line, or broken where the width ends.
  static CSize Extent(WindowPeer& control, const CString& text, UINT flags, int width) {
    CDC dc(std::shared_ptr<Canvas>(control.ClientCanvas()));
    CFont font(control.Font());
    dc.SelectObject(&font);
    CRect room(0, 0, width, 0);
    dc.DrawText(text, &room, DT_CALCRECT | flags);
    return room.Size();
  }
  static LRESULT Ask(HWND control, UINT message, WPARAM w = 0, LPARAM l = 0) {
    return DesktopInForce().Send(control, message, w, l);
  }

  static void ExpectWhole(HWND control) {
    const auto peer = PeerOf(control);
    SCOPED_TRACE("control " + std::to_string(peer->Id()) + " \"" + Utf8(peer->Text()) + "\"");
    const CSize room(CRect(peer->ClientRect()).Size());
    switch (peer->Kind()) {
      case WindowKind::Button:
        return ExpectButtonWhole(*peer, room);
      case WindowKind::Static:
        return ExpectLabelWhole(*peer, room);
      case WindowKind::Edit:
        return ExpectEditWhole(control, *peer, room);
      case WindowKind::List:
        return ExpectListWhole(control, *peer, room);
      default:
        FAIL() << "a kind of control that is not looked at";
    }
  }

 private:
  static void ExpectButtonWhole(WindowPeer& peer, CSize room) {
    constexpr int kBorder = 4;  // at each side
    const CSize text = Extent(peer, peer.Text(), DT_SINGLELINE, room.cx);
    EXPECT_LE(text.cx + 2 * kBorder, room.cx);
    EXPECT_LE(text.cy + 2, room.cy);
  }
  static void ExpectLabelWhole(WindowPeer& peer, CSize room) {
    const CSize text = Extent(peer, peer.Text(), DT_WORDBREAK, room.cx);
    EXPECT_LE(text.cx, room.cx);
    EXPECT_LE(text.cy, room.cy);
  }
  // The edit counts its lines as it has broken them.
  static void ExpectEditWhole(HWND control, WindowPeer& peer, CSize room) {
    const LONG line = Extent(peer, _T("墙g"), DT_SINGLELINE, room.cx).cy;
    EXPECT_LE(static_cast<LONG>(Ask(control, EM_GETLINECOUNT)) * line, room.cy);
    EXPECT_EQ(Ask(control, EM_GETFIRSTVISIBLELINE), 0);
    EXPECT_FALSE(peer.Text().IsEmpty());
  }
  static void ExpectListWhole(HWND control, WindowPeer& peer, CSize room) {
    const auto count = static_cast<WPARAM>(Ask(control, LB_GETCOUNT));
    EXPECT_GT(count, 0U);
    LONG height = 0;
    for (WPARAM i = 0; i < count; ++i) {
      std::vector<TCHAR> text(static_cast<std::size_t>(Ask(control, LB_GETTEXTLEN, i)) + 1);
      Ask(control, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text.data()));
      const CSize item = Extent(peer, text.data(), DT_SINGLELINE, room.cx);
      EXPECT_LE(item.cx + 4, room.cx) << Utf8(CString(static_cast<LPCTSTR>(text.data())));
      height += item.cy;
    }
    EXPECT_LE(height, room.cy);
  }

  std::unique_ptr<Desktop> desktop_;
  ScopedDesktop scope_;
};

// How many colours a part of a picture has.
inline std::size_t ColoursIn(const std::vector<DWORD>& picture, LONG width, const CRect& part) {
  std::set<DWORD> colours;
  for (LONG y = part.top; y < part.bottom; ++y) {
    const auto row = picture.begin() + y * width;
    colours.insert(row + part.left, row + part.right);
  }
  return colours.size();
}

TYPED_TEST_SUITE_P(DialogLooks);

TYPED_TEST_P(DialogLooks, HaveTheirSizeAndCaption) {
  this->ForEach([](CDialog& dialog, const DialogTemplate& form) {
    CRect wanted(0, 0, form.width, form.height);
    dialog.MapDialogRect(wanted);
    CRect client;
    dialog.GetClientRect(client);
    EXPECT_EQ(client, wanted);
    // Some 400 pixels wide at 96 dots an inch, however the fonts measure.
    EXPECT_GT(client.Width(), 300);
    EXPECT_LT(client.Width(), 700);
    CString caption;
    dialog.GetWindowText(caption);
    EXPECT_EQ(Utf8(caption), Utf8(CString(form.caption)));
  });
}

TYPED_TEST_P(DialogLooks, ControlsStandInTheirPlaces) {
  this->ForEach([](CDialog& dialog, const DialogTemplate& form) {
    const auto controls = PeerOf(dialog.m_hWnd)->Children();
    ASSERT_EQ(controls.size(), form.items.size());
    for (std::size_t i = 0; i < controls.size(); ++i) {
      const DialogItem& item = form.items[i];
      CRect wanted(CPoint(item.x, item.y), CSize(item.width, item.height));
      dialog.MapDialogRect(wanted);
      CRect place(PeerOf(controls[i])->WindowRect());
      dialog.ScreenToClient(place);
      EXPECT_EQ(place, wanted) << item.id;
    }
  });
}

TYPED_TEST_P(DialogLooks, NoTextIsCutOff) {
  this->ForEach([](CDialog& dialog, const DialogTemplate&) {
    for (const HWND control : PeerOf(dialog.m_hWnd)->Children()) TestFixture::ExpectWhole(control);
  });
}

// The picture is that of the whole dialog, and something is written on every button.
TYPED_TEST_P(DialogLooks, PicturesShowEveryButton) {
  this->ForEach([](CDialog& dialog, const DialogTemplate&) {
    const auto peer = PeerOf(dialog.m_hWnd);
    CSize size;
    const std::vector<DWORD> picture = peer->Picture(size);
    EXPECT_EQ(!picture.empty(), TypeParam::kHasPictures);
    if (picture.empty()) return;
    // With its frame where the system draws that, else what stands in it.
    CRect around(peer->WindowRect());
    if (size != around.Size()) around = CRect(CPoint(peer->ClientOrigin()), CRect(peer->ClientRect()).Size());
    ASSERT_EQ(size, around.Size());
    ASSERT_EQ(picture.size(), static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy));
    for (const HWND control : peer->Children()) {
      if (PeerOf(control)->Kind() != WindowKind::Button) continue;
      CRect inside(PeerOf(control)->WindowRect());
      inside.OffsetRect(-around.left, -around.top);
      inside.DeflateRect(5, 5);
      EXPECT_GT(test::ColoursIn(picture, size.cx, inside), 1U) << Utf8(PeerOf(control)->Text());
    }
  });
}

REGISTER_TYPED_TEST_SUITE_P(DialogLooks, HaveTheirSizeAndCaption, ControlsStandInTheirPlaces, NoTextIsCutOff,
                            PicturesShowEveryButton);

}  // namespace lorv::test
