#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <cmath>

#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_canvas.h"
#include "platform/qt/drawing/qt_fonts.h"
#include "platform/qt/services/qt_services.h"

// Printing through Qt, to a printer or into a PDF file: texts at places in thousandths of an inch, or pages
// that canvases draw on. One painter serves the whole document and ends before its paper.

namespace lorv {
namespace {

constexpr double kThousand = 1000;
constexpr double kTenthsPerInch = 720;

// A document is named by the kind of paper that it goes to.
void Name(QPagedPaintDevice& paper, const QString& document) {
  if (auto* const printer = dynamic_cast<QPrinter*>(&paper)) printer->setDocName(document);
  if (auto* const file = dynamic_cast<QPdfWriter*>(&paper)) file->setTitle(document);
}

// A page that canvases draw on, until the next one begins.
class QtPage : public QtGround {
 public:
  QtPage(const QPagedPaintDevice& paper, QPainter& painter)
      : size_(paper.width(), paper.height()), dpi_(paper.logicalDpiY()), painter_(&painter) {}

  SIZE Size() const override { return size_; }
  int Dpi() const override { return dpi_; }
  void Finish() {
    // The clip of a canvas would hold on the next page as well.
    if (painter_ != nullptr) painter_->setClipping(false);
    // Canvases of a finished page may live on: they draw nothing.
    painter_ = nullptr;
  }

 protected:
  QPainter* Open(const CRect& /*part*/) override { return painter_; }
  void Close(const CRect& /*part*/) override {}

 private:
  CSize size_;
  int dpi_;
  QPainter* painter_;
};

class QtPrintJob : public PrintJob {
 public:
  explicit QtPrintJob(std::unique_ptr<QPagedPaintDevice> paper) : paper_(std::move(paper)) {}

  bool Begin(LPCTSTR document, const PageWays& ways) override {
    // No other one is asked for in the suite.
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

  bool BeginPages(LPCTSTR document) override {
    Name(*paper_, QString::fromUtf16(document));
    return painter_.begin(paper_.get());
  }

  std::shared_ptr<Canvas> NextPage() override {
    if (!painter_.isActive()) return nullptr;
    if (page_ != nullptr) {
      page_->Finish();
      // The first page is there from the beginning.
      if (!paper_->newPage()) return nullptr;
    }
    page_ = std::make_shared<QtPage>(*paper_, painter_);
    return std::make_shared<QtCanvas>(page_, CRect(CPoint(0, 0), page_->Size()));
  }

  void End() override {
    if (page_ != nullptr) page_->Finish();
    painter_.end();
  }

  ~QtPrintJob() override {
    if (page_ != nullptr) page_->Finish();
  }

 private:
  double Across() const { return paper_->logicalDpiX(); }
  double Down() const { return paper_->logicalDpiY(); }

  std::unique_ptr<QPagedPaintDevice> paper_;
  QPainter painter_;  // ends before its paper
  QFont font_;
  std::shared_ptr<QtPage> page_;
};

}  // namespace

std::unique_ptr<PrintJob> MakeQtPrintJob(std::unique_ptr<QPagedPaintDevice> paper) {
  return std::make_unique<QtPrintJob>(std::move(paper));
}

}  // namespace lorv
