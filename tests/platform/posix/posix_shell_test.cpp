#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "module/progress.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "platform/ports/process.h"
#include "platform/ports/shell.h"
#include "platform/ports/suite.h"
#include "platform/posix/services/terminal_progress.h"
#include "tests/platform/posix/scoped_variable.h"
#include "tests/support/data.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

namespace fs = std::filesystem;
using test::ScopedVariable;
using test::Utf8;

CString Wide(const fs::path& path) {
  return CString::FromUtf8(path.string());
}

TEST(PosixShell, DeletedFileCanBeTakenFromTheTrash) {
  const test::ScratchFolder folder;
  const ScopedVariable data("XDG_DATA_HOME", (folder.Path() / "data").string());
  for (const char* content : {"first", "second"}) {
    test::WriteBytes(folder.Path() / "墙 1.txt", content);
    EXPECT_EQ(NativeShell().Operate({kFileDelete, Wide(folder.Path() / "墙 1.txt"), kFileAllowUndo}), 0);
    EXPECT_FALSE(fs::exists(folder.Path() / "墙 1.txt"));
  }
  const fs::path trash = folder.Path() / "data" / "Trash";
  EXPECT_EQ(test::ReadBytes(trash / "files" / "墙 1.txt"), "first");
  EXPECT_EQ(test::ReadBytes(trash / "files" / "墙 1.txt.1"), "second");
  const std::string note = test::ReadBytes(trash / "info" / "墙 1.txt.trashinfo");
  EXPECT_EQ(note.find("[Trash Info]\nPath=/"), 0U) << note;
  EXPECT_NE(note.find("/%E5%A2%99%201.txt\nDeletionDate=20"), std::string::npos) << note;
}

TEST(PosixShell, MissingFileIsAnErrorAndLeavesNoNote) {
  const test::ScratchFolder folder;
  const ScopedVariable data("XDG_DATA_HOME", (folder.Path() / "data").string());
  EXPECT_NE(NativeShell().Operate({kFileDelete, Wide(folder.Path() / "none"), kFileAllowUndo}), 0);
  EXPECT_FALSE(fs::exists(folder.Path() / "data" / "Trash" / "info" / "none.trashinfo"));
  EXPECT_NE(NativeShell().Operate({kFileDelete, CString(), 0}), 0);
  EXPECT_NE(NativeShell().Operate({1, Wide(folder.Path()), 0}), 0);
}

TEST(PosixShell, TheDesktopIsTheOneInForce) {
  class WideScreen : public HeadlessDesktop {
    RECT Screen() const override { return {0, 0, 3840, 2160}; }
  };
  EXPECT_EQ(CRect(NativeShell().DesktopRect()), CRect(0, 0, 1920, 1080));
  WideScreen desktop;
  const ScopedDesktop scope(desktop);
  EXPECT_EQ(CRect(NativeShell().DesktopRect()), CRect(0, 0, 3840, 2160));
}

TEST(PosixShell, StartSaysWhetherThereIsSuchAProgram) {
  EXPECT_TRUE(NativeShell().Start({_T("open"), _T("true"), _T(""), 10, 0x40}));
  EXPECT_FALSE(NativeShell().Start({_T("open"), _T("no-such-program-here"), _T("x"), 10, 0x40}));
}

TEST(PosixShell, ADocumentIsOpenedByTheDesktop) {
  const test::ScratchFolder folder;
  const ScopedVariable path("PATH", folder.Path().string() + ":/usr/bin:/bin");
  const fs::path note = folder.Path() / "note";
  test::WriteBytes(folder.Path() / "xdg-open", "#!/bin/sh\nprintf '%s' \"$1\" > '" + note.string() +
                                                   ".new'\nmv '" + note.string() + ".new' '" + note.string() +
                                                   "'\n");
  fs::permissions(folder.Path() / "xdg-open", fs::perms::owner_all);
  const fs::path document = folder.Path() / "墙.xlsx";
  test::WriteBytes(document, "x");
  EXPECT_TRUE(NativeShell().Start({_T("open"), Wide(document), _T(""), 1, 0}));
  constexpr int kTries = 3000;
  for (int i = 0; i < kTries && !fs::exists(note); ++i) usleep(10000);
  EXPECT_EQ(test::ReadBytes(note), document.string());
}

TEST(PosixSuite, FoldersCanBeNamed) {
  const ScopedVariable root("COMM_LORV_ROOT", "/srv/算量");
  const ScopedVariable user("COMM_LORV_USER", "/srv/user/");
  EXPECT_EQ(Utf8(NativeSuite().RootFolder()), "/srv/算量/");
  EXPECT_EQ(Utf8(NativeSuite().UserPath()), "/srv/user/");
}

TEST(PosixSuite, UserFolderIsMadeAtNeed) {
  const test::ScratchFolder folder;
  const ScopedVariable data("XDG_DATA_HOME", (folder.Path() / "a" / "b").string());
  EXPECT_EQ(Utf8(NativeSuite().UserPath()), (folder.Path() / "a/b/Comm_LORV/").string());
  EXPECT_TRUE(fs::is_directory(folder.Path() / "a/b/Comm_LORV"));
}

// A terminal in the place of the error output, whose other end is read.
class TerminalAsErrors {
 public:
  TerminalAsErrors() : far_(posix_openpt(O_RDWR | O_NOCTTY)), before_(dup(STDERR_FILENO)) {
    EXPECT_EQ(grantpt(far_), 0);
    EXPECT_EQ(unlockpt(far_), 0);
    char name[64] = {};
    EXPECT_EQ(ptsname_r(far_, name, sizeof(name)), 0);
    near_ = open(name, O_RDWR | O_NOCTTY);
    dup2(near_, STDERR_FILENO);
  }
  TerminalAsErrors(const TerminalAsErrors&) = delete;
  TerminalAsErrors& operator=(const TerminalAsErrors&) = delete;
  ~TerminalAsErrors() {
    dup2(before_, STDERR_FILENO);
    for (const int file : {before_, near_, far_}) close(file);
  }
  // A terminal hands on what is written piece by piece, so a mark is awaited behind all of it.
  std::string Written() {
    constexpr char kMark = '\a';
    EXPECT_EQ(write(near_, &kMark, 1), 1);
    std::string text;
    while (text.empty() || text.back() != kMark) {
      char piece[1000];
      const ssize_t count = read(far_, piece, sizeof(piece));
      if (count <= 0) return text;
      text.append(piece, static_cast<std::size_t>(count));
    }
    text.pop_back();
    return text;
  }

 private:
  int far_;
  int before_;
  int near_ = -1;
};

TEST(TerminalProgress, IsWhatAnOperationShowsWithoutWindows) {
  TerminalAsErrors terminal;
  CProgressCom progress(4);
  EXPECT_TRUE(progress.StartProgress(_T("计算")));
  progress.StepProgress(1, _T("首层"));
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  progress.EndProgress();
  EXPECT_EQ(terminal.Written(),
            "\r计算   0% \x1b[K\r计算  25% \x1b[K\r计算  25% 首层\x1b[K\r计算 100% 首层\x1b[K\r\n");
}

TEST(TerminalProgress, WritesTheLineAnewAtEachPercent) {
  std::FILE* const out = std::tmpfile();
  ASSERT_NE(out, nullptr);
  {
    TerminalProgress progress(out);
    progress.SetTitle(_T("计算"));
    progress.SetProgress(1, 1000);
    progress.Open(kProgressAutoTime);
    progress.SetProgress(2, 1000);
    progress.SetProgress(500, 1000);
    progress.SetLine(2, _T("not shown"), false);
    progress.SetLine(1, _T("首层"), false);
    progress.SetProgress(0xFFFFFFFF, 10);
    EXPECT_FALSE(progress.HasUserCancelled());
  }
  std::rewind(out);
  std::string written(1000, '\0');
  written.resize(std::fread(written.data(), 1, written.size(), out));
  std::fclose(out);
  EXPECT_EQ(written, "\r计算   0% \x1b[K\r计算  50% \x1b[K\r计算  50% 首层\x1b[K\r计算 100% 首层\x1b[K\n");
}

}  // namespace
}  // namespace lorv
