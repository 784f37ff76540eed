#include <QFile>
#include <QPdfWriter>
#include <QTemporaryDir>

#include "grid/printing/grid_printing.h"
#include "platform/qt/services/qt_services.h"
#include "tests/gridcore/qt/qt_grid_desk.h"

namespace lorv_test {
namespace {

class QtGridPdf : public QtGridDesk {
 protected:
  QByteArray Printed(const lorv::GridPrinting& printing) {
    const QString path = folder_.filePath(QStringLiteral("表.pdf"));
    auto file = std::make_unique<QPdfWriter>(path);
    file->setPageSize(QPageSize(QPageSize::A4));
    file->setPageMargins(QMarginsF(0, 0, 0, 0));
    {
      const auto job = lorv::MakeQtPrintJob(std::move(file));
      EXPECT_TRUE(printing.Print(*job));
    }
    QFile read(path);
    return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray();
  }

  QTemporaryDir folder_;
};

TEST_F(QtGridPdf, AGridBecomesADocumentWhoseTextCanBeFound) {
  for (int row = 0; row < 100; ++row) grid.AddRow(FALSE);
  grid.AdjustLayout();
  lorv::GridPrinting printing(grid);
  printing.settings.title = _T("构件");
  const QByteArray document = Printed(printing);
  EXPECT_TRUE(document.startsWith("%PDF-"));
  // 210 x 297 millimetres at the 1200 dots an inch of such a file.
  const std::size_t pages = printing.Plan({9921, 14031}, 1200).pages.size();
  EXPECT_GE(pages, 2U);
  EXPECT_TRUE(document.contains("/Count " + QByteArray::number(static_cast<int>(pages)) + "\n"));
  EXPECT_TRUE(document.contains("<677F>")) << "a cell";
  EXPECT_TRUE(document.contains("<957F>")) << "a header";
  EXPECT_TRUE(document.contains("<6784>")) << "the title";
}

TEST_F(QtGridPdf, APageIsDrawnOnAPicture) {
  const lorv::GridPrinting printing(grid);
  std::shared_ptr<lorv::Canvas> picture = desktop_->MakeCanvas({600, 400});
  const lorv::GridPrintPlan plan = printing.Plan({600, 400}, picture->Dpi());
  ASSERT_EQ(plan.pages.size(), 1U);
  EXPECT_TRUE(printing.DrawPage(plan, 0, picture));
  const std::vector<DWORD> pixels = picture->Pixels({0, 0, 600, 400});
  const auto inked = std::count_if(pixels.begin(), pixels.end(), [](DWORD at) { return at != 0xFFFFFFFFU; });
  EXPECT_GT(inked, 2000);
}

}  // namespace
}  // namespace lorv_test
