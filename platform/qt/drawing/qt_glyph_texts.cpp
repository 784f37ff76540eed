#include "platform/qt/drawing/qt_glyph_texts.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "framework/text/char_class.h"
#include "platform/qt/desktop/qt_text.h"

// Texts as glyphs. What a text draws is found out once for each of its characters by drawing that character,
// since what a font says of the room of a glyph is not what its hinted picture takes.

namespace lorv {
namespace {

constexpr unsigned kFirstOfNumbers = 0x20;
constexpr unsigned kSignsOfNumbers = u'9' - kFirstOfNumbers + 1;
constexpr std::size_t kLongest = 64;  // units; longer numbers do not stand in cells
constexpr int kLargestFont = 200;     // pixels; learning a character draws it
constexpr int kChecks = 8;            // texts of a kind that are shaped as well
constexpr unsigned kParts = 64;       // of a pixel, that glyphs are placed by
constexpr int kBeside = 3;            // pixels around a glyph that are looked at, too

bool IsOfNumbers(unsigned sign) {
  const auto unit = static_cast<TCHAR>(kFirstOfNumbers + sign);
  return IsDigit(unit) || unit == u'.' || unit == u',' || unit == u'-' || unit == u'+' || unit == u' ';
}

// The pixels of a white picture that are not white any more.
CRect Touched(const QImage& picture) {
  CRect touched;
  for (int y = 0; y < picture.height(); ++y) {
    const auto* const row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    for (int x = 0; x < picture.width(); ++x)
      if (row[x] != qRgb(255, 255, 255)) touched |= CRect(x, y, x + 1, y + 1);
  }
  return touched;
}

// Nothing where the ink goes further than the font says.
std::optional<CRect> InkOf(const QGlyphRun& run) {
  const QRect said = run.boundingRect().toAlignedRect();
  const QRect box = said.adjusted(-kBeside, -kBeside, kBeside, kBeside);
  QImage picture(box.size(), QImage::Format_RGB32);
  if (picture.isNull()) return std::nullopt;
  picture.fill(Qt::white);
  QPainter painter(&picture);
  painter.setPen(Qt::black);
  painter.drawGlyphRun(-box.topLeft(), run);
  painter.end();
  const CRect touched = Touched(picture);
  if (touched.IsRectEmpty() != 0) return CRect();
  const CRect inside(1, 1, picture.width() - 1, picture.height() - 1);
  if ((touched & inside) != touched) return std::nullopt;
  return touched + FromQt(box.topLeft());
}

// `ink` at a place that may lie between two pixels.
CRect At(const CRect& ink, double at) {
  if (ink.IsRectEmpty() != 0) return {};
  return {ink.left + static_cast<int>(std::floor(at)), ink.top, ink.right + static_cast<int>(std::ceil(at)),
          ink.bottom};
}

QGlyphRun RunOf(const QRawFont& font, const QList<quint32>& glyphs, const QList<QPointF>& places) {
  QGlyphRun run;
  run.setRawFont(font);
  run.setGlyphIndexes(glyphs);
  run.setPositions(places);
  return run;
}

QGlyphRun Moved(const QGlyphRun& run, QPointF by) {
  QList<QPointF> places = run.positions();
  for (QPointF& place : places) place += by;
  return RunOf(run.rawFont(), run.glyphIndexes(), places);
}

// What the runs draw within the rectangle.
QtStamp Drawn(const CRect& rect, QRgb ink, QRgb ground, const std::vector<QGlyphRun>& runs) {
  QtStamp stamp{rect, {}};
  if (rect.IsRectEmpty() != 0) return stamp;
  QImage picture(rect.Width(), rect.Height(), QImage::Format_RGB32);
  picture.fill(ground);
  QPainter painter(&picture);
  painter.setPen(QColor::fromRgb(ink));
  for (const QGlyphRun& run : runs) painter.drawGlyphRun(-ToQt(rect.TopLeft()), run);
  painter.end();
  for (int y = 0; y < picture.height(); ++y) {
    const auto* const row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    stamp.pixels.insert(stamp.pixels.end(), row, row + picture.width());
  }
  return stamp;
}

}  // namespace

std::vector<QGlyphRun> GlyphRunsOf(const QString& text, const QFont& font) {
  QTextLayout layout(text, font);
  QTextOption option;
  option.setWrapMode(QTextOption::NoWrap);
  option.setTextDirection(Qt::LeftToRight);
  layout.setTextOption(option);
  layout.beginLayout();
  const QTextLine line = layout.createLine();
  layout.endLayout();
  std::vector<QGlyphRun> runs;
  if (!line.isValid()) return runs;
  for (const QGlyphRun& run : line.glyphRuns()) runs.push_back(Moved(run, {0, -line.ascent()}));
  return runs;
}

void QtStamp::Put(QRgb* origin, std::ptrdiff_t line) const {
  const auto width = static_cast<std::size_t>(std::max(rect.Width(), 0));
  QRgb* to = origin + rect.top * line + rect.left;
  for (std::size_t from = 0; from < pixels.size(); from += width, to += line)
    std::memcpy(to, pixels.data() + from, width * sizeof(QRgb));
}

QtGlyphsBehind::QtGlyphsBehind(const QFont& font, const QString& beginning, unsigned first, unsigned count,
                               std::size_t& made)
    : font_(font),
      beginning_(beginning),
      made_(made),
      first_(first),
      count_(count),
      usable_(true),
      checks_left_(kChecks),
      signs_(count),
      steps_(std::size_t{count} * count) {
  usable_ = LearnBeginning();
  text_.beginning = beginning_runs_.empty() ? nullptr : &beginning_runs_;
  text_.run = &run_;
}

std::optional<std::vector<QtGlyphsBehind::Placed>> QtGlyphsBehind::Shaped(const QString& text) const {
  std::vector<Placed> placed;
  for (const QGlyphRun& run : GlyphRunsOf(text, font_)) {
    const QList<quint32> glyphs = run.glyphIndexes();
    const QList<QPointF> places = run.positions();
    for (qsizetype i = 0; i < glyphs.size(); ++i) placed.push_back({run.rawFont(), glyphs[i], places[i]});
  }
  // Marks above or below the line are the font's own affair.
  const bool level = std::all_of(placed.begin(), placed.end(),
                                 [&](const Placed& glyph) { return glyph.at.y() == placed.front().at.y(); });
  if (!level) return std::nullopt;
  for (Placed& glyph : placed) glyph.at.setY(0);
  return placed;
}

bool QtGlyphsBehind::LearnBeginning() {
  if (beginning_.isEmpty()) return true;
  auto placed = Shaped(beginning_);
  if (!placed) return false;
  before_ = std::move(*placed);
  for (std::size_t from = 0; from < before_.size();) {
    QList<quint32> glyphs;
    QList<QPointF> places;
    std::size_t to = from;
    for (; to < before_.size() && before_[to].font == before_[from].font; ++to) {
      glyphs.push_back(before_[to].glyph);
      places.push_back(before_[to].at);
    }
    beginning_runs_.push_back(RunOf(before_[from].font, glyphs, places));
    const auto ink = InkOf(beginning_runs_.back());
    if (!ink) return false;
    beginning_ink_ |= *ink;
    from = to;
  }
  return true;
}

std::optional<std::vector<QtGlyphsBehind::Placed>> QtGlyphsBehind::Behind(const QString& text,
                                                                          std::size_t count) const {
  auto placed = Shaped(beginning_ + text);
  if (!placed || placed->size() != before_.size() + count) return std::nullopt;
  // A character behind it may change the beginning, as letters do that join.
  for (std::size_t i = 0; i < before_.size(); ++i) {
    const Placed& now = (*placed)[i];
    if (now.glyph != before_[i].glyph || now.at != before_[i].at || now.font != before_[i].font)
      return std::nullopt;
  }
  placed->erase(placed->begin(), placed->begin() + static_cast<std::ptrdiff_t>(before_.size()));
  // One font for all of them: they are drawn as one run, which has but one.
  const auto other = [&](const Placed& glyph) { return raw_ && glyph.font != *raw_; };
  if (std::any_of(placed->begin(), placed->end(), other)) return std::nullopt;
  return placed;
}

QtGlyphsBehind::Sign QtGlyphsBehind::Learned(unsigned sign) {
  Sign learned;
  learned.state = State::kBad;
  const auto placed = Behind(Unit(sign), 1);
  if (!placed) return learned;
  const Placed& glyph = placed->front();
  const auto ink = InkOf(RunOf(glyph.font, {glyph.glyph}, {QPointF(0, 0)}));
  if (!ink) return learned;
  if (!raw_) {
    raw_ = glyph.font;
    run_.setRawFont(glyph.font);
  }
  return {State::kGood, glyph.glyph, glyph.at.x(), *ink};
}

QtGlyphsBehind::Step QtGlyphsBehind::Learned(unsigned before, unsigned sign) {
  const Sign& first = SignOf(before);
  const Sign& second = SignOf(sign);
  const auto placed = Behind(Unit(before) + Unit(sign), 2);
  // Both as they stand alone, but for the step between them: a pair may become other glyphs.
  const bool good = placed && first.state == State::kGood && second.state == State::kGood &&
                    placed->front().glyph == first.glyph && placed->back().glyph == second.glyph &&
                    placed->front().at.x() == first.at;
  if (!good) return {State::kBad, 0};
  return {State::kGood, placed->back().at.x() - first.at};
}

const QtGlyphsBehind::Sign& QtGlyphsBehind::SignOf(unsigned sign) {
  if (signs_[sign].state == State::kUnknown) signs_[sign] = Learned(sign);
  return signs_[sign];
}

const QtGlyphsBehind::Step& QtGlyphsBehind::StepOf(unsigned before, unsigned sign) {
  Step& step = steps_[std::size_t{before} * count_ + sign];
  if (step.state == State::kUnknown) step = Learned(before, sign);
  return step;
}

void QtGlyphsBehind::Follow(const Put& put) {
  put_.push_back(put);
  const CRect ink = At(signs_[put.sign].ink, put.at);
  text_.ink |= ink;
  if (put_.size() > 1) {
    parted_ = parted_ && (ink.IsRectEmpty() != 0 || ink.left >= clear_);
    clear_ = std::max(clear_, end_);
  }
  if (ink.IsRectEmpty() == 0) end_ = std::max(end_, static_cast<int>(ink.right));
}

bool QtGlyphsBehind::PutTogether(TextView text) {
  glyphs_.clear();
  places_.clear();
  put_.clear();
  text_.ink = beginning_ink_;
  parted_ = true;
  clear_ = beginning_ink_.right;
  end_ = 0;
  double at = 0;
  unsigned before = count_;
  for (const TCHAR unit : text) {
    const unsigned sign = static_cast<unsigned>(unit) - first_;
    if (sign >= count_ || !IsOfNumbers(unit - kFirstOfNumbers)) return false;
    const Sign& known = SignOf(sign);
    if (known.state != State::kGood) return false;
    if (before == count_) {
      at = known.at;
    } else {
      // Signs that meet may become one, an arrow of a minus and a full stop.
      if (!IsDigit(unit) && !IsDigit(static_cast<TCHAR>(first_ + before))) return false;
      const Step& step = StepOf(before, sign);
      if (step.state != State::kGood) return false;
      at += step.by;
    }
    glyphs_.push_back(known.glyph);
    places_.emplace_back(at, 0);
    Follow({before, sign, at});
    before = sign;
  }
  text_.stamps = parted_ ? this : nullptr;
  return true;
}

bool QtGlyphsBehind::IsAsShaped(TextView text) const {
  const auto placed = Behind(ToQt(text), text.size());
  if (!placed) return false;
  for (std::size_t i = 0; i < glyphs_.size(); ++i)
    if ((*placed)[i].glyph != glyphs_[i] || (*placed)[i].at != places_[i]) return false;
  return true;
}

const QtGlyphText* QtGlyphsBehind::Of(TextView text) {
  if (!usable_ || text.empty() || !PutTogether(text)) return nullptr;
  // One or two characters were compared when they were learned.
  if (checks_left_ > 0 && text.size() > 2) {
    --checks_left_;
    usable_ = IsAsShaped(text);
    if (!usable_) return nullptr;
  }
  run_.setRawData(glyphs_.data(), places_.data(), static_cast<int>(glyphs_.size()));
  return &text_;
}

QtGlyphsBehind::Stamps& QtGlyphsBehind::StampsIn(QRgb ink, QRgb ground) {
  for (Stamps& known : stamps_)
    if (known.beginning && known.ink == ink && known.ground == ground) return known;
  Stamps& fresh = stamps_[oldest_stamps_];
  oldest_stamps_ = (oldest_stamps_ + 1) % kMostColours;
  fresh = {ink, ground, Drawn(beginning_ink_, ink, ground, beginning_runs_), {}};
  ++made_;
  return fresh;
}

// The columns of a character, with what of the one in front of it reaches into them.
const QtStamp& QtGlyphsBehind::StampOf(Stamps& stamps, const Put& put) {
  const double whole = std::floor(put.at);
  // Places are 64ths of a pixel, so this is exact, and less than kParts.
  const auto part = static_cast<unsigned>(std::lround((put.at - whole) * kParts));
  const auto [found, fresh] = stamps.signs.try_emplace((put.before * count_ + put.sign) * kParts + part);
  if (!fresh) return found->second;
  ++made_;
  CRect rect = At(signs_[put.sign].ink, put.at - whole);
  if (rect.IsRectEmpty() != 0) return found->second;
  const CRect& before = InkBefore(put);
  if (before.IsRectEmpty() == 0) {
    rect.top = std::min(rect.top, before.top);
    rect.bottom = std::max(rect.bottom, before.bottom);
  }
  QList<quint32> glyphs = {signs_[put.sign].glyph};
  QList<QPointF> places = {QPointF(put.at - whole, 0)};
  std::vector<QGlyphRun> runs;
  if (put.before == count_) {
    for (const QGlyphRun& run : beginning_runs_) runs.push_back(Moved(run, {-whole, 0}));
  } else {
    glyphs.push_front(signs_[put.before].glyph);
    places.push_front(places.front() - QPointF(StepOf(put.before, put.sign).by, 0));
  }
  runs.push_back(RunOf(*raw_, glyphs, places));
  return found->second = Drawn(rect, stamps.ink, stamps.ground, runs);
}

void QtGlyphsBehind::Stamp(QRgb ink, QRgb ground, QRgb* origin, std::ptrdiff_t line) {
  Stamps& stamps = StampsIn(ink, ground);
  stamps.beginning->Put(origin, line);
  for (const Put& put : put_)
    StampOf(stamps, put).Put(origin + static_cast<std::ptrdiff_t>(std::floor(put.at)), line);
}

QtGlyphTexts::QtGlyphTexts(const QFont& font)
    : font_(font),
      usable_(!font.underline() && !font.strikeOut() && !font.overline() && font.pixelSize() <= kLargestFont),
      numbers_(font, {}, kFirstOfNumbers, kSignsOfNumbers, made_) {}

const QtGlyphText* QtGlyphTexts::Of(TextView text) {
  // From right to left a minus stands elsewhere.
  if (!usable_ || text.empty() || text.size() > kLongest || QGuiApplication::isRightToLeft()) return nullptr;
  if (made_ > kMostStamps) {
    made_ = 0;
    numbers_.ForgetStamps();
    names_.ForEach([](QtGlyphsBehind& digits) { digits.ForgetStamps(); });
  }
  if (const QtGlyphText* const number = numbers_.Of(text)) return number;
  const TextView beginning = BeginningOfName(text);
  if (beginning.empty()) return nullptr;
  QtGlyphsBehind* const digits = names_.Met(
      beginning, [&] { return std::make_unique<QtGlyphsBehind>(font_, ToQt(beginning), u'0', 10U, made_); });
  return digits == nullptr ? nullptr : digits->Of(text.substr(beginning.size()));
}

}  // namespace lorv
