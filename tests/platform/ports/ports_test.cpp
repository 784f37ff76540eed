#include <gtest/gtest.h>

#include <string>

#include "platform/headless/services/headless_platform.h"
#include "platform/ports/platform.h"
#include "tests/support/data.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

TEST(Ports, NativeOnesAreInForceAtFirst) {
  EXPECT_EQ(PortsInForce().files, &NativeFiles());
  EXPECT_EQ(PortsInForce().code_page, &SuiteCodePage());
  EXPECT_EQ(PortsInForce().shell, &NativeShell());
}

TEST(Ports, ScopeReplacesWhatItNamesAndNests) {
  HeadlessPlatform machine;
  HeadlessSuite suite;
  {
    const ScopedPlatform outer(machine.Ports());
    EXPECT_EQ(PortsInForce().files, &machine.files);
    {
      Platform only_suite;
      only_suite.suite = &suite;
      const ScopedPlatform inner(only_suite);
      EXPECT_EQ(PortsInForce().suite, &suite);
      EXPECT_EQ(PortsInForce().files, &machine.files);
    }
    EXPECT_EQ(PortsInForce().suite, &machine.suite);
  }
  EXPECT_EQ(PortsInForce().files, &NativeFiles());
}

TEST(Ports, HeaderExample) {
  HeadlessPlatform machine;
  machine.clock.now = 0;
  const ScopedPlatform scope(machine.Ports());
  EXPECT_EQ(PortsInForce().clock->LocalTime().wYear, 1601);
}

TEST(HeadlessClock, TimesGoBothWays) {
  HeadlessClock clock;
  const SYSTEMTIME day = {2024, 2, 4, 29, 23, 59, 58, 999};
  const SYSTEMTIME back = clock.ToLocal(clock.FromLocal(day));
  EXPECT_EQ(back.wYear, 2024);
  EXPECT_EQ(back.wMonth, 2);
  EXPECT_EQ(back.wDay, 29);
  EXPECT_EQ(back.wDayOfWeek, 4);
  EXPECT_EQ(back.wHour, 23);
  EXPECT_EQ(back.wMilliseconds, 999);
  EXPECT_EQ(clock.FromLocal({2023, 2, 0, 29, 0, 0, 0, 0}), 0);
}

TEST(NativeClock, LocalTimesGoBothWays) {
  Clock& clock = NativeClock();
  const SYSTEMTIME now = clock.LocalTime();
  EXPECT_GE(now.wYear, 2024);
  const SYSTEMTIME day = {2024, 3, 0, 5, 7, 8, 9, 0};
  const SYSTEMTIME back = clock.ToLocal(clock.FromLocal(day));
  EXPECT_EQ(back.wYear, 2024);
  EXPECT_EQ(back.wMonth, 3);
  EXPECT_EQ(back.wDayOfWeek, 2);
  EXPECT_EQ(back.wDay, 5);
  EXPECT_EQ(back.wHour, 7);
  EXPECT_EQ(back.wMinute, 8);
  EXPECT_EQ(back.wSecond, 9);
  EXPECT_EQ(clock.FromLocal({0, 0, 0, 0, 0, 0, 0, 0}), 0);
  EXPECT_EQ(clock.ToLocal(-1).wYear, 1601);
  EXPECT_GT(clock.Now(), clock.FromLocal(day));
}

TEST(NativeProcess, KnowsItsProgram) {
  Process& process = NativeProcess();
  const CString path = process.ModulePath(nullptr, 4096);
  EXPECT_GE(path.Find(_T("lorv_test_platform")), 0) << Utf8(path);
  EXPECT_EQ(process.ModulePath(nullptr, 10).GetLength(), 9);
  EXPECT_GT(process.FreePhysicalMemory(), 1U << 20);
  EXPECT_FALSE(process.VersionText(_T("no such file"), _T("\\StringFileInfo\\040904B0\\FileVersion")));
  int record = 0;
  EXPECT_FALSE(process.CallLoadedModule(_T("TTraceRpt.x64"), 28, &record));
}

TEST(NativeProcess, ThreadTimesGrow) {
  const ThreadTimes before = NativeProcess().TimesOfThread();
  volatile double sum = 0;
  ThreadTimes after = before;
  for (int round = 0; round < 1000 && after.user + after.kernel == before.user + before.kernel; ++round) {
    for (int i = 0; i < 1000000; ++i) sum = sum + i;
    after = NativeProcess().TimesOfThread();
  }
  EXPECT_GT(after.user + after.kernel, before.user + before.kernel);
}

TEST(NativeSettings, FileValueComesFromTheFile) {
  const test::ScratchFolder folder;
  test::WriteBytes(folder.Path() / "product.ini",
                   "[Product]\r\nCustomFlag=4168\r\nNegative=-3\r\nEmpty=\r\n");
  const CString file = CString::FromUtf8(folder.Path().string()) + _T("\\product.ini");
  Settings& settings = NativeSettings();
  EXPECT_EQ(settings.FileValue(file, _T("Product"), _T("CustomFlag"), 72), 4168);
  EXPECT_EQ(settings.FileValue(file, _T("product"), _T("customflag"), 72), 4168);
  EXPECT_EQ(settings.FileValue(file, _T("Product"), _T("Negative"), 72), -3);
  EXPECT_EQ(settings.FileValue(file, _T("Product"), _T("Empty"), 72), 72);
  EXPECT_EQ(settings.FileValue(file, _T("Product"), _T("Missing"), 72), 72);
  EXPECT_EQ(settings.FileValue(file + _T("x"), _T("Product"), _T("CustomFlag"), 72), 72);
  EXPECT_EQ(settings.ProfileValue(_T("NoSuchSection"), _T("NoSuchKey"), 5), 5);
}

TEST(NativeSuite, FoldersEndInASeparator) {
  for (const CString& folder : {NativeSuite().RootFolder(), NativeSuite().UserPath()}) {
    const CString last = folder.Right(1);
    EXPECT_TRUE(last == _T("\\") || last == _T("/")) << Utf8(folder);
    EXPECT_TRUE(NativeFiles().Exists(folder)) << Utf8(folder);
  }
}

TEST(Suite, SeparatorIsAddedOnce) {
  EXPECT_EQ(Utf8(WithSeparator(_T("C:\\a"), '\\')), "C:\\a\\");
  EXPECT_EQ(Utf8(WithSeparator(_T("C:\\a\\"), '\\')), "C:\\a\\");
  EXPECT_EQ(Utf8(WithSeparator(_T("C:/a/"), '\\')), "C:/a/");
  EXPECT_EQ(Utf8(WithSeparator(_T(""), '\\')), "");
}

TEST(NativeShell, DeletesForGood) {
  const test::ScratchFolder folder;
  test::WriteBytes(folder.Path() / "f.txt", "x");
  const CString file = CString::FromUtf8((folder.Path() / "f.txt").string());
  constexpr WORD kFlags = kFileSilent | kFileNoConfirmation | kFileNoErrorInterface;
  EXPECT_EQ(NativeShell().Operate({kFileDelete, file, kFlags}), 0);
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / "f.txt"));
  EXPECT_NE(NativeShell().Operate({kFileDelete, file, kFlags}), 0);
}

TEST(HeadlessShell, RecordsWhatItWasAsked) {
  HeadlessPlatform machine;
  machine.shell.result = 5;
  EXPECT_EQ(machine.shell.Operate({kFileDelete, _T("C:\\f"), kFileAllowUndo}), 5);
  EXPECT_TRUE(machine.shell.Start({_T("open"), _T("notepad.exe"), _T("C:\\f"), 10, 0x40}));
  ASSERT_EQ(machine.shell.operations.size(), 1U);
  EXPECT_EQ(machine.shell.operations[0].flags, kFileAllowUndo);
  ASSERT_EQ(machine.shell.started.size(), 1U);
  EXPECT_EQ(machine.shell.started[0].show, 10);
}

}  // namespace
}  // namespace lorv
