#include <algorithm>

#include "spreadsheet/servers/engine/files/workbook_files.h"
#include "spreadsheet/servers/engine/objects/engine_objects.h"

// What a program of the engine holds: the workbooks that are open, and what its user has marked.
// Workbooks are counted, so that one that is closed lives on in the objects that were handed out, and
// asking these is no crash.

namespace lorv::engine {

std::shared_ptr<Book> ProgramState::AddBook() {
  auto book = std::make_shared<Book>();
  book->AddSheet(0);
  // Numbers go on over closed workbooks, so that no two of a program have had the same name.
  book->name.Format(_T("Book%d"), ++made_);
  books_.push_back(book);
  return book;
}

std::shared_ptr<Book> ProgramState::OpenBook(const CString& file, bool as_template) {
  std::shared_ptr<Book> book = ReadWorkbook(file);
  book->name = file;
  // A copy under a name of its own: without a path nothing can be saved over the file.
  if (as_template) {
    book->name = book->sheets.empty() ? CString() : FileTitle(file);
    book->name.AppendFormat(_T("%d"), ++made_);
  }
  books_.push_back(book);
  return book;
}

void ProgramState::CloseBook(const std::shared_ptr<Book>& book) {
  std::erase(books_, book);
}

void ProgramState::Select(const std::shared_ptr<Sheet>& sheet, const Area& area) {
  active_ = sheet;
  selection_ = area;
}

std::shared_ptr<Book> ProgramState::BookOf(const std::shared_ptr<Sheet>& sheet) const {
  for (const auto& book : books_) {
    if (std::find(book->sheets.begin(), book->sheets.end(), sheet) != book->sheets.end()) return book;
  }
  return nullptr;
}

std::shared_ptr<Sheet> ProgramState::ActiveSheet() const {
  // The marked sheet may have gone with its workbook; then it is the first sheet of the workbook opened last.
  if (auto sheet = active_.lock(); sheet && BookOf(sheet)) return sheet;
  if (books_.empty() || books_.back()->sheets.empty()) return nullptr;
  return books_.back()->sheets.front();
}

}  // namespace lorv::engine
