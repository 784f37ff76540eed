#include "platform/qt/drawing/qt_number_widths.h"

#include <QFontMetrics>
#include <random>

#include "platform/qt/desktop/qt_text.h"
#include "tests/platform/qt/qt_fixture.h"

namespace lorv::test {
namespace {

// Faces that set numbers differently: with kerning, all digits alike, bold, fractions of pixels.
std::vector<QFont> SomeFonts() {
  std::vector<QFont> fonts;
  for (const char16_t* name :
       {u"WenQuanYi Micro Hei", u"DejaVu Sans", u"DejaVu Serif", u"DejaVu Sans Mono"}) {
    for (const int size : {9, 12, 17, 40}) {
      QFont font(QString::fromUtf16(name));
      font.setPixelSize(size);
      font.setBold(size == 17);
      font.setItalic(size == 40);
      fonts.push_back(font);
      font.setHintingPreference(QFont::PreferNoHinting);
      fonts.push_back(font);
    }
  }
  return fonts;
}

int Shaped(const QFont& font, const CString& text) {
  return QFontMetrics(font).horizontalAdvance(lorv::ToQt(text.View()));
}

using QtNumberWidthsTest = QtTest;

TEST_F(QtNumberWidthsTest, AreThoseOfTheWholeText) {
  std::mt19937 random(1);
  for (const QFont& font : SomeFonts()) {
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
  for (const QFont& font : SomeFonts()) {
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
  QtNumberWidths widths(SomeFonts().front());
  for (const LPCTSTR text : {_T("A"), _T("1a"), _T("梁1"), _T("1\t2"), _T("1~"), _T("1\x80")})
    EXPECT_FALSE(widths.Width(CString(text).View()).has_value()) << CString(text).ToUtf8();
  EXPECT_EQ(widths.Width(lorv::TextView()), 0);
  EXPECT_TRUE(widths.Width(CString(_T('1'), 1024).View()).has_value());
  EXPECT_FALSE(widths.Width(CString(_T('1'), 1025).View()).has_value());
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
    // A letter behind it sends the whole text the other way.
    const LONG letter = canvas->Extent(CString(_T("m")).View()).cx;
    EXPECT_NEAR(canvas->Extent(text.View()).cx, canvas->Extent(shaped.View()).cx - letter, 1)
        << text.ToUtf8();
  }
}

}  // namespace
}  // namespace lorv::test
