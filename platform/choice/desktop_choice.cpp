#include "platform/choice/desktop_choice.h"

#include <atomic>
#include <memory>
#include <mutex>

#include "platform/choice/native_desktops.h"

// Which desktop serves a process: chosen once, by a call or at the first question, and never ended. Asking
// from inside the making of a desktop is refused; without that it would wait for itself.

IMPLEMENT_DYNAMIC(lorv::DesktopFailure, CResourceException)

namespace lorv {
namespace {

struct Choice {
  DesktopKind kind;
  std::unique_ptr<Desktop> desktop;
};

// Never ended: windows may be left at the end of the process, and asked then.
std::atomic<Choice*> chosen{nullptr};
std::recursive_mutex choosing;
bool making = false;  // under the lock

LPCTSTR NameOf(DesktopKind kind) {
  constexpr LPCTSTR kNames[] = {_T("headless"), _T("qt"), _T("windows")};
  return kNames[static_cast<int>(kind)];
}

// What a desktop in the making calls must not ask for the desktop.
class Making {
 public:
  Making() {
    if (making) throw new DesktopFailure(_T("桌面正在建立，还不能使用。"));
    making = true;
  }
  Making(const Making&) = delete;
  Making& operator=(const Making&) = delete;
  ~Making() { making = false; }
};

Choice& Choose(DesktopKind kind) {
  const Making now;
  auto made = std::make_unique<Choice>(Choice{kind, MakeDesktop(kind)});
  chosen.store(made.get(), std::memory_order_release);
  return *made.release();
}

}  // namespace

void ChooseDesktop(DesktopKind kind) {
  const std::lock_guard<std::recursive_mutex> lock(choosing);
  const Choice* const before = chosen.load();
  if (before == nullptr) {
    Choose(kind);
  } else if (before->kind != kind) {
    CString reason;
    reason.Format(_T("桌面已选定为 %s，不能再改为 %s。"), NameOf(before->kind), NameOf(kind));
    throw new DesktopFailure(reason);
  }
}

std::optional<DesktopKind> ChosenKind() {
  const Choice* const choice = chosen.load(std::memory_order_acquire);
  return choice == nullptr ? std::nullopt : std::optional(choice->kind);
}

Desktop& ChosenDesktop() {
  const Choice* const before = chosen.load(std::memory_order_acquire);
  if (before != nullptr) return *before->desktop;
  const std::lock_guard<std::recursive_mutex> lock(choosing);
  const Choice* const meanwhile = chosen.load();
  return meanwhile != nullptr ? *meanwhile->desktop : *Choose(UsualDesktop()).desktop;
}

}  // namespace lorv
