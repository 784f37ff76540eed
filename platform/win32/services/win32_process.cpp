#include <algorithm>
#include <vector>

#include "platform/ports/process.h"

// What the process knows of itself, by the system's calls.

namespace lorv {
namespace {

std::int64_t ToCount(const FILETIME& time) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(time.dwHighDateTime) << 32 |
                                   time.dwLowDateTime);
}

std::vector<BYTE> VersionBlock(LPCTSTR path) {
  DWORD ignored = 0;
  std::vector<BYTE> block(GetFileVersionInfoSizeW(path, &ignored));
  if (block.empty() || !GetFileVersionInfoW(path, 0, static_cast<DWORD>(block.size()), block.data())) {
    return {};
  }
  return block;
}

class Win32Process : public Process {
 public:
  CString ModulePath(HINSTANCE module, int limit) override {
    std::vector<TCHAR> path(static_cast<std::size_t>(std::max(limit, 1)) + 1);
    GetModuleFileNameW(module, path.data(), static_cast<DWORD>(std::max(limit, 1)));
    // The callers' buffers hold one unit less than their size.
    return CString(static_cast<LPCTSTR>(path.data())).Left(limit - 1);
  }

  std::optional<CString> VersionText(LPCTSTR path, LPCTSTR block) override {
    const std::vector<BYTE> version = VersionBlock(path);
    void* text = nullptr;
    UINT length = 0;
    if (version.empty() || !VerQueryValueW(version.data(), block, &text, &length) || length == 0) {
      return std::nullopt;
    }
    return CString(static_cast<LPCTSTR>(text));  // the block ends its texts
  }

  std::uint64_t FreePhysicalMemory() override {
    // The call that the report's numbers are defined by.
    MEMORYSTATUS memory;
    GlobalMemoryStatus(&memory);
    return memory.dwAvailPhys;
  }

  bool CallLoadedModule(LPCTSTR module, int ordinal, void* record) override {
    const HMODULE loaded = GetModuleHandleW(module);
    if (loaded == nullptr) return false;
    using Entry = void(WINAPI*)(void*);
    // By number: the entry has no name.
    const FARPROC found = GetProcAddress(loaded, MAKEINTRESOURCEA(ordinal));
    if (found == nullptr) return false;
    reinterpret_cast<Entry>(reinterpret_cast<void*>(found))(record);
    return true;
  }

  ThreadTimes TimesOfThread() override {
    FILETIME creation;
    FILETIME end;
    FILETIME kernel;
    FILETIME user;
    if (!GetThreadTimes(GetCurrentThread(), &creation, &end, &kernel, &user)) return {};
    return {ToCount(kernel), ToCount(user)};
  }
};

}  // namespace

Process& NativeProcess() {
  static Win32Process process;
  return process;
}

}  // namespace lorv
