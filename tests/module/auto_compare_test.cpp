#include "module/auto_compare.h"

#include <gtest/gtest.h>

#include "platform/headless/services/headless_platform.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

TEST(AutoCompareMode, SwitchesAreZeroAtStart) {
  EXPECT_EQ(CAutoCompareMode::GetWorkMode(), EmDiffNumAutoTestMode(0));
  EXPECT_FALSE(CAutoCompareMode::g_bStartCloudFX);
  EXPECT_FALSE(CAutoCompareMode::g_AutoCalcAndMultiProc);
}

TEST(AutoCompareMode, WorkModeIsKept) {
  CAutoCompareMode::SetWorkMode(EmDiffNumAutoTestMode(3));
  EXPECT_EQ(CAutoCompareMode::GetWorkMode(), EmDiffNumAutoTestMode(3));
  EXPECT_EQ(CAutoCompareMode::m_emTestMode, EmDiffNumAutoTestMode(3));
  CAutoCompareMode::SetWorkMode(EmDiffNumAutoTestMode(0));
}

TEST(AutoCompareMode, FilesLieBelowTheRoot) {
  HeadlessPlatform machine;
  machine.suite.root = _T("C:\\算量\\");
  const ScopedPlatform scope(machine.Ports());
  std::string narrow;
  CAutoCompareMode::GetAutoCalcProPath(narrow);
  EXPECT_EQ(narrow, SuiteCodePage().ToNarrow(_T("C:\\算量\\sys\\autocalcproject.txt")));
  CAutoCompareMode::GetFinishedAutoCalcProPath(narrow);
  EXPECT_EQ(narrow, SuiteCodePage().ToNarrow(_T("C:\\算量\\sys\\autocalcprojectOK.txt")));
  CString path;
  CAutoCompareMode::GetAutoCalcSettingPath(path);
  EXPECT_EQ(Utf8(path), "C:\\算量\\sys\\autocalcSetting.ini");
}

TEST(AutoCompareMode, FourTablesCopyMemberByMember) {
  CAutoCompareMode mode;
  CXArrayDBToArray* const tables[] = {&mode.GetXarrExcel(), &mode.GetXarrAllExce(), &mode.GetTimeExce(),
                                      &mode.GetStTimeExce()};
  for (int i = 1; i < 4; ++i) EXPECT_LT(tables[i - 1], tables[i]) << i;
  tables[2]->ReDim(2, 3);
  CAutoCompareMode copy(mode);
  CAutoCompareMode assigned;
  assigned = mode;
  for (CAutoCompareMode* other : {&copy, &assigned}) {
    EXPECT_EQ(other->GetTimeExce().GetRowCount(), 2);
    EXPECT_EQ(other->GetXarrExcel().GetRowCount(), 0);
  }
}

}  // namespace
}  // namespace lorv
