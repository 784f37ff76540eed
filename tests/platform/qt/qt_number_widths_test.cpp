#include "platform/qt/drawing/qt_number_widths.h"

#include <QFontMetrics>
#include <random>

#include "platform/qt/desktop/qt_text.h"
#include "tests/platform/qt/qt_fixture.h"
#include "tests/platform/qt/some_faces.h"

namespace lorv::test {
namespace {

std::vector<QFont> MeasuredFonts() {
  return SomeFaces({9, 12, 17, 40}, 17, 40);
}

int Shaped(const QFont& font, const CString& text) {
  return QFontMetrics(font).horizontalAdvance(lorv::ToQt(text.View()));
}

using QtNumberWidthsTest = QtTest;

TEST_F(QtNumberWidthsTest, AreThoseOfTheWholeText) {
  std::mt19937 random(1);
  for (const QFont& font : MeasuredFonts()) {
    QtNumberWidths widths(font);
    for (int round = 0; round < 400; ++round) {
      // Mostly numbers, now and then any sign there is.
      const bool any = round % 4 == 0;
      CString text;
      for (std::size_t i = random() % 16; i > 0; --i)
        text += any ? static_cast<TCHAR>(0x20 + random() % 0x21)
                    : static_cast<TCHAR>("0123456789.,-+ ("[random() % 16]);
      const auto width = widths.Width(text.View());
      ASSERT_TRUE(width.has_value());
      ASSERT_EQ(*width, Shaped(font, text)) << text.ToUtf8() << " in " << font.toString().toStdString();
    }
  }
}

TEST_F(QtNumberWidthsTest, EveryPairIsKnown) {
  for (const QFont& font : MeasuredFonts()) {
    QtNumberWidths widths(font);
    for (int first = 0x20; first <= 0x40; ++first) {
      for (int second = 0x20; second <= 0x40; ++second) {
        CString text;
        text += static_cast<TCHAR>(first);
        text += static_cast<TCHAR>(second);
        // Twice: measured, and remembered.
        for (int time = 0; time < 2; ++time) ASSERT_EQ(widths.Width(text.View()), Shaped(font, text));
      }
    }
  }
}

TEST_F(QtNumberWidthsTest, OtherCharactersAreNotAddedUp) {
  QtNumberWidths widths(MeasuredFonts().front());
  for (const LPCTSTR text : {_T("A"), _T("1a"), _T("梁1"), _T("1\t2"), _T("1~"), _T("1\x80")})
    EXPECT_FALSE(widths.Width(CString(text).View()).has_value()) << CString(text).ToUtf8();
  EXPECT_EQ(widths.Width(lorv::TextView()), 0);
  EXPECT_TRUE(widths.Width(CString(_T('1'), 1024).View()).has_value());
  EXPECT_FALSE(widths.Width(CString(_T('1'), 1025).View()).has_value());
}

// Names are shaped until many began alike, and added up from then on: both must give the same, whatever the
// beginning ends with, for digits in it, and after the beginnings were forgotten.
TEST_F(QtNumberWidthsTest, NamesThatEndInDigitsAreThoseOfTheWholeText) {
  const LPCTSTR beginnings[] = {_T("梁K"), _T("KL"), _T("f"),  _T("1F-墙"), _T("AV"), _T("\u03b1"),
                                _T("柱 "), _T("T."), _T("2x"), _T("(3"),    _T("Ж-"), _T("《"),
                                _T("K/"),  _T("１"), _T("fi"), _T("-A-")};
  std::mt19937 random(3);
  for (const QFont& font : MeasuredFonts()) {
    QtNumberWidths widths(font);
    int added_up = 0;
    for (int round = 0; round < 3000; ++round) {
      CString text(beginnings[random() % std::size(beginnings)]);
      for (std::size_t i = 1 + random() % 9; i > 0; --i) text += static_cast<TCHAR>('0' + random() % 10);
      const auto width = widths.Width(text.View());
      if (!width) continue;
      ++added_up;
      ASSERT_EQ(*width, Shaped(font, text)) << text.ToUtf8() << " in " << font.toString().toStdString();
    }
    EXPECT_GT(added_up, 2000);
    EXPECT_LT(added_up, 3000) << "the first ones of a beginning are shaped";
  }
}

TEST_F(QtNumberWidthsTest, BeginningsAreForgottenWhenThereAreTooMany) {
  QtNumberWidths widths(MeasuredFonts().front());
  const auto is_known = [&](const CString& name) {
    return widths.Width((name + _T("7")).View()).has_value();
  };
  for (int i = 0; i < 100; ++i) is_known(_T("KL"));
  EXPECT_TRUE(is_known(_T("KL")));
  for (std::size_t i = 0; i < QtNumberWidths::kMostNames; ++i) {
    CString name;
    name.Format(_T("%dW"), static_cast<int>(i));
    EXPECT_FALSE(is_known(name));
  }
  EXPECT_FALSE(is_known(_T("KL")));
}

// Scripts that join, combine or run from right to left are the font's, however often they come.
TEST_F(QtNumberWidthsTest, OtherScriptsAreNeverAddedUp) {
  QtNumberWidths widths(MeasuredFonts().front());
  for (const LPCTSTR text : {_T("\u05d0"), _T("\u0633"), _T("e\u0301"), _T("\u0e01"), _T("\u0915"), _T("a\t"),
                             _T("\U00020000"), _T("\u200f"), _T("\u2044")}) {
    for (int i = 0; i < 100; ++i)
      ASSERT_FALSE(widths.Width((CString(text) + _T("12")).View()).has_value()) << CString(text).ToUtf8();
  }
  for (int i = 0; i < 100; ++i) {
    ASSERT_FALSE(widths.Width((CString(_T('K'), 65) + _T("12")).View()).has_value());
    ASSERT_FALSE(widths.Width((_T("K") + CString(_T('1'), 1024)).View()).has_value());
    ASSERT_EQ(widths.Width((CString(_T('K'), 64) + _T("12")).View()).has_value(), i >= 31);
  }
}

// What a surface says of a text, however it comes by it.
TEST_F(QtNumberWidthsTest, SurfacesMeasureNumbersAsTheToolkitDoes) {
  const auto canvas = lorv::DesktopInForce().MakeCanvas({10, 10});
  LOGFONT description = {};
  description.lfHeight = -13;
  canvas->SetFont(description);
  std::mt19937 random(2);
  for (int round = 0; round < 200; ++round) {
    CString text;
    text.Format(_T("%u.%03u"), random() % 100000, random() % 1000);
    CString shaped = text + _T("m");
    // Drawn first or measured first, it has one width.
    if (round % 2 == 0) canvas->Text({0, 0}, text.View(), RGB(0, 0, 0));
    // A letter behind it sends the whole text the other way.
    const LONG letter = canvas->Extent(CString(_T("m")).View()).cx;
    EXPECT_NEAR(canvas->Extent(text.View()).cx, canvas->Extent(shaped.View()).cx - letter, 1)
        << text.ToUtf8();
  }
}

}  // namespace
}  // namespace lorv::test
