#pragma once

#include <map>
#include <vector>

#include "framework/text/cstring.h"

namespace lorv {

// One content in several formats, as it lies on the clipboard: a receiver takes the best format that it
// knows.
//
// Units: text is 16-bit units with line ends of CR LF; other formats are bytes under their media type's name.
//   HTML is UTF-8, a fragment without the frame that some systems put around it.
// Edges: a format that is not there is an empty one; lone halves of characters are kept in text.
// A value: copies are independent. Any thread, one at a time.
//
//   TransferData data;  data.SetText(_T("1\t2"));  data.SetHtml("<table>...</table>");
//   desktop.SetClipboard(data)
class TransferData {
 public:
  static constexpr TextView kHtml = _T("text/html");

  bool HasText() const { return has_text_; }
  const CString& Text() const { return text_; }
  void SetText(const CString& text) {
    text_ = text;
    has_text_ = true;
  }
  std::string Html() const {
    const std::vector<BYTE> bytes = Bytes(CString(kHtml));
    return {bytes.begin(), bytes.end()};
  }
  void SetHtml(const std::string& html) { Set(CString(kHtml), {html.begin(), html.end()}); }

  void Set(const CString& format, std::vector<BYTE> bytes) { formats_[format] = std::move(bytes); }
  std::vector<BYTE> Bytes(const CString& format) const {
    const auto found = formats_.find(format);
    return found == formats_.end() ? std::vector<BYTE>() : found->second;
  }
  // Those beside text.
  const std::map<CString, std::vector<BYTE>>& Formats() const { return formats_; }

 private:
  CString text_;
  bool has_text_ = false;
  std::map<CString, std::vector<BYTE>> formats_;
};

}  // namespace lorv
