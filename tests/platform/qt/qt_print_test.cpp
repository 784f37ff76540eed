#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QMessageBox>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTimer>
#include <stdexcept>

#include "framework/drawing/device_context.h"
#include "platform/qt/services/qt_services.h"
#include "tests/platform/qt/qt_fixture.h"

namespace lorv {
namespace {

constexpr PageWays kWays = {kThousandths, 120, _T("Arial"), 0};

// Files in the portable document format, and the questions of the widget set.
class QtPrint : public test::QtTest {
 protected:
  // The file that `print` makes.
  QByteArray Printed(const std::function<void(PrintJob&)>& print) {
    const QString path = folder_.filePath(QStringLiteral("页.pdf"));
    auto file = std::make_unique<QPdfWriter>(path);
    file->setResolution(1000);
    file->setPageSize(QPageSize(QPageSize::A4));
    file->setPageMargins(QMarginsF(0, 0, 0, 0));
    {
      const auto job = MakeQtPrintJob(std::move(file));
      EXPECT_TRUE(job->Begin(_T("Error message"), kWays));
      print(*job);
      job->End();
    }
    QFile read(path);
    return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray();
  }
  // All that is packed in it, one after the other.
  static QByteArray Unpacked(const QByteArray& document) {
    QByteArray all;
    for (qsizetype at = document.indexOf("stream\n"); at >= 0; at = document.indexOf("stream\n", at + 7)) {
      const qsizetype end = document.indexOf("\nendstream", at);
      const bool packed = end > 0 && document[at + 7] == 0x78;
      if (!packed) continue;
      // The unpacker wants a guess of the size in front.
      all += qUncompress(QByteArray("\0\1\0\0", 4) + document.mid(at + 7, end - at - 7));
    }
    return all;
  }

  QTemporaryDir folder_;
};

TEST_F(QtPrint, MakesADocumentOfOnePageWithItsText) {
  const QByteArray document = Printed([](PrintJob& job) {
    job.Text(300, 9000, _T("beam"));
    job.Text(300, 8800, _T("墙"));
  });
  EXPECT_TRUE(document.startsWith("%PDF-"));
  EXPECT_TRUE(document.contains("/Count 1"));
  EXPECT_TRUE(document.contains("/FontFile"));
  // The texts can be copied out of the document: their characters are named.
  EXPECT_TRUE(document.contains("<5899>"));
}

TEST_F(QtPrint, PlacesCountUpwardsFromThePagesBottom) {
  const QByteArray inside = Unpacked(Printed([](PrintJob& job) {
    job.Text(300, 9000, _T("first"));
    job.Text(300, 8800, _T("second"));
    job.Text(300, -500, _T("lost"));
  }));
  QRegularExpressionMatchIterator places =
      QRegularExpression(QStringLiteral("300 -([0-9.]+) Td")).globalMatch(QString::fromLatin1(inside));
  std::vector<double> downwards;
  while (places.hasNext()) downwards.push_back(places.next().captured(1).toDouble());
  ASSERT_GE(downwards.size(), 2U);
  // A sheet of 11693; the place is that of the top, and letters stand on their base line.
  const double first = 11693 - 9000;
  EXPECT_GT(downwards[0], first + 100);
  EXPECT_LT(downwards[0], first + 200);
  EXPECT_NEAR(downwards[1] - downwards[0], 200, 0.01);
}

TEST_F(QtPrint, PagesAreDrawnOnThroughAContext) {
  const QString path = folder_.filePath(QStringLiteral("pages.pdf"));
  auto file = std::make_unique<QPdfWriter>(path);
  file->setResolution(300);
  const int across = file->width();
  {
    const auto job = MakeQtPrintJob(std::move(file));
    ASSERT_TRUE(job->BeginPages(_T("list")));
    for (int i = 0; i < 2; ++i) {
      CPrintDC page(job->NextPage());
      EXPECT_NE(page.IsPrinting(), FALSE);
      EXPECT_EQ(page.GetDeviceCaps(HORZRES), across);
      EXPECT_EQ(page.GetDeviceCaps(LOGPIXELSY), 300);
      page.DrawText(_T("梁"), CRect(10, 10, 400, 100), DT_SINGLELINE);
    }
    job->End();
  }
  QFile read(path);
  ASSERT_TRUE(read.open(QIODevice::ReadOnly));
  const QByteArray document = read.readAll();
  EXPECT_TRUE(document.contains("/Count 2"));
  EXPECT_TRUE(document.contains("<6881>")) << "the characters are told";
}

TEST_F(QtPrint, TextsMeasureInThousandths) {
  Printed([](PrintJob& job) {
    const SIZE one = job.Extent(_T("00"));
    const SIZE two = job.Extent(_T("0000"));
    // 12 points are a sixth of an inch.
    EXPECT_GE(one.cy, 167);
    EXPECT_LE(one.cy, 300);
    EXPECT_NEAR(two.cx, 2 * one.cx, 2);
  });
}

TEST_F(QtPrint, OtherMeasuresAreRefused) {
  PageWays ways = kWays;
  ways.mapping = 1;
  const auto job = MakeQtPrintJob(std::make_unique<QPdfWriter>(folder_.filePath(QStringLiteral("none.pdf"))));
  EXPECT_FALSE(job->Begin(_T("x"), ways));
  EXPECT_FALSE(QFile::exists(folder_.filePath(QStringLiteral("none.pdf"))));
}

TEST_F(QtPrint, AFileThatCannotBeMadeIsRefused) {
  const auto job =
      MakeQtPrintJob(std::make_unique<QPdfWriter>(folder_.filePath(QStringLiteral("no/such/folder.pdf"))));
  EXPECT_FALSE(job->Begin(_T("x"), kWays));
}

TEST_F(QtPrint, GivingUpThePrinterGivesNoJob) {
  bool asked = false;
  QTimer::singleShot(0, [&] {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    asked = dialog != nullptr;
    if (asked) dialog->reject();
  });
  EXPECT_EQ(ServicesOfDesktop()->AskPrinter(top.window, kPrintNoPages | kPrintNoSelection), nullptr);
  EXPECT_TRUE(asked);
}

// Presses a button of the message box that comes up; its text and its buttons' texts.
std::vector<std::string> Answered(const MessageRequest& request, QMessageBox::StandardButton button,
                                  int& answer) {
  std::vector<std::string> seen;
  QTimer::singleShot(0, [&] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    seen = {box->windowTitle().toStdString(), box->text().toStdString()};
    for (const QAbstractButton* const each : box->buttons()) seen.push_back(each->text().toStdString());
    if (button == QMessageBox::NoButton) box->reject();
    if (button != QMessageBox::NoButton) box->button(button)->click();
  });
  answer = ServicesOfDesktop()->ShowMessage(request);
  return seen;
}

TEST_F(QtPrint, MessagesAreBoxesWithTheirButtons) {
  int answer = 0;
  EXPECT_EQ(Answered({_T("<b>墙</b>"), _T("提示"), kButtonsOk | kIconWarning}, QMessageBox::Ok, answer),
            (std::vector<std::string>{"提示", "<b>墙</b>", "确定"}));
  EXPECT_EQ(answer, kAnswerOk);
  Answered({_T("x"), _T("y"), kButtonsOk}, QMessageBox::NoButton, answer);
  EXPECT_EQ(answer, kAnswerOk);
  EXPECT_EQ(Answered({_T("x"), _T("y"), kButtonsYesNo}, QMessageBox::Yes, answer).size(), 4U);
  EXPECT_EQ(answer, kAnswerYes);
  Answered({_T("x"), _T("y"), kButtonsYesNo}, QMessageBox::No, answer);
  EXPECT_EQ(answer, kAnswerNo);
  Answered({_T("x"), _T("y"), 1}, QMessageBox::Cancel, answer);
  EXPECT_EQ(answer, kAnswerCancel);
  Answered({_T("x"), _T("y"), 1}, QMessageBox::NoButton, answer);
  EXPECT_EQ(answer, kAnswerCancel);
}

// A timer of the program runs under the box, until the user presses the button.
TEST_F(QtPrint, ExceptionsUnderAMessageReachItsCaller) {
  bool throws = true;
  top.on_message = [&](UINT message, WPARAM, LPARAM, LRESULT&) -> bool {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (message != WM_TIMER || box == nullptr) return false;
    QTimer::singleShot(0, box, [box] { box->button(QMessageBox::Ok)->click(); });
    if (throws) throw std::runtime_error("timer");
    return false;
  };
  desktop_->Find(top.window)->SetTimer(78, 20);
  const MessageRequest request{_T("x"), _T("y"), kButtonsOk};
  EXPECT_THROW(ServicesOfDesktop()->ShowMessage(request), std::runtime_error);
  throws = false;
  EXPECT_EQ(ServicesOfDesktop()->ShowMessage(request), kAnswerOk) << "nothing of the first one is left";
  desktop_->Find(top.window)->KillTimer(78);
  top.on_message = nullptr;
}

}  // namespace
}  // namespace lorv
