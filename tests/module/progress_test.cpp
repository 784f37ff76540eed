#include "module/progress.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/headless/services/headless_platform.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;
using Calls = std::vector<std::string>;

class Progress : public testing::Test {
 protected:
  Calls Asked() const {
    Calls calls;
    for (const CString& call : machine_.shell.progress) calls.push_back(Utf8(call));
    return calls;
  }
  void Forget() { machine_.shell.progress.clear(); }

  HeadlessPlatform machine_;
  ScopedPlatform scope_{machine_.Ports()};
};

TEST_F(Progress, StartSetsTheDialogUp) {
  CProgressCom progress(10);
  EXPECT_TRUE(progress.StartProgress(_T("计算")));
  EXPECT_EQ(Asked(),
            (Calls{"title 计算", "animation shell32.dll 161", "open 2",
                   "cancel message Please wait while the current operation is cleaned up", "timer 1"}));
}

TEST_F(Progress, WithoutADialogStartIsFalse) {
  machine_.shell.has_progress = false;
  CProgressCom progress(10);
  EXPECT_FALSE(progress.StartProgress(_T("计算")));
  progress.StepProgress(1, _T("x"));
  progress.EndProgress();
  EXPECT_FALSE(progress.QueryCancel(_T("?")));
  EXPECT_EQ(Asked(), Calls{});
}

TEST_F(Progress, WithoutTheAnimationsModuleStartIsFalse) {
  machine_.shell.has_animation = false;
  CProgressCom progress(10);
  EXPECT_FALSE(progress.StartProgress(_T("计算")));
  EXPECT_EQ(Asked(), (Calls{"title 计算", "animation shell32.dll 161"}));
}

TEST_F(Progress, StepShowsPositionAndText) {
  CProgressCom progress(10);
  progress.StartProgress(_T("t"));
  Forget();
  progress.StepProgress(3, _T("首层"));
  progress.StepProgress(4, _T(""));
  EXPECT_EQ(Asked(), (Calls{"progress 3 10", "line 1 首层 compact 0", "progress 4 10"}));
}

TEST_F(Progress, LongTextIsCutAtItsLimit) {
  CProgressCom progress(10);
  progress.StartProgress(_T("t"));
  for (const int length : {258, 259, 260, 5000}) {
    Forget();
    progress.StepProgress(1, CString(_T('x'), length));
    const std::string shown(static_cast<std::size_t>(length < 259 ? length : 259), 'x');
    EXPECT_EQ(Asked(), (Calls{"progress 1 10", "line 1 " + shown + " compact 0"})) << length;
  }
}

TEST_F(Progress, EndShowsTheWholeAndCloses) {
  {
    CProgressCom progress(10);
    progress.StartProgress(_T("t"));
    Forget();
    progress.EndProgress();
    EXPECT_EQ(Asked(), (Calls{"progress 10 10", "close"}));
    Forget();
  }
  EXPECT_EQ(Asked(), Calls{"gone"});
}

TEST_F(Progress, EndOfNoSteps) {
  CProgressCom progress(0);
  progress.StartProgress(_T("t"));
  Forget();
  progress.EndProgress();
  EXPECT_EQ(Asked(), (Calls{"progress 0 0", "close"}));
}

TEST_F(Progress, NotCancelledIsNotAsked) {
  CProgressCom progress(10);
  progress.StartProgress(_T("t"));
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  EXPECT_TRUE(machine_.dialogs.messages.empty());
}

TEST_F(Progress, CancelledAsksAndYesCancels) {
  CProgressCom progress(10);
  progress.StartProgress(_T("t"));
  Forget();
  machine_.shell.user_cancelled = true;
  machine_.dialogs.answer = kAnswerYes;
  EXPECT_TRUE(progress.QueryCancel(_T("停止?")));
  ASSERT_EQ(machine_.dialogs.messages.size(), 1U);
  EXPECT_EQ(Utf8(machine_.dialogs.messages[0].text), "停止?");
  EXPECT_EQ(machine_.dialogs.messages[0].style, 4U);
  EXPECT_EQ(Asked(), Calls{});
}

TEST_F(Progress, NoResetsTheTimerAndIsAskedAgain) {
  CProgressCom progress(10);
  progress.StartProgress(_T("t"));
  Forget();
  machine_.shell.user_cancelled = true;
  machine_.dialogs.answer = kAnswerNo;
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  EXPECT_EQ(machine_.dialogs.messages.size(), 2U);
  EXPECT_EQ(Asked(), (Calls{"timer 1", "timer 1"}));
}

}  // namespace
}  // namespace lorv
