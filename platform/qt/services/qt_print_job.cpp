#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <cmath>

#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_fonts.h"
#include "platform/qt/services/qt_services.h"

namespace lorv {
namespace {

constexpr double kThousand = 1000;
constexpr double kTenthsPerInch = 720;

// A document is named by the kind of paper that it goes to.
void Name(QPagedPaintDevice& paper, const QString& document) {
  if (auto* const printer = dynamic_cast<QPrinter*>(&paper)) printer->setDocName(document);
  if (auto* const file = dynamic_cast<QPdfWriter*>(&paper)) file->setTitle(document);
}

class QtPrintJob : public PrintJob {
 public:
  explicit QtPrintJob(std::unique_ptr<QPagedPaintDevice> paper) : paper_(std::move(paper)) {}

  bool Begin(LPCTSTR document, const PageWays& ways) override {
    if (ways.mapping != kThousandths) return false;
    Name(*paper_, QString::fromUtf16(document));
    if (!painter_.begin(paper_.get())) return false;
    LOGFONT face = {};
    face.lfHeight = -static_cast<LONG>(std::lround(ways.tenths_of_points * Down() / kTenthsPerInch));
    for (int i = 0; i < LF_FACESIZE - 1 && ways.face[i] != 0; ++i) face.lfFaceName[i] = ways.face[i];
    font_ = FontOf(face);
    painter_.setFont(font_);
    return true;
  }

  SIZE Extent(LPCTSTR text) override {
    const QFontMetricsF measured(font_);
    return {static_cast<LONG>(
                std::ceil(measured.horizontalAdvance(QString::fromUtf16(text)) * kThousand / Across())),
            static_cast<LONG>(std::ceil(measured.height() * kThousand / Down()))};
  }

  // The painter counts downwards, and places a text by its base line.
  void Text(int x, int y, LPCTSTR text) override {
    const QPointF corner(x * Across() / kThousand, paper_->height() - y * Down() / kThousand);
    painter_.drawText(corner + QPointF(0, QFontMetricsF(font_).ascent()), QString::fromUtf16(text));
  }

  void End() override { painter_.end(); }

 private:
  double Across() const { return paper_->logicalDpiX(); }
  double Down() const { return paper_->logicalDpiY(); }

  std::unique_ptr<QPagedPaintDevice> paper_;
  QPainter painter_;  // ends before its paper
  QFont font_;
};

}  // namespace

std::unique_ptr<PrintJob> MakeQtPrintJob(std::unique_ptr<QPagedPaintDevice> paper) {
  return std::make_unique<QtPrintJob>(std::move(paper));
}

}  // namespace lorv
