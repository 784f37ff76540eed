#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "comm/AdLorvComm.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/support/data.h"
#include "tests/support/print.h"

namespace lorv::test {
namespace {

namespace fs = std::filesystem;

CString TextOf(const fs::path& path) {
  return CString::FromUtf8(path.string());
}

TEST(Splitfilename, PartsPaths) {
  const struct {
    const char* path;
    const char* stem;
    const char* directory;
  } rows[] = {
      {"C:\\a\\b.txt", "b", "C:\\a\\"},
      {"C:\\a\\b", "b", "C:\\a\\"},
      {"C:b.txt", "b", "C:"},
      {"b.txt", "b", ""},
      {"", "", ""},
      {"\\a\\", "", "\\a\\"},
      {"/data/p/wall.dat", "wall", "/data/p/"},
      {"C:/a\\b.tar.gz", "b.tar", "C:/a\\"},
      {"C:\\a.b\\c", "c", "C:\\a.b\\"},
      {"C:\\a\\.txt", "", "C:\\a\\"},
      {"\\\\server\\share\\x.dat", "x", "\\\\server\\share\\"},
      {"C:\\工程\\墙.数据", "墙", "C:\\工程\\"},
      {"C:", "", "C:"},
      {"x:y:z.w", "y:z", "x:"},
  };
  for (const auto& row : rows) {
    CString directory(_T("old"));
    EXPECT_EQ(Utf8(Splitfilename(CString::FromUtf8(row.path), directory)), row.stem) << row.path;
    EXPECT_EQ(Utf8(directory), row.directory) << row.path;
  }
  CString directory(_T("old"));
  EXPECT_EQ(Utf8(Splitfilename(nullptr, directory)), "");
  EXPECT_EQ(Utf8(directory), "");
}

TEST(GetPathFile, FindsFilesThatFitAndNoFolders) {
  const ScratchFolder scratch;
  for (const char* name : {"WALL.DAT", "beam.dat", "note.txt"}) WriteBytes(scratch.Path() / name, "x");
  fs::create_directory(scratch.Path() / "sub.dat");
  WriteBytes(scratch.Path() / "sub.dat" / "inner.dat", "x");
  CStringArray list;
  list.Add(_T("old"));
  EXPECT_EQ(CAdLorvComm::GetPathFile(TextOf(scratch.Path()), _T("*.dat"), list, false), 2);
  ASSERT_EQ(list.GetSize(), 2);
  EXPECT_EQ(Utf8(list.GetAt(0)), "WALL.DAT");
  EXPECT_EQ(Utf8(list.GetAt(1)), "beam.dat");
  CAdLorvComm::TextList other;
  other.Add(_T("old"));
  EXPECT_EQ(CAdLorvComm::GetPathFile(TextOf(scratch.Path()), _T("*.*"), other, true), 3);
  ASSERT_EQ(other.size(), 3U);
  for (const CString& name : other) EXPECT_EQ(name, CString(name).MakeLower());
  EXPECT_EQ(CAdLorvComm::GetPathFile(TextOf(scratch.Path()), _T("sub.dat\\*"), list, false), 1);
  EXPECT_EQ(Utf8(list.GetAt(0)), "inner.dat");
}

TEST(GetPathFile, NothingFoundEmptiesTheList) {
  const ScratchFolder scratch;
  CStringArray list;
  list.Add(_T("old"));
  EXPECT_EQ(CAdLorvComm::GetPathFile(TextOf(scratch.Path()), _T("*.*"), list, false), 0);
  EXPECT_EQ(list.GetSize(), 0);
  EXPECT_EQ(CAdLorvComm::GetPathFile(TextOf(scratch.Path() / "absent"), _T("*"), list, false), 0);
}

TEST(RecycleFile, AsksTheShellWithTheseFlags) {
  HeadlessPlatform machine;
  machine.shell.result = 124;
  const ScopedPlatform scope(machine.Ports());
  EXPECT_EQ(RecycleFile(_T("C:\\a\\b.txt"), false), 124);
  EXPECT_EQ(RecycleFile(_T("C:\\a\\b.txt"), true), 124);
  ASSERT_EQ(machine.shell.operations.size(), 2U);
  EXPECT_EQ(machine.shell.operations[0].function, 3U);
  EXPECT_EQ(Utf8(machine.shell.operations[0].from), "C:\\a\\b.txt");
  EXPECT_EQ(machine.shell.operations[0].flags, 0x4 | 0x10 | 0x400 | 0x40);
  EXPECT_EQ(machine.shell.operations[1].flags, 0x4 | 0x10 | 0x400);
}

TEST(RecycleFile, PathIsCutTo260Characters) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  for (const int length : {259, 260, 261}) {
    RecycleFile(CString('x', length), true);
    EXPECT_EQ(machine.shell.operations.back().from.GetLength(), std::min(length, 260)) << length;
  }
}

TEST(RecycleFile, DeletesForGood) {
  const ScratchFolder scratch;
  WriteBytes(scratch.Path() / "x", "x");
  EXPECT_EQ(RecycleFile(TextOf(scratch.Path() / "x"), true), 0);
  EXPECT_FALSE(fs::exists(scratch.Path() / "x"));
  EXPECT_NE(RecycleFile(TextOf(scratch.Path() / "x"), true), 0) << "nothing is there";
}

TEST(ThreadTimes, DifferencesAreWholeMilliseconds) {
  int kernel = 0;
  int user = 0;
  EXPECT_EQ(CAdLorvComm::TransfomNsToMs(0, 0, 50000, 10000, kernel, user), 6);
  EXPECT_EQ(kernel, 5);
  EXPECT_EQ(user, 1);
  EXPECT_EQ(CAdLorvComm::TransfomNsToMs(50000, 0, 0, 19999, kernel, user), -4);
  EXPECT_EQ(kernel, -5);
  EXPECT_EQ(user, 1);
}

TEST(ThreadTimes, ComeFromTheProcess) {
  HeadlessPlatform machine;
  machine.process.times = {123, 456};
  const ScopedPlatform scope(machine.Ports());
  __int64 kernel = 0;
  __int64 user = 0;
  CAdLorvComm::GetThreadKernalAndUserTimes(kernel, user);
  EXPECT_EQ(kernel, 123);
  EXPECT_EQ(user, 456);
}

TEST(ThreadTimes, GrowWithWork) {
  __int64 kernel = 0;
  __int64 user = 0;
  CAdLorvComm::GetThreadKernalAndUserTimes(kernel, user);
  const __int64 before = kernel + user;
  // A system counts in slices of some milliseconds: this is several of them.
  volatile unsigned sum = 0;
  for (unsigned i = 0; i < 300'000'000; ++i) sum = sum + i;
  CAdLorvComm::GetThreadKernalAndUserTimes(kernel, user);
  EXPECT_GT(kernel + user, before);
}

}  // namespace
}  // namespace lorv::test
