#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/ports/files.h"
#include "tests/support/data.h"

// What the system itself does with files, on which the other systems' behaviour is modelled.
namespace lorv::test {
namespace {

TEST(Win32Files, SystemDoesNotDeleteAReadOnlyFile) {
  const ScratchFolder scratch;
  const std::wstring path = (scratch.Path() / "f").wstring();
  WriteBytes(path, "mine");
  ASSERT_NE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY), 0);
  EXPECT_EQ(DeleteFileW(path.c_str()), 0);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
  EXPECT_EQ(ReadBytes(path), "mine");
  FileError error;
  EXPECT_FALSE(NativeFiles().Open(path.c_str(), FileUse::kCreate, &error));
  EXPECT_EQ(error.system, ERROR_ACCESS_DENIED);
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
