#include "spreadsheet/servers/engine/files/text_table.h"

#include <algorithm>
#include <string>

#include "framework/text/utf8.h"
#include "platform/ports/platform.h"
#include "spreadsheet/servers/engine/engine_failure.h"

// Comma and tab separated tables as workbooks, for users who are handed one where a workbook was meant. Cells
// are texts of the format "@", so that codes, dates and long numbers come through as they were written.

namespace lorv::engine {
namespace {

using Text = std::basic_string<TCHAR>;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleMark = "\xFF\xFE";
constexpr std::string_view kBigMark = "\xFE\xFF";

Text FromUtf16(std::string_view bytes, bool big) {
  Text text;
  text.reserve(bytes.size() / 2);
  // A half unit at the end of a cut file is left out.
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    text += static_cast<TCHAR>(big ? first << 8 | second : second << 8 | first);
  }
  return text;
}

Text Decoded(std::string_view bytes) {
  if (bytes.starts_with(kUtf8Mark)) return Utf8ToText(bytes.substr(kUtf8Mark.size()));
  if (bytes.starts_with(kLittleMark)) return FromUtf16(bytes.substr(2), false);
  if (bytes.starts_with(kBigMark)) return FromUtf16(bytes.substr(2), true);
  Text text = Utf8ToText(bytes);
  // What is no UTF-8 all through comes from the narrow code page.
  if (TextToUtf8(text) == bytes) return text;
  return PortsInForce().code_page->ToText(bytes);
}

// Takes cells from a text one by one.
class CellWalk {
 public:
  explicit CellWalk(TextView text) : text_(text) {
    // One separator for the whole file: prices such as "1,200" in tables parted by tabs
    // must not part their cells.
    const TextView line = text.substr(0, text.find_first_of(_T("\r\n")));
    const auto commas = std::count(line.begin(), line.end(), _T(','));
    separator_ = std::count(line.begin(), line.end(), _T('\t')) > commas ? _T('\t') : _T(',');
  }

  bool AtEnd() const { return at_ >= text_.size(); }
  // The next cell; true when another one of the same row stands behind it.
  bool Take(Text& cell) {
    cell.clear();
    // Text behind the closing quote belongs to the cell: nothing that was written is dropped.
    if (!AtEnd() && text_[at_] == _T('"')) TakeQuoted(cell);
    const TCHAR ends[] = {separator_, _T('\r'), _T('\n'), 0};
    const std::size_t end = std::min(text_.find_first_of(ends, at_), text_.size());
    cell.append(text_.substr(at_, end - at_));
    at_ = end;
    if (AtEnd()) return false;
    const TCHAR ending = text_[at_++];
    if (ending == _T('\r') && !AtEnd() && text_[at_] == _T('\n')) ++at_;
    return ending == separator_;
  }

 private:
  void TakeQuoted(Text& cell) {
    for (++at_; !AtEnd(); ++at_) {
      if (text_[at_] == _T('"')) {
        ++at_;
        // A doubled quote stands for one; a single one ends the cell.
        if (AtEnd() || text_[at_] != _T('"')) return;
      }
      cell += text_[at_];
    }
  }

  TextView text_;
  TCHAR separator_ = _T(',');
  std::size_t at_ = 0;
};

void PutText(Book& book, Sheet& sheet, long row, long column, const Text& text, std::uint16_t style) {
  // Tables are full of empty cells, which cost nothing in a sheet.
  if (text.empty()) return;
  if (row >= kMaxRows || column >= kMaxColumns) Fail(_T("单元格超出工作表的范围。"));
  if (text.size() > kMaxCellText) Fail(_T("文字超过32767个字符，无法写入单元格。"));
  Cell& cell = sheet.cells.At(row, column);
  cell.SetStyle(style);
  cell.SetWord(CellKind::kText, book.texts.Add(text));
}

}  // namespace

bool LooksLikeText(std::string_view bytes) {
  // Pictures and programs have a zero byte long before this; texts of any code page have none.
  constexpr std::size_t kLookedAt = 4096;
  if (bytes.starts_with(kLittleMark) || bytes.starts_with(kBigMark)) return true;
  return bytes.substr(0, kLookedAt).find('\0') == std::string_view::npos;
}

std::shared_ptr<Book> ReadTextTable(std::string_view bytes, const CString& sheet_name) {
  auto book = std::make_shared<Book>();
  const auto sheet = book->AddSheet(0);
  // The file's name is the sheet's where a sheet may be called so.
  if (IsSheetName(sheet_name)) sheet->name = sheet_name;
  CellStyle as_text;
  as_text.format = book->styles.FormatId(_T("@"));
  const std::uint16_t style = book->styles.StyleId(as_text);
  const Text text = Decoded(bytes);
  CellWalk walk(text);
  Text cell;
  for (long row = 0; !walk.AtEnd(); ++row) {
    long column = 0;
    bool more = true;
    for (; more; ++column) {
      more = walk.Take(cell);
      PutText(*book, *sheet, row, column, cell, style);
    }
  }
  return book;
}

}  // namespace lorv::engine
