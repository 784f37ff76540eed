#include "platform/win32/desktop/win32_clipboard.h"

#include "platform/win32/desktop/global_data.h"

// The system's clipboard. Other programs hold it open for moments, so opening is tried for a while.

namespace lorv {
namespace {

constexpr int kTries = 20;
constexpr DWORD kPause = 10;  // milliseconds

class OpenedClipboard {
 public:
  OpenedClipboard() {
    for (int i = 0; i < kTries && !opened_; ++i) {
      if (i > 0) Sleep(kPause);
      opened_ = OpenClipboard(owner_) != 0;
    }
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  ~OpenedClipboard() {
    if (opened_) CloseClipboard();
    if (owner_ != nullptr) DestroyWindow(owner_);
  }
  explicit operator bool() const { return opened_; }

 private:
  // Without an owner the system refuses what is put in after it was emptied.
  HWND owner_ = CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  bool opened_ = false;
};

}  // namespace

bool HasSystemText() {
  return IsClipboardFormatAvailable(CF_UNICODETEXT) != 0;
}

CString SystemText() {
  const OpenedClipboard clipboard;
  return clipboard ? TextOfBlock(GetClipboardData(CF_UNICODETEXT)) : CString();
}

bool SetSystemText(const CString& text) {
  TransferData data;
  data.SetText(text);
  return SetSystemClipboard(data);
}

// What the clipboard takes is its own from then on.
bool SetSystemClipboard(const TransferData& data) {
  const OpenedClipboard clipboard;
  if (!clipboard || !EmptyClipboard()) return false;
  bool all = true;
  for (const UINT number : NumbersOf(data)) {
    const HGLOBAL block = BlockOf(data, number);
    const bool taken = block != nullptr && SetClipboardData(number, block) != nullptr;
    if (block != nullptr && !taken) GlobalFree(block);
    // A format that fails does not keep the others away; the caller is told all the same.
    all = all && taken;
  }
  return all;
}

std::vector<BYTE> SystemBytes(const CString& format) {
  const OpenedClipboard clipboard;
  return clipboard ? BytesOfBlock(GetClipboardData(NumberOfFormat(format)), format) : std::vector<BYTE>();
}

}  // namespace lorv
