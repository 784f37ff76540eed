#include "platform/win32/desktop/global_data.h"

#include <algorithm>
#include <cstring>

#include "platform/models/transfer/html_format.h"

// Content as blocks of global memory, in the forms that the clipboard and drags know. Text has its own
// format, HTML the system's with its header of byte offsets, and all others are the program's bytes under a
// name that the system registers.

namespace lorv {
namespace {

HGLOBAL BlockOfBytes(const void* bytes, std::size_t count) {
  // Movable, as the clipboard demands; never of no bytes, which the system would hand out as discarded.
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, std::max<std::size_t>(count, 1));
  if (block == nullptr) return nullptr;
  if (count != 0) std::memcpy(GlobalLock(block), bytes, count);
  GlobalUnlock(block);
  return block;
}

bool IsHtml(const CString& format) {
  return format == CString(TransferData::kHtml);
}

// A block that is read.
class LockedBlock {
 public:
  explicit LockedBlock(HGLOBAL block)
      : block_(block), first_(block == nullptr ? nullptr : static_cast<const BYTE*>(GlobalLock(block))) {}
  LockedBlock(const LockedBlock&) = delete;
  LockedBlock& operator=(const LockedBlock&) = delete;
  ~LockedBlock() {
    if (first_ != nullptr) GlobalUnlock(block_);
  }
  const BYTE* First() const { return first_; }
  std::size_t Size() const { return first_ == nullptr ? 0 : GlobalSize(block_); }

 private:
  HGLOBAL block_;
  const BYTE* first_;
};

}  // namespace

UINT NumberOfFormat(const CString& format) {
  return RegisterClipboardFormatW(IsHtml(format) ? L"HTML Format" : format.GetString());
}

std::vector<UINT> NumbersOf(const TransferData& data) {
  std::vector<UINT> numbers;
  if (data.HasText()) numbers.push_back(CF_UNICODETEXT);
  for (const auto& [format, bytes] : data.Formats()) numbers.push_back(NumberOfFormat(format));
  return numbers;
}

HGLOBAL BlockOf(const TransferData& data, UINT number) {
  if (number == CF_UNICODETEXT && data.HasText())
    return BlockOfBytes(data.Text().GetString(),
                        (static_cast<std::size_t>(data.Text().GetLength()) + 1) * sizeof(wchar_t));
  for (const auto& [format, bytes] : data.Formats()) {
    if (NumberOfFormat(format) != number) continue;
    if (!IsHtml(format)) return BlockOfBytes(bytes.data(), bytes.size());
    const std::string framed = ToHtmlFormat(data.Html());
    return BlockOfBytes(framed.c_str(), framed.size() + 1);
  }
  return nullptr;
}

CString TextOfBlock(HGLOBAL block) {
  const LockedBlock locked(block);
  if (locked.First() == nullptr) return {};
  const auto* const units = reinterpret_cast<const wchar_t*>(locked.First());
  // Never past the block: another program may have left out the terminator.
  const wchar_t* const end = units + locked.Size() / sizeof(wchar_t);
  return CString(TextView(units, static_cast<std::size_t>(std::find(units, end, L'\0') - units)));
}

std::vector<BYTE> BytesOfBlock(HGLOBAL block, const CString& format) {
  const LockedBlock locked(block);
  if (locked.First() == nullptr) return {};
  const BYTE* const first = locked.First();
  // The system rounds blocks up: the bytes may have some more behind them.
  if (!IsHtml(format)) return std::vector<BYTE>(first, first + locked.Size());
  const std::string fragment = FragmentOfHtmlFormat({reinterpret_cast<const char*>(first), locked.Size()});
  return std::vector<BYTE>(fragment.begin(), fragment.end());
}

}  // namespace lorv
