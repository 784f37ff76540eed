#include "platform/win32/desktop/win32_clipboard.h"

#include <algorithm>

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
  if (!clipboard) return {};
  const HANDLE data = GetClipboardData(CF_UNICODETEXT);
  const auto* const units = data == nullptr ? nullptr : static_cast<const wchar_t*>(GlobalLock(data));
  if (units == nullptr) return {};
  const wchar_t* const end = units + GlobalSize(data) / sizeof(wchar_t);
  const CString text(TextView(units, static_cast<std::size_t>(std::find(units, end, L'\0') - units)));
  GlobalUnlock(data);
  return text;
}

bool SetSystemText(const CString& text) {
  const auto length = static_cast<std::size_t>(text.GetLength()) + 1;
  const HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, length * sizeof(wchar_t));
  if (data == nullptr) return false;
  std::copy_n(text.GetString(), length, static_cast<wchar_t*>(GlobalLock(data)));
  GlobalUnlock(data);
  const OpenedClipboard clipboard;
  // What the clipboard takes is its own from then on.
  if (clipboard && EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, data) != nullptr) return true;
  GlobalFree(data);
  return false;
}

}  // namespace lorv
