#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QStaticText>
#include <QWidget>
#include <cstring>
#include <ctime>

#include "bench/plain_painter.h"
#include "platform/choice/desktop_choice.h"
#include "platform/qt/desktop/qt_text.h"

// What paint_bench draws, by the toolkit's painter alone.

namespace lorv_bench {
namespace {

using lorv::ToQt;

// Draws what the library draws with the toolkit's painter alone: the same font, colours, edges and order, so
// that a ratio shows what the library adds.
class QtPlainPainter : public PlainPainter {
 public:
  explicit QtPlainPainter(const Sheet& sheet)
      : sheet_(sheet), image_(sheet.Width(), sheet.Height(), QImage::Format_RGB32), shown_(*this) {
    image_.fill(Qt::white);
    font_.setFamilies({QStringLiteral("WenQuanYi Micro Hei")});
    font_.setPixelSize(12 * sheet.scale);
    ascent_ = QFontMetrics(font_).ascent();
    for (const CString& text : sheet.texts) {
      texts_.push_back(ToQt(text.View()));
      kept_.emplace_back(texts_.back());
      kept_.back().setTextFormat(Qt::PlainText);
      // Shaped beforehand, as the library keeps texts that are drawn again.
      kept_.back().prepare(QTransform(), font_);
    }
    // Else the toolkit would fill the ground once more than the library's window does.
    shown_.setAttribute(Qt::WA_OpaquePaintEvent);
    shown_.resize(sheet.Width(), sheet.Height());
    shown_.show();
  }

  void Lines() override {
    QPainter painter(&image_);
    Lines(painter);
  }
  void Texts() override {
    // Texts of a program come in its own form: turning them into the toolkit's is part of the work.
    Refresh();
    QPainter painter(&image_);
    Texts(painter);
  }
  void TextsInCells() override {
    QPainter painter(&image_);
    for (int i = 0; i < Count(); ++i) {
      painter.setFont(font_);
      painter.setPen(ToQt(kInk));
      painter.drawText(ToQt(sheet_.Cell(i)), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, Text(i));
    }
  }
  void KeptTexts() override {
    QPainter painter(&image_);
    painter.setFont(font_);
    painter.setPen(ToQt(kInk));
    for (int i = 0; i < Count(); ++i) {
      const RECT cell = sheet_.Cell(i);
      painter.drawStaticText(QPoint(cell.left + 3, cell.top + 2), kept_[static_cast<std::size_t>(i)]);
    }
  }
  void Page() override {
    QPainter painter(&image_);
    Page(painter);
  }
  void TwoCells() override {
    QRegion dirty(ToQt(sheet_.Cell(0)));
    dirty += ToQt(sheet_.Cell(Count() - 1));
    QPainter painter(&image_);
    for (int i = 0; i < Count(); ++i) {
      if (!dirty.intersects(ToQt(sheet_.Cell(i)))) continue;
      painter.setClipRect(ToQt(sheet_.Cell(i)));
      painter.fillRect(ToQt(sheet_.Cell(i)), ToQt(kGround));
      Text(painter, i);
    }
  }
  void ScrollRow() override {
    // Rows of pixels are moved in memory, the quickest way for a picture of this kind.
    const std::size_t moved = static_cast<std::size_t>(sheet_.Height() - sheet_.Down());
    const std::size_t line = static_cast<std::size_t>(image_.bytesPerLine());
    uchar* const bits = image_.bits();
    std::memmove(bits, bits + line * static_cast<std::size_t>(sheet_.Down()), moved * line);
    QPainter painter(&image_);
    const QRect strip(0, static_cast<int>(moved), sheet_.Width(), sheet_.Down());
    painter.setClipRect(strip);
    painter.fillRect(strip, ToQt(kGround));
    for (int i = Count() - sheet_.columns; i < Count(); ++i) Text(painter, i);
  }
  void ShownPage() override { shown_.repaint(); }

 private:
  class Shown : public QWidget {
   public:
    explicit Shown(QtPlainPainter& owner) : owner_(owner) {}
    void paintEvent(QPaintEvent* /*event*/) override {
      QPainter painter(this);
      owner_.Page(painter);
    }

   private:
    QtPlainPainter& owner_;
  };

  int Count() const { return sheet_.columns * sheet_.rows; }
  const QString& Text(int i) const { return texts_[static_cast<std::size_t>(i)]; }
  void Refresh() {
    for (std::size_t i = 0; i < texts_.size(); ++i) texts_[i] = ToQt(sheet_.texts[i].View());
  }
  void Lines(QPainter& painter) const {
    painter.setPen(ToQt(kRule));
    const int right = sheet_.columns * sheet_.Across();
    const int bottom = sheet_.rows * sheet_.Down();
    for (int x = 0; x <= right; x += sheet_.Across())
      painter.fillRect(x, 0, sheet_.scale, bottom, ToQt(kRule));
    for (int y = 0; y <= bottom; y += sheet_.Down()) painter.fillRect(0, y, right, sheet_.scale, ToQt(kRule));
  }
  void Text(QPainter& painter, int i) const {
    const RECT cell = sheet_.Cell(i);
    painter.setFont(font_);
    painter.setPen(ToQt(kInk));
    painter.drawText(cell.left + 3, cell.top + 2 + ascent_, Text(i));
  }
  void Texts(QPainter& painter) const {
    painter.setFont(font_);
    painter.setPen(ToQt(kInk));
    for (int i = 0; i < Count(); ++i) {
      const RECT cell = sheet_.Cell(i);
      painter.drawText(cell.left + 3, cell.top + 2 + ascent_, Text(i));
    }
  }
  void Page(QPainter& painter) const {
    painter.fillRect(0, 0, sheet_.Width(), sheet_.Height(), ToQt(kGround));
    Lines(painter);
    Texts(painter);
  }

  const Sheet& sheet_;
  QImage image_;
  QFont font_;
  int ascent_ = 0;
  std::vector<QString> texts_;
  std::vector<QStaticText> kept_;
  Shown shown_;
};

}  // namespace

std::unique_ptr<PlainPainter> MakePlainPainter(const Sheet& sheet) {
  return std::make_unique<QtPlainPainter>(sheet);
}

double WorkedMilliseconds() {
  timespec now = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

void PrepareScreen(int scale) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
  lorv::ChooseDesktop(lorv::DesktopKind::Qt);
}

}  // namespace lorv_bench
