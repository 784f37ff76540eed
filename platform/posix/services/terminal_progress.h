#pragma once

#include <cstdio>
#include <string>

#include "platform/ports/progress_dialog.h"

namespace lorv {

// A progress dialog as one line of a terminal, written anew at each whole percent: title, first line and the
// share done. It has no way to cancel but the terminal's own.
class TerminalProgress : public ProgressDialog {
 public:
  // `out` stays the caller's.
  explicit TerminalProgress(std::FILE* out) : out_(out) {}
  ~TerminalProgress() override { TerminalProgress::Close(); }

  void SetTitle(LPCTSTR title) override;
  bool SetAnimation(LPCTSTR /*module*/, UINT /*resource*/) override { return true; }
  void Open(DWORD flags) override;
  void SetCancelMessage(LPCTSTR /*message*/) override {}
  void Timer(DWORD /*action*/) override {}
  void SetProgress(DWORD position, DWORD total) override;
  void SetLine(DWORD line, LPCTSTR text, bool compact_path) override;
  bool HasUserCancelled() override { return false; }
  void Close() override;

 private:
  void Print();

  std::FILE* out_;
  std::string title_;
  std::string line_;
  int percent_ = 0;
  bool open_ = false;
};

}  // namespace lorv
