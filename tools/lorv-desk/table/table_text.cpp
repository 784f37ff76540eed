#include "tools/lorv-desk/table/table_text.h"

#include "framework/text/utf8.h"
#include "platform/ports/platform.h"

// The rows of a table in the form of its file: encoding, mark, separator, line end. It is the reverse of the
// reader of tables, whose notion of a form it takes.

namespace lorv::tool {
namespace {

std::string ToUtf16(const std::string& utf8, bool high_first) {
  std::string bytes;
  for (const TCHAR unit : Utf8ToText(utf8)) {
    const auto low = static_cast<char>(unit & 0xFF);
    const auto high = static_cast<char>(unit >> 8);
    bytes += high_first ? high : low;
    bytes += high_first ? low : high;
  }
  return bytes;
}

CsvForm Completed(CsvForm form) {
  // A file of one line has shown none: that of spreadsheets.
  if (form.line_end.empty()) form.line_end = "\r\n";
  return form;
}

}  // namespace

TableText::TableText(const CsvForm& form) : form_(Completed(form)), line_(form_.separator, form_.line_end) {}

std::string TableText::Head() const {
  std::string head = form_.has_mark ? "\xEF\xBB\xBF" : "";
  if (form_.names_separator) head += std::string("sep=") + form_.separator + form_.line_end;
  return Encoded(head);
}

std::string TableText::Encoded(const std::string& utf8) const {
  switch (form_.encoding) {
    case Encoding::kUtf16Little:
      return ToUtf16(utf8, false);
    case Encoding::kUtf16Big:
      return ToUtf16(utf8, true);
    case Encoding::kGbk: {
      const auto text = Utf8ToText(utf8);
      const CodePage& page = *PortsInForce().code_page;
      std::string bytes = page.ToNarrow(text);
      // There and back: the code page itself replaces what it lacks without a report.
      whole_ = whole_ && page.ToText(bytes) == text;
      return bytes;
    }
    // All of it ASCII, or UTF-8: the bytes are the same.
    default:
      return utf8;
  }
}

}  // namespace lorv::tool
