#pragma once

#include <memory>
#include <string>

#include "spreadsheet/servers/engine/book/book.h"
#include "spreadsheet/servers/engine/xlsx/xlsx_writer.h"

// Workbooks in files.
namespace lorv::engine {

// Reads an .xlsx workbook or a text table, recognised by its contents and not by its name.
// Raises the engine's failure, with the reason for the user, for what it cannot read or refuses.
std::shared_ptr<Book> ReadWorkbook(const CString& file);

// Writes an .xlsx workbook, whole or not at all: what stood there stays when it fails, which raises the
// engine's failure. False where `making` ended it.
bool WriteWorkbookFile(const Book& book, const CString& file, const Making& making = {});

// The name of a file without folder and extension.
CString FileTitle(const CString& file);

}  // namespace lorv::engine
