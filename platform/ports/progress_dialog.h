#pragma once

#include <memory>

#include "framework/native/export.h"
#include "framework/text/cstring.h"

// A progress dialog, with the operations of the shell's. Lives on the user-interface thread.
namespace lorv {

constexpr DWORD kProgressAutoTime = 2;    // shows an estimate of the time left
constexpr DWORD kProgressTimerReset = 1;  // the estimate begins now

class COMM_LORV_API ProgressDialog {
 public:
  ProgressDialog() = default;
  ProgressDialog(const ProgressDialog&) = delete;
  ProgressDialog& operator=(const ProgressDialog&) = delete;
  virtual ~ProgressDialog() = default;

  virtual void SetTitle(LPCTSTR title) = 0;
  // An animation among the resources of a module; false when the process has not loaded that module.
  virtual bool SetAnimation(LPCTSTR module, UINT resource) = 0;
  virtual void Open(DWORD flags) = 0;
  // What is shown once the user has cancelled.
  virtual void SetCancelMessage(LPCTSTR message) = 0;
  virtual void Timer(DWORD action) = 0;
  virtual void SetProgress(DWORD position, DWORD total) = 0;
  virtual void SetLine(DWORD line, LPCTSTR text, bool compact_path) = 0;
  // Once true it stays true.
  virtual bool HasUserCancelled() = 0;
  virtual void Close() = 0;
};

}  // namespace lorv
