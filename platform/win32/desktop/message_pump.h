#pragma once

#include <optional>
#include <utility>

#include "framework/native/export.h"
#include "framework/native/window_types.h"
#include "platform/models/carried_fault.h"

// How a message from the queue comes to the window classes before it is delivered, in any loop.
//
// On the thread of a Win32 desktop a hook sees each message that a loop takes out: ours, the host's, and
//   those that the system runs for its own dialogs. A message that a class took reaches its window as
//   nothing (WM_NULL without a window). While a menu is up no class is asked.
// Where a hook is not let in, the host asks by itself, for each message before it translates or delivers it:
//
//   while (GetMessageW(&message, nullptr, 0, 0) > 0)
//     if (!lorv::OfferHostMessage(&message)) { TranslateMessage(&message); DispatchMessageW(&message); }
//
// Result: true if a class took the message. A message that the hook has offered is not offered again, so
//   asking does no harm. False without a desktop. Called on the thread of the user interface.
namespace lorv {

COMM_LORV_API bool OfferHostMessage(MSG* message);

// Whether the thread is in a menu, ours or the host's.
bool IsMenuUp();

// The hook, for as long as it lives.
class MessageHook {
 public:
  MessageHook();
  MessageHook(const MessageHook&) = delete;
  MessageHook& operator=(const MessageHook&) = delete;
  ~MessageHook();

 private:
  HHOOK hook_;
};

// A loop of the system's that runs within a call of ours and knows nothing of WM_QUIT: a menu's, a drag's.
// `end` closes it when that comes, and the loops around it come upon WM_QUIT again.
class SystemLoop {
 public:
  explicit SystemLoop(void (*end)());
  SystemLoop(const SystemLoop&) = delete;
  SystemLoop& operator=(const SystemLoop&) = delete;
  ~SystemLoop();

  // Runs it; what a handler throws meanwhile comes out behind it.
  template <class Loop>
  static auto Run(Loop loop, void (*end)()) {
    const SystemLoop within(end);
    return CarriedFault::CallOut(std::move(loop));
  }
  // For the hook: the loop took WM_QUIT off the queue.
  static void TakeQuit(int code);

 private:
  void (*end_)();
  SystemLoop* outer_;
  std::optional<int> taken_;
};

enum class PumpStep { kNothing, kDispatched, kQuit };

// Takes one message and dispatches it.
PumpStep PumpOne(bool wait);
// What the last WM_QUIT of the thread carried that PumpOne came upon.
std::optional<int> LastQuitCode();

}  // namespace lorv
