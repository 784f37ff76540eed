#include <gtest/gtest.h>

#include "comm/AdLorvComm.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/support/data.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

CString TextOf(const std::filesystem::path& path) {
  const auto bytes = path.u8string();
  return CString::FromUtf8({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

TEST(CreatePath, IsTrueForAFolderThatIsThere) {
  const test::ScratchFolder scratch;
  const CString folder = TextOf(scratch.Path());
  EXPECT_TRUE(CAdLorvComm::CreatePath(folder));  // empty
  test::WriteBytes(scratch.Path() / "a.txt", "x");
  EXPECT_TRUE(CAdLorvComm::CreatePath(folder));  // with a file
  EXPECT_TRUE(CAdLorvComm::CreatePath(folder + _T("\\")));
  EXPECT_TRUE(CAdLorvComm::CreatePath(folder + _T("/")));
}

TEST(CreatePath, MakesOneLevelOnly) {
  const test::ScratchFolder scratch;
  const CString folder = TextOf(scratch.Path());
  EXPECT_FALSE(CAdLorvComm::CreatePath(folder + _T("\\one\\two")));
  EXPECT_FALSE(std::filesystem::exists(scratch.Path() / "one"));
  EXPECT_TRUE(CAdLorvComm::CreatePath(folder + _T("\\one")));
  EXPECT_TRUE(std::filesystem::is_directory(scratch.Path() / "one"));
  EXPECT_TRUE(CAdLorvComm::CreatePath(folder + _T("\\one\\two")));
  EXPECT_TRUE(std::filesystem::is_directory(scratch.Path() / "one" / "two"));
}

TEST(CreatePath, IsFalseWhereAFileStands) {
  const test::ScratchFolder scratch;
  test::WriteBytes(scratch.Path() / "a.txt", "x");
  EXPECT_FALSE(CAdLorvComm::CreatePath(TextOf(scratch.Path() / "a.txt")));
}

TEST(CreatePath, IsFalseWhenTheSystemRefuses) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  machine.files.refused.insert(_T("C:\\new"));
  EXPECT_FALSE(CAdLorvComm::CreatePath(_T("C:\\new")));
  EXPECT_TRUE(CAdLorvComm::CreatePath(_T("C:\\other")));
}

TEST(CreatePath, TheEmptyPathIsTheTopFolder) {
  EXPECT_TRUE(CAdLorvComm::CreatePath(_T("")));
  EXPECT_TRUE(CAdLorvComm::CreatePath(nullptr));
}

TEST(CreateNotepadProcess, OpensTheTextViewerAndDoesNotWait) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  EXPECT_TRUE(CAdLorvComm::CreateNotepadProcess(_T("C:\\日志.txt")));
  ASSERT_EQ(machine.shell.started.size(), 1U);
  const ShellStart& start = machine.shell.started[0];
  EXPECT_EQ(Utf8(start.verb), "open");
  EXPECT_EQ(Utf8(start.file), "notepad.exe");
  EXPECT_EQ(Utf8(start.parameters), "C:\\日志.txt");
  EXPECT_EQ(start.show, 10);
  EXPECT_EQ(start.mask, 0x40U);
  machine.shell.starts = false;
  EXPECT_FALSE(CAdLorvComm::CreateNotepadProcess(_T("C:\\a.txt")));
}

}  // namespace
}  // namespace lorv
