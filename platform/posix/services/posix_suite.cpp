#include <filesystem>
#include <string>
#include <system_error>

#include "platform/ports/process.h"
#include "platform/ports/suite.h"
#include "platform/posix/services/user_folders.h"

// The suite's folders: named by the environment, else the program's own folder and the user's folder for
// data. The user's folder is made at need.

namespace lorv {
namespace {

constexpr TCHAR kSeparator = '/';

class PosixSuite : public Suite {
 public:
  CString RootFolder() override {
    const std::string named = EnvironmentValue("COMM_LORV_ROOT");
    if (!named.empty()) return WithSeparator(CString::FromUtf8(named), kSeparator);
    const CString program = NativeProcess().ModulePath(nullptr, kLongestPath);
    return program.Left(program.ReverseFind(kSeparator) + 1);
  }

  CString UserPath() override {
    const std::string named = EnvironmentValue("COMM_LORV_USER");
    if (!named.empty()) return WithSeparator(CString::FromUtf8(named), kSeparator);
    const std::string folder = UserFolder("XDG_DATA_HOME", ".local/share");
    std::error_code unmade;  // opening a file there will say so
    std::filesystem::create_directories(folder, unmade);
    return WithSeparator(CString::FromUtf8(folder), kSeparator);
  }

  CString SupportAddress() override {
    const std::string named = EnvironmentValue("COMM_LORV_SUPPORT");
    return named.empty() ? CString(kSupportAddress) : CString::FromUtf8(named);
  }

 private:
  static constexpr int kLongestPath = 4096;
};

}  // namespace

Suite& NativeSuite() {
  static PosixSuite suite;
  return suite;
}

}  // namespace lorv
