#pragma once

#include <QFont>
#include <QGlyphRun>
#include <QRgb>
#include <QString>
#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/native/export.h"
#include "platform/qt/drawing/kept_beginnings.h"

namespace lorv {

class QtGlyphsBehind;

// The glyphs of a line as the font sets them, from its left end on the base line.
std::vector<QGlyphRun> GlyphRunsOf(const QString& text, const QFont& font);

// What draws a text: glyphs whose places count from its left end on the base line.
struct QtGlyphText {
  const std::vector<QGlyphRun>* beginning = nullptr;  // null: nothing stands before the run
  const QGlyphRun* run = nullptr;
  CRect ink;                         // holds every pixel that is drawn, from that point
  QtGlyphsBehind* stamps = nullptr;  // null: more than two glyphs share pixels
};

// The pixels of a rectangle, from the top down.
struct QtStamp {
  CRect rect;
  std::vector<QRgb> pixels;

  // Over a picture whose lines are that far apart, `origin` being the pixel from which the rectangle counts.
  void Put(QRgb* origin, std::ptrdiff_t line) const;
};

// The glyphs of texts of a few characters behind one beginning, put together from those of the characters and
// the steps between pairs of them, each shaped once.
class COMM_LORV_API QtGlyphsBehind {
 public:
  // The characters are the `count` from `first` on; `made` counts the pictures.
  QtGlyphsBehind(const QFont& font, const QString& beginning, unsigned first, unsigned count,
                 std::size_t& made);

  // Null where the font sets these characters by other rules than side by side, where two signs that are no
  // digits meet, and for other characters. Good until the next call.
  const QtGlyphText* Of(TextView text);
  // Sets the pixels of the text that Of gave last, over a ground of one colour.
  void Stamp(QRgb ink, QRgb ground, QRgb* origin, std::ptrdiff_t line);
  void ForgetStamps() { stamps_ = {}; }

 private:
  // A glyph as shaping gives it.
  struct Placed {
    QRawFont font;
    quint32 glyph = 0;
    QPointF at;
  };
  enum class State : char { kUnknown, kGood, kBad };
  struct Sign {
    State state = State::kUnknown;
    quint32 glyph = 0;
    double at = 0;  // behind the beginning
    CRect ink;      // from the glyph's own place
  };
  struct Step {
    State state = State::kUnknown;
    double by = 0;
  };
  // A character of the text that is being put together.
  struct Put {
    unsigned before;  // the character in front of it; `count_`: the beginning
    unsigned sign;
    double at;
  };
  // The pictures of characters in one ink on one ground, each made when it is first wanted.
  struct Stamps {
    QRgb ink = 0;
    QRgb ground = 0;
    std::optional<QtStamp> beginning;
    std::unordered_map<unsigned, QtStamp> signs;  // by both characters and the part of a pixel
  };
  static constexpr std::size_t kMostColours = 4;

  std::optional<std::vector<Placed>> Shaped(const QString& text) const;
  // The glyphs that come behind those of the beginning; nothing where they are not as many.
  std::optional<std::vector<Placed>> Behind(const QString& text, std::size_t count) const;
  bool LearnBeginning();
  const Sign& SignOf(unsigned sign);
  const Step& StepOf(unsigned before, unsigned sign);
  Sign Learned(unsigned sign);
  Step Learned(unsigned before, unsigned sign);
  bool PutTogether(TextView text);
  bool IsAsShaped(TextView text) const;
  void Follow(const Put& put);
  const QtStamp& StampOf(Stamps& stamps, const Put& put);
  const CRect& InkBefore(const Put& put) const {
    return put.before == count_ ? beginning_ink_ : signs_[put.before].ink;
  }
  Stamps& StampsIn(QRgb ink, QRgb ground);
  QString Unit(unsigned sign) const { return QString(QChar(static_cast<char16_t>(first_ + sign))); }

  QFont font_;
  QString beginning_;
  std::size_t& made_;
  unsigned first_;
  unsigned count_;
  bool usable_;
  int checks_left_;
  std::vector<Placed> before_;  // the beginning's own
  std::vector<QGlyphRun> beginning_runs_;
  CRect beginning_ink_;
  std::optional<QRawFont> raw_;  // of all the characters
  std::vector<Sign> signs_;
  std::vector<Step> steps_;  // by pair, the first character counting most
  std::vector<quint32> glyphs_;
  std::vector<QPointF> places_;
  std::vector<Put> put_;
  // A picture holds two characters: the ink of all before the last one ends at `clear_`, of all at `end_`.
  bool parted_ = true;
  int clear_ = 0;
  int end_ = 0;
  QGlyphRun run_;
  QtGlyphText text_;
  std::array<Stamps, kMostColours> stamps_;
  std::size_t oldest_stamps_ = 0;
};

// Numbers, and names that end in digits, as glyphs that were put together instead of shaped: a page of cells
// is full of them, nearly all different, and shaping takes thrice as long as drawing.
//
// Numbers are texts of digits with signs among ".,-+" and blanks between them. Names are put together once
// many were met that begin alike. The first few texts of each kind are shaped as well and compared; where a
// font sets them by rules of its own, all are left to it. Over a ground of one colour the pictures of glyphs
// that were drawn before are set instead of drawing them again, which takes ten times as long.
// Units: pixels. Result: what is drawn is to the pixel what the toolkit draws for the text.
// Memory: as much as KeptBeginnings says, and about kMostStamps pictures; then these are made anew. One
// thread, that of the font.
//
//   QtGlyphTexts(font).Of(_T("1.500"))  gives five glyphs; for _T("abc") it gives null
class COMM_LORV_API QtGlyphTexts {
 public:
  static constexpr std::size_t kMostStamps = 16384;

  explicit QtGlyphTexts(const QFont& font);

  // Null for a text that the font has to set. Good until the next call.
  const QtGlyphText* Of(TextView text);

 private:
  QFont font_;
  bool usable_;
  std::size_t made_ = 0;  // stamps of all
  QtGlyphsBehind numbers_;
  KeptBeginnings<QtGlyphsBehind> names_;
};

}  // namespace lorv
