#include <algorithm>
#include <utility>

#include "framework/ports/window_map.h"
#include "platform/models/desktop/desktop_model.h"
#include "platform/models/first_fault.h"

// The queue of posted messages, and the loops of modal dialogs. Posting is for any thread; a message is taken
// off the queue under the lock and delivered outside it, since its handler may post.

namespace lorv {

// A dialog that is waited for, and its owner, which is kept from the user meanwhile and has itself back
// however the loop ends, by an exception too.
class DesktopModel::ModalRun {
 public:
  ModalRun(DesktopModel& desktop, HWND dialog, HWND owner)
      : desktop_(desktop), dialog_(dialog), owner_(desktop.At(owner)) {
    // Disabled by somebody else, it is not ours to enable.
    if (owner_ != nullptr && (owner_->Style() & WS_DISABLED) != 0) owner_ = nullptr;
  }
  ModalRun(const ModalRun&) = delete;
  ModalRun& operator=(const ModalRun&) = delete;

  void Start() {
    desktop_.modal_.push_back(dialog_);
    if (owner_ != nullptr) owner_->Enable(false);
  }
  bool Goes() const {
    const auto& modal = desktop_.modal_;
    return desktop_.StillThere(dialog_) && std::find(modal.begin(), modal.end(), dialog_) != modal.end();
  }
  void End() {
    std::erase(desktop_.modal_, dialog_);
    if (owner_ == nullptr) return;
    owner_->Enable(true);
    // Another window that was activated meanwhile keeps its place.
    const bool leaderless = desktop_.active_ == nullptr || desktop_.active_ == dialog_;
    if (owner_->Exists() && leaderless) desktop_.ActivateTop(owner_->Handle());
  }

 private:
  DesktopModel& desktop_;
  HWND dialog_;
  std::shared_ptr<WindowModel> owner_;
};

bool DesktopModel::Post(HWND window, UINT message, WPARAM w, LPARAM l) {
  {
    // Before the lock, which the clock of a desktop may take itself.
    const DWORD now = Ticks();
    const std::lock_guard<std::mutex> lock(mutex_);
    if (window != nullptr && windows_.count(window) == 0) return false;
    posted_.push_back({window, message, w, l, now, mouse_});
  }
  // Outside the lock: it may wake the thread of the windows at once.
  MessagePosted();
  return true;
}

LRESULT DesktopModel::Send(HWND window, UINT message, WPARAM w, LPARAM l) {
  return StillThere(window) ? DeliverMessage(window, message, w, l) : 0;
}

MSG DesktopModel::MessageNow(HWND window, UINT message, WPARAM w, LPARAM l) const {
  return {window, message, w, l, Ticks(), CursorPosition()};
}

void DesktopModel::Deliver(MSG message) {
  // A menu takes its keys by its own window: no other window is offered them.
  if (!MenuUp() && OfferMessage(message)) return;
  if (!StillThere(message.hwnd)) return;
  Translate(message);
  DeliverMessage(message.hwnd, message.message, message.wParam, message.lParam);
}

bool DesktopModel::PumpPosted() {
  MSG message = {};
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (posted_.empty()) return false;
    message = posted_.front();
    posted_.pop_front();
  }
  if (message.hwnd == nullptr && message.message == WM_QUIT) {
    // Kept, as the outermost caller asks for it after all loops have ended.
    quit_code_ = static_cast<int>(message.wParam);
    quits_ = true;
    host_loop_ended_ = EndHostLoop(*quit_code_);
    return true;
  }
  Deliver(message);
  return true;
}

bool DesktopModel::Pump(bool wait) {
  quits_ = false;
  const bool handled = PumpOnce(wait);
  return handled && !quits_;
}

bool DesktopModel::DispatchModal(HWND /*dialog*/) {
  Pump(true);
  return true;
}

void DesktopModel::RunModal(HWND dialog) {
  const auto window = At(dialog);
  if (window == nullptr) return;
  ModalRun run(*this, dialog, TopOf(window->Owner()));
  quits_ = false;
  FirstFault fault;
  fault.Run([&] {
    run.Start();
    while (run.Goes() && !quits_ && DispatchModal(dialog)) {
    }
  });
  // Kept before the end of the dialog is reported, whose handlers may pump.
  const bool quits = quits_;
  fault.Run([&] { run.End(); });
  quits_ = quits;
  PassQuitOn();
  fault.Rethrow();
}

// The end of the program concerns the outer loops as well: they meet it again. Where a loop of the host's
// has the code already, it stays with that.
void DesktopModel::PassQuitOn() {
  if (!quits_ || host_loop_ended_) return;
  quits_ = false;
  Post(nullptr, WM_QUIT, static_cast<WPARAM>(*quit_code_), 0);
}

void DesktopModel::EndModal(HWND dialog) {
  std::erase(modal_, dialog);
}

}  // namespace lorv
