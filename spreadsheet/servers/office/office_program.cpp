#include "spreadsheet/servers/office/office_program.h"

#include <algorithm>

#include "framework/objects/exceptions.h"
#include "platform/ports/files.h"
#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/files/workbook_files.h"
#include "spreadsheet/servers/office/file_filter.h"
#include "spreadsheet/servers/office/office_failure.h"

// Workbooks of an office: made, opened, saved and closed. The office reads and writes the system's files, so
// the system's own are looked at here, whatever ports are in force.

namespace lorv::office {
namespace {

// A sheet that does not fit would lose its last rows without a word.
void CheckFits(OfficeBook& book, const FileFilter& filter) {
  for (long at = 0; at < book.SheetCount(); ++at) {
    const Area used = book.Sheet(at)->UsedArea();
    if (used.bottom >= filter.rows || used.right >= filter.columns) {
      CString text;
      text.Format(_T("工作表超出该文件格式的范围（%d行×%d列）。"), filter.rows, filter.columns);
      engine::Fail(text);
    }
  }
}

}  // namespace

OfficeBridge& OfficeProgram::Bridge() {
  if (!bridge_) RaiseFault({true, {}}, {});
  return *bridge_;
}

BookRef OfficeProgram::Enter(std::shared_ptr<OfficeBook> book, const CString& name) {
  const bool from_1904 = AskOffice([&] { return book->CountsFrom1904(); });
  books_.push_back(std::make_shared<OpenBook>(OpenBook{std::move(book), name, from_1904}));
  return books_.back();
}

BookRef OfficeProgram::AddBook() {
  CString name;
  name.Format(_T("Book%d"), ++made_);
  return Enter(AskOffice([&] { return Bridge().NewBook(); }), name);
}

BookRef OfficeProgram::OpenFile(const CString& file, bool as_template) {
  const std::optional<FileFacts> facts = NativeFiles().Facts(file);
  if (!facts) engine::Fail(_T("找不到文件“") + file + _T("”。"));
  const CString what = _T("无法打开文件“") + file + _T("”：不是工作簿，或文件已损坏。");
  // The office makes a new workbook of nothing.
  if (facts->size == 0) engine::Fail(what);
  auto book = AskOffice([&] { return Bridge().OpenBook(Plain(file), as_template); }, what);
  CString name = file;
  if (as_template) {
    name = engine::FileTitle(file);
    name.AppendFormat(_T("%d"), ++made_);
  }
  return Enter(std::move(book), name);
}

void OfficeProgram::CloseBook(const BookRef& book) {
  // Off the list first: it is closed for the caller even where the office fails at that.
  std::erase(books_, book);
  AskOffice([&] { book->book->Close(); });
}

void OfficeProgram::SaveBook(OpenBook& book, const CString& file) {
  const FileFilter& filter = FilterOf(file);
  const CString what = _T("无法保存文件“") + file + _T("”。");
  // Beside the file, so that taking its name is one step of the file system.
  const CString unfinished = UnfinishedPath(file);
  const CString folder = FolderOfPath(file);
  // The office would make it.
  if (!folder.IsEmpty() && !NativeFiles().Exists(folder)) engine::Fail(what);
  // The office would leave them out without a word.
  if (book.has_controls && !filter.keeps_controls) engine::Fail(_T("文字含有 .ods 文件无法保存的控制字符。"));
  AskOffice([&] { CheckFits(*book.book, filter); });
  try {
    AskOffice([&] { book.book->Save(Plain(unfinished), filter.name); }, what);
  } catch (CException*) {
    NativeFiles().Remove(unfinished);
    throw;
  }
  if (!NativeFiles().Replace(unfinished, file)) {
    NativeFiles().Remove(unfinished);
    engine::Fail(what);
  }
  book.name = file;
}

void OfficeProgram::Quit() {
  // Workbooks before the office that they are in.
  books_.clear();
  bridge_.reset();
}

}  // namespace lorv::office
