#pragma once

#include "framework/native/export.h"
#include "framework/native/window_types.h"

class CDC;

// Handles of device contexts, for calls that take one: such a call finds the context again, and with it its
// surface, origin and clip.
namespace lorv {

// A handle for a context while this object lives. It is no handle of the system's, on Windows either: it is
// for calls of this library.
//
// The context is not owned and must live as long; both belong to one thread, whichever.
//
//   const ContextHandle handle(dc);  image.DrawImage(handle.Get(), rect, 0);
class COMM_LORV_API ContextHandle {
 public:
  explicit ContextHandle(CDC& context);
  ContextHandle(const ContextHandle&) = delete;
  ContextHandle& operator=(const ContextHandle&) = delete;
  ~ContextHandle();

  HDC Get() const { return handle_; }

 private:
  HDC handle_;
};

// Null for a handle that no living ContextHandle has. Any thread.
COMM_LORV_API CDC* ContextOf(HDC handle);

}  // namespace lorv
