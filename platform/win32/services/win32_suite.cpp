#include "platform/win32/services/shell_headers.h"

#include <vector>

#include "platform/ports/process.h"
#include "platform/ports/suite.h"

// The suite's folders: named by the environment, else the program's own folder and the user's folder for
// data, which is made at need.

namespace lorv {
namespace {

constexpr TCHAR kSeparator = '\\';
constexpr int kLongestPath = 4096;

CString EnvironmentValue(LPCTSTR name) {
  std::vector<TCHAR> value(kLongestPath);
  const DWORD length = GetEnvironmentVariableW(name, value.data(), kLongestPath);
  // A value that does not fit is none: half a path would name another folder.
  return length < kLongestPath ? CString(value.data(), static_cast<int>(length)) : CString();
}

CString ApplicationData() {
  std::vector<TCHAR> folder(MAX_PATH);
  const HRESULT result =
      SHGetFolderPathW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, folder.data());
  return SUCCEEDED(result) ? CString(static_cast<LPCTSTR>(folder.data())) : CString();
}

class Win32Suite : public Suite {
 public:
  CString RootFolder() override {
    const CString named = EnvironmentValue(_T("COMM_LORV_ROOT"));
    if (!named.IsEmpty()) return WithSeparator(named, kSeparator);
    const CString program = NativeProcess().ModulePath(nullptr, kLongestPath);
    return program.Left(program.ReverseFind(kSeparator) + 1);
  }

  CString UserPath() override {
    const CString named = EnvironmentValue(_T("COMM_LORV_USER"));
    if (!named.IsEmpty()) return WithSeparator(named, kSeparator);
    const CString folder = WithSeparator(ApplicationData(), kSeparator) + _T("Comm_LORV");
    CreateDirectoryW(folder, nullptr);  // if it fails, opening a file there will say so
    return folder + kSeparator;
  }

  CString SupportAddress() override {
    const CString named = EnvironmentValue(_T("COMM_LORV_SUPPORT"));
    return named.IsEmpty() ? CString(kSupportAddress) : named;
  }
};

}  // namespace

Suite& NativeSuite() {
  static Win32Suite suite;
  return suite;
}

}  // namespace lorv
