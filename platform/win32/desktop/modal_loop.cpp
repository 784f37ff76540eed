#include "platform/win32/desktop/modal_loop.h"

#include <utility>
#include <vector>

#include "platform/win32/desktop/message_pump.h"

// Modal loops over the system's queue. The owner is enabled before the dialog goes, else the system activates
// another program's window; this also holds when a handler throws.

namespace lorv {
namespace {

// A dialog that is waited for, and its owner, which is kept from the user meanwhile.
class ModalRun {
 public:
  explicit ModalRun(HWND dialog) : dialog_(dialog), owner_(GetWindow(dialog, GW_OWNER)) {
    Live().push_back(this);
    if (owner_ != nullptr) owner_rests_ = EnableWindow(owner_, FALSE) == 0;
  }
  ModalRun(const ModalRun&) = delete;
  ModalRun& operator=(const ModalRun&) = delete;
  ~ModalRun() {
    FreeOwner();
    std::erase(Live(), this);
    if (owner_ == nullptr || !IsWindow(owner_) || !IsWindowEnabled(owner_)) return;
    const HWND active = GetActiveWindow();
    if (active != nullptr && active != dialog_) return;
    // Where no window is in front it is brought there, but never in front of another program's active one.
    if (GetForegroundWindow() == nullptr) {
      SetForegroundWindow(owner_);
    } else {
      SetActiveWindow(owner_);
    }
  }

  static std::vector<ModalRun*>& Live() {
    static std::vector<ModalRun*> live;
    return live;
  }
  HWND Dialog() const { return dialog_; }
  bool Goes() const { return !ended_ && IsWindow(dialog_); }
  void End() { ended_ = true; }
  void FreeOwner() {
    if (std::exchange(owner_rests_, false) && IsWindow(owner_)) EnableWindow(owner_, TRUE);
  }

 private:
  HWND dialog_;
  HWND owner_;
  bool owner_rests_ = false;
  bool ended_ = false;
};

}  // namespace

void RunModalLoop(HWND dialog) {
  if (!IsWindow(dialog)) return;
  const ModalRun run(dialog);
  while (run.Goes()) {
    if (PumpOne(true) != PumpStep::kQuit) continue;
    // The end of the program concerns the outer loops as well.
    PostQuitMessage(LastQuitCode().value_or(0));
    return;
  }
}

void EndModalLoop(HWND dialog) {
  for (ModalRun* const run : ModalRun::Live())
    if (run->Dialog() == dialog) run->End();
  // The loop may be waiting for a message, and nothing else need come.
  WakeModalLoop();
}

void FreeModalOwner(HWND dialog) {
  for (ModalRun* const run : ModalRun::Live())
    if (run->Dialog() == dialog) run->FreeOwner();
}

void WakeModalLoop() {
  if (!ModalRun::Live().empty()) PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

}  // namespace lorv
