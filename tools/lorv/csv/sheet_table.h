#pragma once

#include <memory>
#include <string>

#include "framework/objects/exceptions.h"
#include "platform/ports/files.h"
#include "spreadsheet/workbook_file.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/csv/workbook_words.h"
#include "tools/lorv/screen/harmless_text.h"

namespace lorv::tool {

// A sheet of a workbook as the bytes of a table: commas, UTF-8, a line a row, made while it is read.
//
// Cells hold their values with all their digits, whatever the sheet shows of them; blanks around a text are
// no part of it. A line of the table is a row of the sheet as long as no cell holds a line end.
class SheetTable : public File {
 public:
  SheetTable(WorkbookFile book, int sheet);

  std::int64_t Read(void* out, std::size_t size) override;
  bool Write(const void* /*bytes*/, std::size_t /*size*/) override { return false; }
  bool Seek(std::uint64_t /*position*/) override { return false; }
  std::int64_t Size() override { return -1; }
  bool Flush() override { return true; }

 private:
  WorkbookFile book_;
  int sheet_;
  long rows_;
  long row_ = 0;
  std::string made_;
  std::size_t taken_ = 0;
};

// Runs a body that works on the workbook of a path: what it refuses is thrown as BadInput, with its reason.
template <class Body>
auto WithWorkbook(const std::string& path, Body&& body) {
  try {
    return body();
  } catch (COleDispatchException* failure) {
    const std::string reason = WorkbookWords(failure->m_strDescription);
    failure->Delete();
    throw BadInput(Quoted(path) + ": " + reason);
  }
}

// Opens a workbook. Throws BadInput, with the reason, for one that cannot be read.
WorkbookFile OpenWorkbook(const std::string& path);

// The first sheet of a workbook, and how many of the others hold something.
struct FirstSheet {
  std::unique_ptr<File> table;
  int unread = 0;
};
// Throws BadInput as OpenWorkbook does.
FirstSheet OpenFirstSheet(const std::string& path);

}  // namespace lorv::tool
