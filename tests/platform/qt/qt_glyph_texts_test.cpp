#include "platform/qt/drawing/qt_glyph_texts.h"

#include <QPainter>
#include <random>

#include "framework/drawing/geometry.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_fonts.h"
#include "tests/platform/qt/qt_fixture.h"
#include "tests/platform/qt/some_faces.h"

namespace lorv::test {
namespace {

constexpr QPoint kAt(60, 90);
constexpr QSize kSize(900, 160);

std::vector<QFont> SomeFonts() {
  return SomeFaces({9, 12, 18, 24, 40}, 18, 24);
}

QImage Picture(QRgb ground) {
  QImage picture(kSize, QImage::Format_RGB32);
  picture.fill(ground);
  return picture;
}

QImage ByFont(const QFont& font, const CString& text, QRgb ink, QRgb ground) {
  QImage picture = Picture(ground);
  QPainter painter(&picture);
  painter.setFont(font);
  painter.setPen(QColor::fromRgb(ink));
  painter.drawText(kAt, ToQt(text.View()));
  return picture;
}

QImage ByGlyphs(const QtGlyphText& text, QRgb ink, QRgb ground) {
  QImage picture = Picture(ground);
  QPainter painter(&picture);
  painter.setPen(QColor::fromRgb(ink));
  if (text.beginning != nullptr)
    for (const QGlyphRun& run : *text.beginning) painter.drawGlyphRun(kAt, run);
  painter.drawGlyphRun(kAt, *text.run);
  return picture;
}

QImage ByStamps(const QtGlyphText& text, QRgb ink, QRgb ground) {
  QImage picture = Picture(ground);
  const auto line = picture.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb));
  auto* const origin = reinterpret_cast<QRgb*>(picture.bits()) + kAt.y() * line + kAt.x();
  text.stamps->Stamp(ink, ground, origin, line);
  return picture;
}

bool IsBlankBeside(const QImage& picture, const QRect& ink, QRgb ground) {
  QImage rest = picture;
  QPainter painter(&rest);
  painter.fillRect(ink, QColor::fromRgb(ground));
  painter.end();
  return rest == Picture(ground);
}

class QtGlyphTextsTest : public QtTest {
 protected:
  // True where the text was put together.
  bool Check(const QFont& font, QtGlyphTexts& texts, const CString& text) {
    const QRgb ink = colours_[random_() % 3];
    const QRgb ground = colours_[3 + random_() % 4];
    const QtGlyphText* const glyphs = texts.Of(text.View());
    if (glyphs == nullptr) return false;
    const std::string where = text.ToUtf8() + " in " + font.toString().toStdString();
    const QImage wanted = ByFont(font, text, ink, ground);
    EXPECT_EQ(ByGlyphs(*glyphs, ink, ground), wanted) << where;
    EXPECT_TRUE(IsBlankBeside(wanted, ToQt(glyphs->ink).translated(kAt), ground)) << where;
    if (glyphs->stamps != nullptr) {
      ++stamped_;
      EXPECT_EQ(ByStamps(*glyphs, ink, ground), wanted) << where;
    }
    return true;
  }
  CString Digits(std::size_t most) {
    CString text;
    for (std::size_t i = 1 + random_() % most; i > 0; --i) text += static_cast<TCHAR>('0' + random_() % 10);
    return text;
  }

  std::mt19937 random_{1};
  const QRgb colours_[7] = {qRgb(0, 0, 0),       qRgb(200, 20, 30), qRgb(255, 255, 255), qRgb(255, 255, 255),
                            qRgb(204, 232, 255), qRgb(30, 30, 30),  qRgb(240, 240, 240)};
  int stamped_ = 0;
};

TEST_F(QtGlyphTextsTest, NumbersAreDrawnAsTheFontDrawsThem) {
  int put_together = 0;
  for (const QFont& font : SomeFonts()) {
    QtGlyphTexts texts(font);
    for (int round = 0; round < 40 && !HasFailure(); ++round) {
      CString text = random_() % 4 == 0 ? CString(_T("-")) : CString();
      text += Digits(9);
      if (random_() % 2 == 0) text += CString(_T(".")) + Digits(4);
      if (random_() % 8 == 0) text += CString(_T(" ")) + Digits(3);
      if (random_() % 8 == 0) text += CString(_T(",")) + Digits(3) + _T("+") + Digits(2);
      put_together += Check(font, texts, text) ? 1 : 0;
    }
  }
  EXPECT_GT(put_together, 1300) << "of 1600";
  EXPECT_GT(stamped_, 700);
}

TEST_F(QtGlyphTextsTest, NamesAreDrawnAsTheFontDrawsThem) {
  const LPCTSTR beginnings[] = {_T("梁K"), _T("KL"), _T("f"),  _T("1F-墙"), _T("AV"), _T("\u03b1"), _T("柱 "),
                                _T("T."),  _T("Ж-"), _T("《"), _T("１"),    _T("fi"), _T("W")};
  int put_together = 0;
  for (const QFont& font : SomeFonts()) {
    QtGlyphTexts texts(font);
    for (int round = 0; round < 560 && !HasFailure(); ++round) {
      const CString text = CString(beginnings[random_() % std::size(beginnings)]) + Digits(7);
      // The first ones of a beginning are left to the font.
      if (texts.Of(text.View()) != nullptr && round % 5 == 0)
        put_together += Check(font, texts, text) ? 1 : 0;
    }
  }
  EXPECT_GT(put_together, 300);
  EXPECT_GT(stamped_, 150);
}

TEST_F(QtGlyphTextsTest, PicturesAreMadeAnewWhenThereAreTooMany) {
  QFont font(QStringLiteral("DejaVu Serif"));
  font.setPixelSize(13);
  font.setHintingPreference(QFont::PreferNoHinting);
  QtGlyphTexts texts(font);
  for (int round = 0; round < 3000 && !HasFailure(); ++round) {
    const QtGlyphText* const glyphs = texts.Of(Digits(12).View());
    if (glyphs == nullptr || glyphs->stamps == nullptr) continue;
    // Many colours: each has its own pictures, and the oldest go.
    ByStamps(*glyphs, qRgb(0, 0, round % 9), qRgb(255, 255, 250 - round % 7));
    if (round % 50 == 0) Check(font, texts, Digits(9));
  }
}

TEST_F(QtGlyphTextsTest, OtherTextsAreLeftToTheFont) {
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(12);
  QtGlyphTexts texts(font);
  for (const LPCTSTR text :
       {_T(""), _T("a"), _T("1a"), _T("1\t2"), _T("1--2"), _T("1.-2"), _T("1/2"), _T("=1")})
    EXPECT_EQ(texts.Of(CString(text).View()), nullptr) << CString(text).ToUtf8();
  EXPECT_NE(texts.Of(CString(_T('1'), 64).View()), nullptr);
  EXPECT_EQ(texts.Of(CString(_T('1'), 65).View()), nullptr);
  for (int i = 0; i < 100; ++i)
    EXPECT_EQ(texts.Of(CString(_T("e\u030112")).View()), nullptr) << "a mark that combines";
  font.setUnderline(true);
  EXPECT_EQ(QtGlyphTexts(font).Of(CString(_T("12")).View()), nullptr);
  font.setUnderline(false);
  font.setPixelSize(201);
  EXPECT_EQ(QtGlyphTexts(font).Of(CString(_T("12")).View()), nullptr);
  QGuiApplication::setLayoutDirection(Qt::RightToLeft);
  EXPECT_EQ(texts.Of(CString(_T("12")).View()), nullptr);
  QGuiApplication::setLayoutDirection(Qt::LeftToRight);
  EXPECT_EQ(texts.Of(CString(_T("1.500")).View())->run->positions().size(), 5);
}

// A canvas does the same work with and without a clip, one way or another: to the pixel what the toolkit's
// painter does, whatever is beneath, and however the calls follow one another.
class QtCanvasScriptTest : public QtGlyphTextsTest {
 protected:
  static constexpr SIZE kSheet = {160, 100};

  CRect SomeRect() {
    const int left = static_cast<int>(random_() % 180) - 10;
    const int upper = static_cast<int>(random_() % 120) - 10;
    return {left, upper, left + static_cast<int>(random_() % 90), upper + static_cast<int>(random_() % 50)};
  }
  COLORREF SomeColour() {
    constexpr COLORREF kColours[] = {0, RGB(255, 255, 255), RGB(0, 120, 215), RGB(250, 240, 200)};
    return kColours[random_() % 4];
  }
  CString SomeText() {
    switch (random_() % 4) {
      case 0:
        return CString(_T("梁K")) + Digits(4);
      case 1:
        return CString(_T("墙体 beam"));
      default:
        return Digits(5) + _T(".") + Digits(3);
    }
  }
  // The same on a picture of the toolkit's, each call with a painter of its own.
  template <class Draw>
  void Plainly(const CRect* within, Draw draw) {
    QPainter painter(&plain_);
    CRect clip = clip_;
    if (within != nullptr) clip &= *within;
    painter.setClipRect(ToQt(clip));
    draw(painter);
  }
  void Step(Canvas& canvas);
  void Draw(Canvas& canvas);
  void Write(Canvas& canvas);

  QImage plain_{kSheet.cx, kSheet.cy, QImage::Format_RGB32};
  CRect clip_{0, 0, kSheet.cx, kSheet.cy};
  LOGFONT font_ = {};
};

void QtCanvasScriptTest::Write(Canvas& canvas) {
  const CString text = SomeText();
  const COLORREF colour = SomeColour();
  const CRect box = SomeRect();
  const CPoint at = random_() % 2 == 0 ? box.TopLeft() : CPoint(box.left + 5, box.top + 3);
  const bool clipped = random_() % 2 == 0;
  clipped ? canvas.ClippedText(at, text.View(), colour, box) : canvas.Text(at, text.View(), colour);
  Plainly(clipped ? &box : nullptr, [&](QPainter& painter) {
    painter.setFont(FontOf(font_));
    painter.setPen(ToQt(colour));
    painter.drawText(QPoint(at.x, at.y + canvas.Metrics().tmAscent), ToQt(text.View()));
  });
}

void QtCanvasScriptTest::Draw(Canvas& canvas) {
  const CRect box = SomeRect();
  const COLORREF colour = SomeColour();
  switch (random_() % 4) {
    case 0:
      canvas.Gradient(box, colour, colour, random_() % 2 == 0);
      break;
    case 1:
      canvas.Invert(box);
      return Plainly(nullptr, [&](QPainter& painter) {
        painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
        painter.fillRect(ToQt(box), Qt::white);
      });
    case 2:
      canvas.Line(box.TopLeft(), {box.right, box.top}, {colour, 1, PS_SOLID});
      return Plainly(nullptr, [&](QPainter& painter) {
        painter.fillRect(QRect(box.left, box.top, box.Width(), 1), ToQt(colour));
      });
    default:
      canvas.Fill(box, colour);
  }
  Plainly(nullptr, [&](QPainter& painter) { painter.fillRect(ToQt(box), ToQt(colour)); });
}

void QtCanvasScriptTest::Step(Canvas& canvas) {
  const auto kind = random_() % 8;
  if (kind == 0) {
    clip_ = SomeRect() & CRect(CPoint(0, 0), kSheet);
    canvas.SetClip(clip_);
  } else if (kind == 1) {
    clip_ = CRect(CPoint(0, 0), kSheet);
    canvas.SetClip(nullptr);
  } else if (kind == 2) {
    font_ = desktop_->DialogFont();
    font_.lfHeight = -static_cast<LONG>(9 + random_() % 12);
    font_.lfWeight = random_() % 3 == 0 ? FW_BOLD : FW_NORMAL;
    font_.lfUnderline = random_() % 5 == 0 ? 1 : 0;
    canvas.SetFont(font_);
  } else if (kind < 5) {
    Draw(canvas);
  } else {
    Write(canvas);
  }
}

TEST_F(QtCanvasScriptTest, RandomCallsDrawWhatThePainterDraws) {
  const auto canvas = desktop_->MakeCanvas(kSheet);
  plain_.fill(Qt::white);
  font_ = desktop_->DialogFont();
  canvas->SetFont(font_);
  for (int round = 0; round < 4000 && !HasFailure(); ++round) {
    Step(*canvas);
    const auto pixels = canvas->Pixels(CRect(CPoint(0, 0), kSheet));
    const QImage seen(reinterpret_cast<const uchar*>(pixels.data()), kSheet.cx, kSheet.cy,
                      QImage::Format_RGB32);
    ASSERT_EQ(seen, plain_) << round;
    if (round % 50 == 0) {
      canvas->SetClip(nullptr);
      canvas->Fill(CRect(CPoint(0, 0), kSheet), RGB(255, 255, 255));
      plain_.fill(Qt::white);
      canvas->SetClip(clip_);
    }
  }
}

// Several parts are out of date, and another canvas draws on the same window in between.
TEST_F(QtCanvasScriptTest, PartsOfAWindowAndTwoCanvases) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {0, 0, kSheet.cx, kSheet.cy}, &child);
  Settle();
  const auto peer = desktop_->Find(child.window);
  const std::vector<CRect> parts = {{0, 0, 60, 30}, {60, 30, 160, 60}, {10, 70, 90, 100}};
  for (int round = 0; round < 300 && !HasFailure(); ++round) {
    const auto other = peer->ClientCanvas();
    other->Fill(CRect(CPoint(0, 0), kSheet), RGB(255, 255, 255));
    peer->Validate(nullptr);
    for (const CRect& part : parts) peer->Invalidate(part);
    RECT dirty = {};
    const auto canvas = peer->PaintCanvas(dirty);
    // What a custom window's ground is drawn with is not looked at.
    other->Fill(CRect(CPoint(0, 0), kSheet), RGB(255, 255, 255));
    plain_.fill(Qt::white);
    font_ = desktop_->DialogFont();
    for (int step = 0; step < 6; ++step) {
      const CPoint at(static_cast<int>(random_() % 120), static_cast<int>(random_() % 90));
      const CString text = SomeText();
      const COLORREF colour = SomeColour();
      canvas->Text(at, text.View(), colour);
      const COLORREF fill = SomeColour();
      const CRect box = SomeRect();
      canvas->Fill(box, fill);
      for (const CRect& part : parts) {
        QPainter painter(&plain_);
        painter.setClipRect(ToQt(part));
        painter.setFont(FontOf(font_));
        painter.setPen(ToQt(colour));
        painter.drawText(QPoint(at.x, at.y + canvas->Metrics().tmAscent), ToQt(text.View()));
        painter.fillRect(ToQt(box), ToQt(fill));
      }
      if (step % 2 == 0) continue;
      // Nothing but its own bounds holds the other one.
      other->Text(at, text.View(), colour);
      QPainter painter(&plain_);
      painter.setFont(FontOf(font_));
      painter.setPen(ToQt(colour));
      painter.drawText(QPoint(at.x, at.y + canvas->Metrics().tmAscent), ToQt(text.View()));
    }
    const auto pixels = other->Pixels(CRect(CPoint(0, 0), kSheet));
    const QImage seen(reinterpret_cast<const uchar*>(pixels.data()), kSheet.cx, kSheet.cy,
                      QImage::Format_RGB32);
    ASSERT_EQ(seen, plain_) << round;
  }
}

}  // namespace
}  // namespace lorv::test
