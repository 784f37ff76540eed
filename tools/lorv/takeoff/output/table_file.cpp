#include "tools/lorv/takeoff/output/table_file.h"

#include <algorithm>

#include "tools/lorv/csv/sheet_table.h"
#include "tools/lorv/csv/workbook_bytes.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/takeoff/output/bill_sheet.h"

// A table as CSV or as a workbook, by the name of its file; the code that fills it need not know which. A
// CSV is written as rows come, a workbook stands in memory until the end, as its parts cannot be written row
// by row.

namespace lorv::tool {

namespace {

// Letter case aside.
bool EndsIn(std::string_view path, std::string_view ending) {
  if (path.size() < ending.size()) return false;
  const std::string_view end = path.substr(path.size() - ending.size());
  return std::equal(end.begin(), end.end(), ending.begin(), [](char a, char b) {
    return (a >= 'A' && a <= 'Z' ? static_cast<char>(a + 'a' - 'A') : a) == b;
  });
}

}  // namespace

bool NamesWorkbook(std::string_view path) {
  for (const std::string_view other : {".xls", ".xlsm", ".xlsb", ".ods"}) {
    // As text under such a name it would open with a warning, or not at all.
    if (EndsIn(path, other))
      throw BadInput(Say("{}: a workbook is written as .xlsx, a table as .csv", {Quoted(std::string(path))}));
  }
  return EndsIn(path, ".xlsx");
}

TableFile::TableFile(const std::string& path, bool mark, Console& console)
    : path_(path), console_(console), out_(path, console.out) {
  if (NamesWorkbook(path)) {
    // Of its own sheet: the bill is put in front of it at the end.
    sheet_.emplace(book_, book_.AddSheet(CString::FromUtf8(Say("Components"))));
  } else if (mark) {
    out_.Write("\xEF\xBB\xBF");
  }
}

void TableFile::AddText(std::string_view cell) {
  if (!sheet_) {
    line_.Add(cell);
    return;
  }
  WithWorkbook(path_, [&] { sheet_->AddText(cell); });
}

void TableFile::AddNumber(std::string_view cell) {
  if (!sheet_) {
    line_.Add(cell);
    return;
  }
  // All its digits, as in the CSV: what is shown rounded is the bill.
  WithWorkbook(path_, [&] { sheet_->AddExact(cell); });
}

void TableFile::EndRow() {
  if (sheet_) {
    sheet_->EndRow();
  } else {
    out_.Write(line_.Take());
  }
}

void TableFile::Commit(const Bill& bill) {
  if (sheet_) {
    WithWorkbook(path_, [&] {
      sheet_->Finish();
      AddBillSheet(bill, book_);
      out_.Write(WorkbookBytes(book_, console_));
    });
  }
  out_.Commit();
}

void WriteBillWorkbook(const Bill& bill, const std::string& path, Console& console) {
  OutputFile out(path, console.out);
  WithWorkbook(path, [&] {
    WorkbookFile book;
    AddBillSheet(bill, book);
    out.Write(WorkbookBytes(book, console));
  });
  out.Commit();
}

}  // namespace lorv::tool
