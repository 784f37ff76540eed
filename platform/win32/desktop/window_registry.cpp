#include "platform/win32/desktop/window_registry.h"

#include <mutex>
#include <unordered_map>

// Which of our objects stands behind a handle. The system calls the window procedure with handles on any
// thread, so the map is guarded.

namespace lorv {
namespace {

struct Registry {
  std::mutex mutex;
  std::unordered_map<HWND, std::shared_ptr<Win32Window>> windows;
};

// Never ended: windows may still go while the process ends.
Registry& Live() {
  static Registry& live = *new Registry;
  return live;
}

}  // namespace

void RegisterWindow(HWND handle, const std::shared_ptr<Win32Window>& window) {
  const std::lock_guard<std::mutex> lock(Live().mutex);
  Live().windows[handle] = window;
}

void ForgetWindow(HWND handle) {
  std::shared_ptr<Win32Window> last;  // ends outside the lock
  const std::lock_guard<std::mutex> lock(Live().mutex);
  const auto found = Live().windows.find(handle);
  if (found == Live().windows.end()) return;
  last = std::move(found->second);
  Live().windows.erase(found);
}

std::shared_ptr<Win32Window> RegisteredWindow(HWND handle) {
  const std::lock_guard<std::mutex> lock(Live().mutex);
  const auto found = Live().windows.find(handle);
  return found == Live().windows.end() ? nullptr : found->second;
}

}  // namespace lorv
