#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/ports/files.h"
#include "tests/support/data.h"

// What the system itself does with files, on which the other systems' conduct is modelled.
namespace lorv::test {
namespace {

TEST(Win32Files, SystemNeitherDeletesNorOverwritesNorReplacesAReadOnlyFile) {
  const ScratchFolder scratch;
  const std::wstring path = (scratch.Path() / "f").wstring();
  const std::wstring other = (scratch.Path() / "g").wstring();
  WriteBytes(path, "mine");
  WriteBytes(other, "fresh");
  ASSERT_NE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY), 0);
  EXPECT_EQ(DeleteFileW(path.c_str()), 0);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
  const HANDLE created = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                     CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  EXPECT_EQ(created, INVALID_HANDLE_VALUE);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
  EXPECT_EQ(MoveFileExW(other.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING), 0);
  EXPECT_EQ(ReadBytes(path), "mine");
  ASSERT_NE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL), 0);
  EXPECT_NE(DeleteFileW(path.c_str()), 0);
}

TEST(Win32Files, DevicesAreStreams) {
  for (const LPCTSTR path : {_T("NUL"), _T("nul"), _T("\\\\.\\NUL")}) {
    const auto facts = NativeFiles().Facts(path);
    ASSERT_TRUE(facts);
    EXPECT_TRUE(facts->is_stream);
    const auto file = NativeFiles().Open(path, FileUse::kStream);
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->Write("hello", 5) && file->Sync());
  }
  const ScratchFolder scratch;
  WriteBytes(scratch.Path() / "f", "x");
  EXPECT_FALSE(NativeFiles().Facts((scratch.Path() / "f").wstring().c_str())->is_stream);
  EXPECT_FALSE(NativeFiles().Open((scratch.Path() / "g").wstring().c_str(), FileUse::kStream));
}

TEST(Win32Files, NewFileCanBeTakenAwayWhileItIsOpen) {
  const ScratchFolder scratch;
  const std::wstring path = (scratch.Path() / "f").wstring();
  {
    const auto file = NativeFiles().Open(path.c_str(), FileUse::kCreateNew);
    ASSERT_TRUE(file);
    EXPECT_NE(DeleteFileW(path.c_str()), 0);
  }
  EXPECT_FALSE(NativeFiles().Exists(path.c_str()));
}

}  // namespace
}  // namespace lorv::test
