#include <gtest/gtest.h>

#include <filesystem>

#include "platform/ports/shared_library.h"
#include "tests/support/data.h"

// Where the system looks for a library that is opened by its bare name.
namespace lorv::test {
namespace {

class WorkingFolder {
 public:
  explicit WorkingFolder(const std::filesystem::path& folder) : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(folder);
  }
  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;
  ~WorkingFolder() { std::filesystem::current_path(before_); }

 private:
  std::filesystem::path before_;
};

TEST(Win32Library, TheSystemsOwnAreFound) {
  const auto library = OpenSharedLibrary({"lorv_is_nowhere.dll", "kernel32.dll"});
  ASSERT_NE(library, nullptr);
  EXPECT_NE(library->Find("GetTickCount"), nullptr);
  EXPECT_EQ(library->Find("LorvIsNoFunction"), nullptr);
}

TEST(Win32Library, TheWorkingFolderIsNotSearched) {
  const ScratchFolder scratch;
  WriteBytes(scratch.Path() / "lorv_planted.dll", "what somebody put beside a project");
  const WorkingFolder inside(scratch.Path());
  EXPECT_EQ(OpenSharedLibrary({"lorv_planted.dll"}), nullptr);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND)) << "it was looked into";
}

}  // namespace
}  // namespace lorv::test
