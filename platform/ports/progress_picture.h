#pragma once

#include <vector>

#include "framework/native/export.h"
#include "framework/native/window_types.h"

namespace lorv {

// A progress dialog that gives what it shows: one whose window is drawn by this process. A dialog offers it
// by deriving from this class as well; that of the system's shell does not.
// One thread: that of the user interface.
class COMM_LORV_API ProgressPicture {
 public:
  ProgressPicture() = default;
  ProgressPicture(const ProgressPicture&) = delete;
  ProgressPicture& operator=(const ProgressPicture&) = delete;
  virtual ~ProgressPicture() = default;

  // As WindowPeer::Picture.
  virtual std::vector<DWORD> Picture(SIZE& size) = 0;
};

}  // namespace lorv
