#include "platform/win32/modal_loop.h"

#include <algorithm>
#include <vector>

#include "platform/win32/message_pump.h"

namespace lorv {
namespace {

std::vector<HWND>& Running() {
  static std::vector<HWND> running;
  return running;
}

bool Runs(HWND dialog) {
  return std::count(Running().begin(), Running().end(), dialog) != 0 && IsWindow(dialog);
}

// Keeps the owner from the user while a dialog is up.
class OwnerAtRest {
 public:
  explicit OwnerAtRest(HWND dialog) : dialog_(dialog), owner_(GetWindow(dialog, GW_OWNER)) {
    if (owner_ != nullptr) was_disabled_ = EnableWindow(owner_, FALSE) != 0;
  }
  OwnerAtRest(const OwnerAtRest&) = delete;
  OwnerAtRest& operator=(const OwnerAtRest&) = delete;
  ~OwnerAtRest() {
    if (owner_ == nullptr || was_disabled_ || !IsWindow(owner_)) return;
    EnableWindow(owner_, TRUE);
    // A dialog that was hidden while its owner was disabled has handed the activation to nobody of ours.
    const HWND active = GetActiveWindow();
    if (active == nullptr || active == dialog_) SetActiveWindow(owner_);
  }

 private:
  HWND dialog_;
  HWND owner_;
  bool was_disabled_ = false;
};

class WaitingFor {
 public:
  explicit WaitingFor(HWND dialog) : dialog_(dialog) { Running().push_back(dialog); }
  WaitingFor(const WaitingFor&) = delete;
  WaitingFor& operator=(const WaitingFor&) = delete;
  ~WaitingFor() { std::erase(Running(), dialog_); }

 private:
  HWND dialog_;
};

}  // namespace

void RunModalLoop(HWND dialog) {
  if (!IsWindow(dialog)) return;
  const OwnerAtRest owner(dialog);
  const WaitingFor waiting(dialog);
  while (Runs(dialog)) {
    if (PumpOne(true) != PumpStep::kQuit) continue;
    // The end of the program is the outer loops' affair as well.
    PostQuitMessage(0);
    return;
  }
}

void EndModalLoop(HWND dialog) {
  if (std::erase(Running(), dialog) != 0) PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

void WakeModalLoop() {
  if (!Running().empty()) PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

}  // namespace lorv
