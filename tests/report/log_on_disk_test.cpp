#include <gtest/gtest.h>

#include <string>

#include "platform/headless/services/headless_platform.h"
#include "report/error_report.h"
#include "tests/support/data.h"

namespace lorv {
namespace {

// The system's own files and process; only the user's folder is put elsewhere.
TEST(LogOnDisk, IsAppendedThroughTheSystem) {
  const test::ScratchFolder folder;
  HeadlessSuite suite;
  suite.user = CString::FromUtf8((folder.Path() / "").string());
  Platform ports;
  ports.suite = &suite;
  const ScopedPlatform scope(ports);
  ReportCustErrorEx(_T("first"), _T("a.cpp"), _T(""), 5, nullptr);
  ReportCustErrorEx(_T("second"), _T("a.cpp"), _T(""), 6, nullptr);
  const std::string log = test::ReadBytes(folder.Path() / "ErrorInfo.er");
  const std::size_t first = log.find("first");
  EXPECT_NE(first, std::string::npos);
  EXPECT_GT(log.find("second"), first);
  EXPECT_NE(log.find("lorv_test_report"), std::string::npos) << "the program's path";
  const std::string line_end = PortsInForce().files->WithLineEnds("\n");
  EXPECT_TRUE(log.ends_with("KB" + line_end + line_end));
}

}  // namespace
}  // namespace lorv
