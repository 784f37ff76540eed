#include "platform/win32/services/shell_progress.h"

#include "platform/win32/services/shell_headers.h"

// The shell's progress dialog behind the port, call by call with the interface's parameters.

namespace lorv {
namespace {

// {F8383852-FCD3-11D1-A6B9-006097DF5BD4} and {EBBC7C04-315E-11D2-B62F-006097DF5BD4}
constexpr CLSID kDialogClass = {0xF8383852, 0xFCD3, 0x11D1, {0xA6, 0xB9, 0x00, 0x60, 0x97, 0xDF, 0x5B, 0xD4}};
constexpr IID kDialogInterface = {
    0xEBBC7C04, 0x315E, 0x11D2, {0xB6, 0x2F, 0x00, 0x60, 0x97, 0xDF, 0x5B, 0xD4}};

class ShellProgress : public ProgressDialog {
 public:
  explicit ShellProgress(IProgressDialog* dialog) : dialog_(dialog) {}
  // One that is let go of while it is up is closed first: its thread would wait for ours, and ours for it.
  ~ShellProgress() override {
    if (up_) dialog_->StopProgressDialog();
    dialog_->Release();
  }

  void SetTitle(LPCTSTR title) override { dialog_->SetTitle(title); }
  bool SetAnimation(LPCTSTR module, UINT resource) override {
    // Only a module that is loaded already: its animation is not worth loading one.
    const HMODULE loaded = GetModuleHandleW(module);
    if (loaded == nullptr) return false;
    dialog_->SetAnimation(loaded, resource);
    return true;
  }
  void Open(DWORD flags) override {
    up_ = SUCCEEDED(dialog_->StartProgressDialog(nullptr, nullptr, flags, nullptr));
  }
  void SetCancelMessage(LPCTSTR message) override { dialog_->SetCancelMsg(message, nullptr); }
  void Timer(DWORD action) override { dialog_->Timer(action, nullptr); }
  void SetProgress(DWORD position, DWORD total) override { dialog_->SetProgress(position, total); }
  void SetLine(DWORD line, LPCTSTR text, bool compact_path) override {
    dialog_->SetLine(line, text, compact_path ? TRUE : FALSE, nullptr);
  }
  bool HasUserCancelled() override { return dialog_->HasUserCancelled() == TRUE; }
  void Close() override {
    up_ = false;
    dialog_->StopProgressDialog();
  }

 private:
  IProgressDialog* dialog_;
  bool up_ = false;
};

}  // namespace

std::unique_ptr<ProgressDialog> MakeShellProgress() {
  void* dialog = nullptr;
  CoCreateInstance(kDialogClass, nullptr, CLSCTX_INPROC_SERVER, kDialogInterface, &dialog);
  if (dialog == nullptr) return nullptr;
  return std::make_unique<ShellProgress>(static_cast<IProgressDialog*>(dialog));
}

}  // namespace lorv
