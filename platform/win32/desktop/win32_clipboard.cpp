#include "platform/win32/desktop/win32_clipboard.h"

#include <algorithm>
#include <cstring>

#include "platform/models/html_format.h"

// The system's clipboard. Other programs hold it open for moments, so opening is tried for a while; what
// others put in need not be terminated or framed as it says.

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

// The system's number of a format by our name for it.
UINT NumberOf(const CString& format) {
  const bool html = format == CString(TransferData::kHtml);
  return RegisterClipboardFormatW(html ? L"HTML Format" : format.GetString());
}

// Into the clipboard that is open. What it takes is its own from then on.
bool Put(UINT format, const void* bytes, std::size_t count) {
  const HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, std::max<std::size_t>(count, 1));
  if (data == nullptr) return false;
  if (count != 0) std::memcpy(GlobalLock(data), bytes, count);
  GlobalUnlock(data);
  if (SetClipboardData(format, data) != nullptr) return true;
  GlobalFree(data);
  return false;
}

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
  // Never past the block: another program may have left out the terminator.
  const wchar_t* const end = units + GlobalSize(data) / sizeof(wchar_t);
  const CString text(TextView(units, static_cast<std::size_t>(std::find(units, end, L'\0') - units)));
  GlobalUnlock(data);
  return text;
}

bool SetSystemText(const CString& text) {
  TransferData data;
  data.SetText(text);
  return SetSystemClipboard(data);
}

bool SetSystemClipboard(const TransferData& data) {
  const OpenedClipboard clipboard;
  if (!clipboard || !EmptyClipboard()) return false;
  bool all = true;
  if (data.HasText()) {
    const auto bytes = (static_cast<std::size_t>(data.Text().GetLength()) + 1) * sizeof(wchar_t);
    all = Put(CF_UNICODETEXT, data.Text().GetString(), bytes);
  }
  for (const auto& [format, bytes] : data.Formats()) {
    if (format == CString(TransferData::kHtml)) {
      const std::string framed = ToHtmlFormat(data.Html());
      all = Put(NumberOf(format), framed.c_str(), framed.size() + 1) && all;
    } else {
      all = Put(NumberOf(format), bytes.data(), bytes.size()) && all;
    }
  }
  return all;
}

std::vector<BYTE> SystemBytes(const CString& format) {
  const OpenedClipboard clipboard;
  const HANDLE data = clipboard ? GetClipboardData(NumberOf(format)) : nullptr;
  const auto* const first = data == nullptr ? nullptr : static_cast<const BYTE*>(GlobalLock(data));
  if (first == nullptr) return {};
  std::vector<BYTE> bytes(first, first + GlobalSize(data));
  GlobalUnlock(data);
  if (format != CString(TransferData::kHtml)) return bytes;
  const std::string fragment =
      FragmentOfHtmlFormat({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  return {fragment.begin(), fragment.end()};
}

}  // namespace lorv
