#pragma once

#include <memory>

#include "framework/native/export.h"
#include "framework/native/window_types.h"

// The live windows of the process: which handle belongs to which object. It is the one place where a handle
// becomes a pointer, so an object that is gone can never be called.
//
// Threads: that of the user interface.
// Edges: a handle that is not there is answered with null, 0 and false.
//
//   MapWindow(handle, &target);  DeliverMessage(handle, WM_CLOSE, 0, 0)  runs target.WindowProc
namespace lorv {

class AccessibleCells;
class AccessibleObject;

// What has messages delivered to it: CWnd, or a test's own.
class COMM_LORV_API MessageTarget {
 public:
  MessageTarget() = default;
  MessageTarget(const MessageTarget&) = delete;
  MessageTarget& operator=(const MessageTarget&) = delete;
  virtual ~MessageTarget() = default;

  virtual LRESULT HandleMessage(HWND window, UINT message, WPARAM w, LPARAM l) = 0;
  // Whether it took the message, which is then not delivered. It may change the message.
  virtual bool TakeMessage(MSG& message) = 0;
  // How screen readers see what it draws itself (framework/ports/accessible_port.h): by a tree of its own, or
  // by the cells of a table, which must live as long as the target. Null: as any window.
  virtual std::shared_ptr<AccessibleObject> GetAccessible() { return nullptr; }
  virtual AccessibleCells* GetAccessibleCells() { return nullptr; }
};

// The target is not owned; it takes itself out before it ends.
COMM_LORV_API void MapWindow(HWND window, MessageTarget* target);
COMM_LORV_API void UnmapWindow(HWND window);
COMM_LORV_API MessageTarget* MappedWindow(HWND window);

// For peers. Every message to a window of ours comes through here, sent, posted or made by the window system;
// a window without an object gets its peer's default behaviour. The window may be gone afterwards.
COMM_LORV_API LRESULT DeliverMessage(HWND window, UINT message, WPARAM w, LPARAM l);

// For peers, before a message from the queue is delivered: asks the window and its parents in turn, the inner
// windows of native controls passed over. True: it was taken and must not be delivered. A peer does not ask
// while a menu is up.
COMM_LORV_API bool OfferMessage(MSG& message);

}  // namespace lorv
