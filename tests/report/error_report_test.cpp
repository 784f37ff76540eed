#include "report/error_report.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "framework/windows/window.h"
#include "module/product_flags.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "platform/headless/services/headless_platform.h"
#include "report/content/stack_report.h"
#include "report/dialogs/dialog_forms.h"
#include "report/guard.h"
#include "tests/report/counted_failure.h"
#include "tests/support/data.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

constexpr LPCTSTR kLog = _T("C:\\Users\\Estimator\\ErrorInfo.er");
constexpr LPCTSTR kEnglish = _T("C:\\Suite\\suite.exe \\StringFileInfo\\040904B0\\FileVersion");
constexpr LPCTSTR kChinese = _T("C:\\Suite\\suite.exe \\StringFileInfo\\080403A8\\FileVersion");

class ErrorReport : public testing::Test {
 protected:
  ErrorReport() {
    CachedProductFlags() = 0;
    machine_.clock.now = machine_.clock.FromLocal({2024, 3, 0, 5, 7, 8, 9, 0});
    machine_.files.Put(_T("C:\\Users\\Estimator\\other"), "");
    machine_.process.versions[kEnglish] = _T("10.0.1");
    machine_.process.free_memory = 2048 * 1024;
  }
  ~ErrorReport() override { CachedProductFlags() = 0; }

  void ShowFailures() {
    machine_.files.Put(_T("C:\\Suite\\sys\\product.ini"), "[Product]\nCustomFlag=4168\n");
  }
  std::string Log() { return Utf8(CString(SuiteCodePage().ToText(machine_.files.BytesOf(kLog)))); }
  static void ReportText(LPCTSTR text) { ReportCustErrorEx(text, _T("a.cpp"), _T("void f()"), 5, nullptr); }
  static void ReportFailure(CException* caught) {
    ReportCustErrorEx(caught, _T("a.cpp"), _T("void f()"), 5, nullptr);
  }
  // The block of the log for a message, with all else as set up.
  static std::string Block(const std::string& message) {
    return "2024年3月5日 7时8分9秒\n" + message +
           "\n错误发生的模块是:C:\\Suite\\suite.exe\n版本信息:10.0.1\n发生错误文件的位置为: a.cpp, 第 5行\n"
           "剩余内存空间: 2048KB\n\n";
  }

  HeadlessPlatform machine_;
  ScopedPlatform scope_{machine_.Ports()};
};

TEST_F(ErrorReport, LogHoldsTimeReportAndAnEmptyLine) {
  ReportText(_T("x"));
  EXPECT_EQ(Log(), Block("x"));
  EXPECT_TRUE(machine_.dialogs.messages.empty());
}

TEST_F(ErrorReport, LogIsInTheNarrowCodePageAndOnlyAppended) {
  machine_.files.Put(kLog, "before\n");
  ReportText(_T("墙☃"));
  ReportText(_T("y"));
  EXPECT_EQ(Log(), "before\n" + Block("墙?") + Block("y"));
  for (const CString& asked : machine_.files.asked) EXPECT_EQ(asked.Find(_T("open create")), -1);
}

TEST_F(ErrorReport, EmptyTextGivesAnEmptyFirstLine) {
  ReportText(_T(""));
  ReportText(nullptr);
  EXPECT_EQ(Log(), Block("") + Block(""));
}

TEST_F(ErrorReport, FileFailureIsReportedAndDeleted) {
  ReportFailure(new CFileException(CFileException::fileNotFound));
  EXPECT_EQ(Log(), Block("不能找到文件."));
  int deleted = 0;
  ReportFailure(new test::CountedFailure(deleted, _T("x")));
  EXPECT_EQ(deleted, 1);
}

TEST_F(ErrorReport, AutomationFailureIsReportedAndKept) {
  _com_error failure(-1, CString(_T("表格正忙")));
  ReportCustErrorEx(&failure, _T("a.cpp"), _T("void f()"), 5, nullptr);
  ReportCustErrorEx(static_cast<_com_error*>(nullptr), _T("a.cpp"), _T("void f()"), 5, nullptr);
  EXPECT_EQ(Log(), Block("表格正忙") + Block(""));
}

TEST_F(ErrorReport, NullFailureIsUnknownAndAsksForAStackReport) {
  ReportFailure(nullptr);
  EXPECT_EQ(Log(), Block("未知错误."));
  ASSERT_FALSE(machine_.process.asked.empty());
  EXPECT_EQ(Utf8(machine_.process.asked[0]), "call TTraceRpt.x64 28");
  EXPECT_TRUE(machine_.process.records.empty());
}

TEST_F(ErrorReport, OnlyTheNullFailureAsksForAStackReport) {
  ReportFailure(new CMemoryException);
  ReportText(_T("x"));
  _com_error failure(-1);
  ReportCustErrorEx(&failure, _T("a.cpp"), _T("void f()"), 5, nullptr);
  ReportCustErrorEx(static_cast<_com_error*>(nullptr), _T("a.cpp"), _T("void f()"), 5, nullptr);
  for (const CString& asked : machine_.process.asked) EXPECT_NE(asked.Left(4), CString(_T("call")));
}

std::string seen_signature;
std::string seen_file;

TEST_F(ErrorReport, StackReportGetsItsRecord) {
  machine_.process.loaded_module = _T("TTraceRpt.x64");
  machine_.process.on_call = [](void* record) {
    const auto* request = static_cast<const StackRequest*>(record);
    seen_signature = request->signature;
    seen_file = request->source_file;
  };
  ReportCustErrorEx(static_cast<CException*>(nullptr), _T("墙.cpp"), _T("int 算(int)"), -7, nullptr);
  EXPECT_EQ(seen_signature, SuiteCodePage().ToNarrow(_T("int 算(int)")));
  EXPECT_EQ(seen_file, SuiteCodePage().ToNarrow(_T("墙.cpp")));
  ASSERT_EQ(machine_.process.records.size(), 1U);
  std::vector<BYTE> record = machine_.process.records[0];
  ASSERT_EQ(record.size(), 72U);
  std::int32_t line = 0;
  std::memcpy(&line, &record[56], 4);
  EXPECT_EQ(line, -7);
  // All but what is reported is zero.
  std::memset(&record[40], 0, 20);
  std::vector<BYTE> rest(72, 0);
  rest[0] = 72;
  rest[16] = 6;
  rest[21] = 16;
  EXPECT_EQ(record, rest);
}

TEST_F(ErrorReport, DamagedProjectIsReportedInItsOwnWords) {
  for (const LPCTSTR text :
       {_T("database disk image is malformed"), _T("SQL: database disk image is malformed!")}) {
    machine_.files.Put(kLog, "");
    ReportText(text);
    EXPECT_EQ(Log(), Block("工程jgk已损坏,请关闭软件删除工程jgk重新计算!"));
  }
  machine_.files.Put(kLog, "");
  ReportText(_T("Database disk image is malformed"));
  EXPECT_EQ(Log(), Block("Database disk image is malformed"));
}

TEST_F(ErrorReport, SecondVersionBlockServesWhereTheFirstGivesNothing) {
  machine_.process.versions.clear();
  machine_.process.versions[kEnglish] = _T("");
  machine_.process.versions[kChinese] = _T("9.8");
  ReportText(_T("x"));
  EXPECT_NE(Log().find("版本信息:9.8\n"), std::string::npos);
  machine_.process.versions[kEnglish] = _T("7.6");
  ReportText(_T("x"));
  EXPECT_NE(Log().find("版本信息:7.6\n"), std::string::npos);
}

TEST_F(ErrorReport, WithoutAVersionTheLineIsMissing) {
  machine_.process.versions.clear();
  ReportText(_T("x"));
  EXPECT_EQ(Log().find("版本信息"), std::string::npos);
}

TEST_F(ErrorReport, WithoutAPathTheModuleLineIsMissing) {
  int anywhere = 0;
  ReportCustErrorEx(_T("x"), _T("a.cpp"), _T(""), 5, reinterpret_cast<HINSTANCE>(&anywhere));
  EXPECT_EQ(Log().find("错误发生的模块是"), std::string::npos);
  EXPECT_NE(Log().find("x\n发生错误文件的位置为"), std::string::npos);
}

TEST_F(ErrorReport, ModulePathIsCutAtItsLimit) {
  for (const int length : {258, 259, 260, 400}) {
    machine_.files.Put(kLog, "");
    machine_.process.modules[nullptr] = CString(_T('p'), length);
    ReportText(_T("x"));
    const std::string shown(static_cast<std::size_t>(length < 259 ? length : 259), 'p');
    EXPECT_NE(Log().find(":" + shown + "\n"), std::string::npos) << length;
  }
}

TEST_F(ErrorReport, PlaceIsWrittenWithAnEmptyFileToo) {
  ReportCustErrorEx(_T("x"), _T(""), _T(""), -1, nullptr);
  EXPECT_NE(Log().find("发生错误文件的位置为: , 第 -1行\n"), std::string::npos);
  ReportCustErrorEx(_T("x"), nullptr, nullptr, 0, nullptr);
  EXPECT_NE(Log().find("发生错误文件的位置为: , 第 0行\n"), std::string::npos);
}

TEST_F(ErrorReport, LogLiesBesideTheUsersPath) {
  const struct {
    LPCTSTR user;
    LPCTSTR log;
  } cases[] = {
      {_T("C:\\Users\\Estimator\\settings.ini"), kLog},
      {_T("C:\\Users\\Estimator\\"), kLog},
      {_T("C:/Users/Estimator/"), kLog},
      {_T("plain"), _T("ErrorInfo.er")},
      {_T(""), _T("ErrorInfo.er")},
  };
  for (const auto& c : cases) {
    machine_.files.Put(c.log, "");
    machine_.suite.user = c.user;
    ReportText(_T("x"));
    EXPECT_NE(machine_.files.BytesOf(c.log), "") << Utf8(c.user);
  }
}

TEST_F(ErrorReport, LogThatDoesNotOpenIsPassedOver) {
  machine_.files.refused.insert(kLog);
  ReportText(_T("x"));
  machine_.suite.user = _T("C:\\Nowhere\\");
  ReportText(_T("x"));
  EXPECT_EQ(Log(), "(no such file)");
  EXPECT_TRUE(machine_.dialogs.messages.empty());
}

TEST_F(ErrorReport, ProductFlagChoosesTheDialog) {
  ShowFailures();
  HeadlessDesktop desktop;
  const ScopedDesktop in_force(desktop);
  desktop.SetViewer(true);
  CString shown;
  desktop.WhenIdle([&] {
    const CWnd* const dialog = CWnd::GetActiveWindow();
    if (dialog != nullptr) dialog->GetDlgItemText(kReportTextId, shown);
    desktop.Press(VK_RETURN);
  });
  ReportText(_T("x"));
  EXPECT_EQ(
      Utf8(shown),
      "x\r\n错误发生的模块是:C:\\Suite\\suite.exe\r\n版本信息:10.0.1\r\n发生错误文件的位置为: a.cpp, 第 "
      "5行\r\n剩余内存空间: 2048KB");
  EXPECT_EQ(Log(), "(no such file)");
  EXPECT_TRUE(machine_.dialogs.messages.empty());
  EXPECT_TRUE(desktop.Windows().empty());
}

TEST_F(ErrorReport, ADialogThatNobodySeesIsAMessage) {
  ShowFailures();
  HeadlessDesktop desktop;
  const ScopedDesktop in_force(desktop);
  ReportText(_T("x"));
  EXPECT_EQ(Log(), "(no such file)");
  ASSERT_EQ(machine_.dialogs.messages.size(), 1U);
  const MessageRequest& reported = machine_.dialogs.messages[0];
  EXPECT_EQ(Utf8(reported.caption), "错误提示");
  EXPECT_EQ(reported.style, kIconError);
  EXPECT_EQ(Utf8(reported.text),
            "x\n错误发生的模块是:C:\\Suite\\suite.exe\n版本信息:10.0.1\n发生错误文件的位置为: a.cpp, 第 5行\n"
            "剩余内存空间: 2048KB");
}

TEST_F(ErrorReport, DefaultFlagChoosesTheLog) {
  EXPECT_EQ(GetGlobelInfo(), 72U);
  ReportText(_T("x"));
  EXPECT_EQ(Log(), Block("x"));
}

// A failure whose own message fails.
class BrokenFailure : public CException {
 protected:
  CString ErrorText() const override { throw 5; }
};

TEST_F(ErrorReport, FailureInTheReportItselfStaysInside) {
  EXPECT_NO_THROW(ReportFailure(new BrokenFailure));
}

TEST_F(ErrorReport, GuardPassesWhatItCaughtWithItsPlace) {
  TCHAR text[] = {'t', 0};
  Guarded({"src/dir/b.cpp", "void g()", 9}, [&] { throw static_cast<LPTSTR>(text); });
  EXPECT_NE(Log().find("t\n错误发生的模块是:C:\\Suite\\suite.exe\n"), std::string::npos);
  EXPECT_NE(Log().find("发生错误文件的位置为: b.cpp, 第 9行\n"), std::string::npos);
}

TEST_F(ErrorReport, GuardReportsEachKindByItsForm) {
  _com_error automation(-1, CString(_T("a")));
  Guarded({"a.cpp", "f", 5}, [&] { throw &automation; });
  Guarded({"a.cpp", "f", 5}, [] { throw 1; });
  Guarded({"a.cpp", "f", 5}, [] { AfxThrowMemoryException(); });
  Guarded({"a.cpp", "f", 5}, [] { throw _com_error(-1, CString(_T("by value"))); });
  EXPECT_EQ(Log(), Block("a") + Block("未知错误.") + Block("内存出界") + Block("未知错误."));
}

TEST_F(ErrorReport, GuardAsksForAStackReportForAnythingElse) {
  machine_.process.loaded_module = _T("TTraceRpt.x64");
  machine_.process.on_call = [](void* record) {
    seen_signature = static_cast<const StackRequest*>(record)->signature;
  };
  Guarded(LORV_HERE, [] { throw 1; });
  EXPECT_NE(seen_signature.find("TestBody"), std::string::npos) << seen_signature;
}

}  // namespace
}  // namespace lorv
