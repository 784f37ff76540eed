#include "spreadsheet/servers/office/format_spelling.h"

#include "framework/text/text_compare.h"
#include "spreadsheet/servers/engine/styles/number_format_kind.h"

// The office writes the letters of its formats large. The rules for shown texts go by the programs' spelling,
// where a large "Y" means something else than a small one.

namespace lorv::office {
namespace {

// Where what begins at a place and is shown or kept as it stands ends.
std::size_t BehindClosing(TextView format, std::size_t at, TCHAR closing) {
  const std::size_t end = format.find(closing, at + 1);
  return end == TextView::npos ? format.size() : end + 1;
}

bool IsTimeLetter(TCHAR c) {
  return TextView(_T("YMDHS")).find(c) != TextView::npos;
}

}  // namespace

CString ProgramSpelling(const OfficeFormat& format) {
  const TextView from = format.text;
  Text text;
  for (std::size_t at = 0; at < from.size();) {
    const TCHAR c = from[at];
    std::size_t end = at + 1;
    if (c == _T('"')) {
      end = BehindClosing(from, at, c);
    } else if (c == _T('[')) {
      end = BehindClosing(from, at, _T(']'));
      text += engine::SpelledBracket(from.substr(at, end - at));
      at = end;
      continue;
      // What stands behind these is shown, left out or repeated, whatever letter it is.
    } else if (c == _T('\\') || c == _T('_') || c == _T('*')) {
      end = std::min(at + 2, from.size());
    } else if (format.is_time && from.substr(at, 5) == TextView(_T("AM/PM"))) {
      end = at + 5;
    } else if (format.is_time && IsTimeLetter(c)) {
      text += ToLower(c);
      at = end;
      continue;
    }
    text += from.substr(at, end - at);
    at = end;
  }
  return CString(TextView(text));
}

}  // namespace lorv::office
