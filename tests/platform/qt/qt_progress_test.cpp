#include "platform/qt/services/qt_progress.h"

#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "module/progress.h"
#include "platform/headless/services/headless_platform.h"
#include "platform/ports/desktop_services.h"
#include "platform/ports/progress_picture.h"
#include "tests/platform/qt/qt_fixture.h"

namespace lorv::test {
namespace {

class QtProgressTest : public QtTest {
 protected:
  static QDialog* Box() {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (auto* const box = dynamic_cast<QDialog*>(widget)) return box;
    return nullptr;
  }
  static QStringList Lines() {
    QStringList lines;
    for (const QLabel* label : Box()->findChildren<QLabel*>()) lines.push_back(label->text());
    return lines;
  }
  static int Bar() { return Box()->findChild<QProgressBar*>()->value(); }
  static QPushButton* Button() { return Box()->findChild<QPushButton*>(); }
};

TEST_F(QtProgressTest, IsPicturedWhileItIsOpen) {
  const auto dialog = ServicesOfDesktop()->MakeProgress();
  auto* const pictured = dynamic_cast<ProgressPicture*>(dialog.get());
  ASSERT_NE(pictured, nullptr);
  SIZE size = {1, 1};
  EXPECT_TRUE(pictured->Picture(size).empty());
  EXPECT_EQ(size.cx, 0);
  dialog->Open(0);
  const std::vector<DWORD> pixels = pictured->Picture(size);
  EXPECT_EQ(size.cx, Box()->width());
  EXPECT_EQ(size.cy, Box()->height());
  EXPECT_EQ(pixels.size(), static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy));
  dialog->Close();
  EXPECT_TRUE(pictured->Picture(size).empty());
}

TEST_F(QtProgressTest, IsAsHighWithItsLinesEmptyAsFull) {
  const auto dialog = ServicesOfDesktop()->MakeProgress();
  dialog->Open(kProgressAutoTime);
  const QSize before = Box()->size();
  for (const LPCTSTR text : {_T("首层 墙 梁 板 柱"), _T("Abg"), _T("")}) {
    for (const DWORD line : {1U, 2U}) dialog->SetLine(line, text, false);
    dialog->SetProgress(3, 10);
    QApplication::processEvents();
    EXPECT_EQ(Box()->size(), before);
  }
}

TEST_F(QtProgressTest, CancelIsReachedByTab) {
  const auto dialog = ServicesOfDesktop()->MakeProgress();
  dialog->Open(0);
  Box()->activateWindow();
  ASSERT_TRUE(DispatchUntil([] { return Box()->isActiveWindow(); }));
  QKeyEvent down(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
  QApplication::sendEvent(Box(), &down);
  EXPECT_TRUE(Button()->hasFocus());
  EXPECT_FALSE(dialog->HasUserCancelled());
  QKeyEvent press(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
  QKeyEvent release(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier);
  QApplication::sendEvent(Button(), &press);
  QApplication::sendEvent(Button(), &release);
  EXPECT_TRUE(dialog->HasUserCancelled());
}

TEST_F(QtProgressTest, ShowsTitleLineAndPosition) {
  CProgressCom progress(4);
  ASSERT_TRUE(progress.StartProgress(_T("计算工程量")));
  ASSERT_NE(Box(), nullptr);
  EXPECT_TRUE(Box()->isVisible());
  EXPECT_EQ(Box()->windowTitle(), QStringLiteral("计算工程量"));
  EXPECT_EQ(Bar(), 0);
  progress.StepProgress(1, _T("首层 <b>墙</b>"));
  EXPECT_EQ(Lines().at(0), QStringLiteral("首层 <b>墙</b>"));
  EXPECT_EQ(Bar(), 250);
  progress.StepProgress(2, _T(""));
  EXPECT_EQ(Lines().at(0), QStringLiteral("首层 <b>墙</b>")) << "an empty text leaves the line";
  EXPECT_EQ(Bar(), 500);
  progress.StepProgress(-1, _T(""));
  EXPECT_EQ(Bar(), 1000) << "a negative position is a large number";
  progress.EndProgress();
  EXPECT_EQ(Bar(), 1000);
  EXPECT_FALSE(Box()->isVisible());
}

TEST_F(QtProgressTest, NoStepsAreAllDone) {
  CProgressCom progress(0);
  progress.StartProgress(_T("t"));
  progress.EndProgress();
  EXPECT_EQ(Bar(), 1000);
}

TEST_F(QtProgressTest, GoesWithTheOperation) {
  {
    CProgressCom progress(4);
    progress.StartProgress(_T("t"));
    EXPECT_NE(Box(), nullptr);
  }
  EXPECT_EQ(Box(), nullptr);
}

TEST_F(QtProgressTest, LongTextsAreCutToTheWindow) {
  CProgressCom progress(4);
  progress.StartProgress(_T("t"));
  const int width = Box()->width();
  progress.StepProgress(1, CString(_T('x'), 5000));
  Settle();
  EXPECT_EQ(Box()->width(), width);
  EXPECT_TRUE(Lines().at(0).endsWith(QChar(0x2026)));
  EXPECT_LT(Box()->findChildren<QLabel*>().at(0)->sizeHint().width(), width);
}

TEST_F(QtProgressTest, TheButtonCancelsAndItStaysSo) {
  HeadlessPlatform machine;
  Platform ports;
  ports.dialogs = &machine.dialogs;
  const ScopedPlatform scope(ports);
  CProgressCom progress(4);
  progress.StartProgress(_T("t"));
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  EXPECT_TRUE(machine.dialogs.messages.empty());
  Button()->click();
  EXPECT_FALSE(Button()->isEnabled());
  EXPECT_TRUE(Box()->isVisible());
  EXPECT_EQ(Lines().at(2), QStringLiteral("Please wait while the current operation is cleaned up"));
  machine.dialogs.answer = kAnswerNo;
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  EXPECT_EQ(machine.dialogs.messages.size(), 2U);
  progress.StepProgress(2, _T("二层"));
  EXPECT_EQ(Bar(), 500) << "No lets it go on";
  EXPECT_EQ(Lines().at(2), QStringLiteral("Please wait while the current operation is cleaned up"));
  machine.dialogs.answer = kAnswerYes;
  EXPECT_TRUE(progress.QueryCancel(_T("停止?")));
}

TEST_F(QtProgressTest, ClosingAndEscapeCancelToo) {
  for (const bool by_key : {false, true}) {
    const auto dialog = NativeShell().MakeProgress();
    dialog->Open(0);
    EXPECT_FALSE(dialog->HasUserCancelled());
    if (by_key) {
      Key(Box(), Qt::Key_Escape);
    } else {
      Box()->close();
    }
    EXPECT_TRUE(Box()->isVisible());
    EXPECT_TRUE(dialog->HasUserCancelled());
  }
}

TEST_F(QtProgressTest, NoHandlerRunsInTheMiddleOfTheOperation) {
  desktop_->Find(top.window)->SetTimer(4, 1);
  desktop_->Post(top.window, WM_APP, 1, 0);
  desktop_->Find(top.window)->Invalidate(nullptr);
  top.reported.clear();
  const auto dialog = NativeShell().MakeProgress();
  dialog->Open(kProgressAutoTime);
  for (const UINT message : {WM_APP, WM_PAINT, WM_TIMER}) EXPECT_EQ(top.Count(message), 0) << message;
  Settle();
  EXPECT_EQ(top.Count(WM_APP), 1);
  EXPECT_GE(top.Count(WM_PAINT), 1);
  EXPECT_TRUE(DispatchUntil([&] { return top.Count(WM_TIMER) > 0; }));
}

TEST_F(QtProgressTest, WhatTheUserDoesElsewhereMeanwhileIsDropped) {
  QWidget* const widget = WidgetOf(top.window);
  QCoreApplication::postEvent(widget, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier));
  top.reported.clear();
  const auto dialog = NativeShell().MakeProgress();
  dialog->Open(0);
  Settle();
  EXPECT_EQ(top.Count(WM_KEYDOWN), 0);
  QCoreApplication::postEvent(widget, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier));
  Settle();
  EXPECT_EQ(top.Count(WM_KEYDOWN), 1) << "between the steps the program may work its queue";
}

TEST_F(QtProgressTest, TheWindowThatItBelongsToMayGo) {
  CProgressCom progress(4);
  progress.StartProgress(_T("t"));
  desktop_->Find(top.window)->Destroy();
  Settle();
  progress.StepProgress(2, _T("x"));
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  progress.EndProgress();
}

}  // namespace
}  // namespace lorv::test
