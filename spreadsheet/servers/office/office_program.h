#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "spreadsheet/automation/auto_object.h"
#include "spreadsheet/automation/automation_table.h"
#include "spreadsheet/servers/office/office_port.h"

// The objects of an office that runs for this process.
namespace lorv::office {

// A workbook with the name that it is listed by.
struct OpenBook {
  std::shared_ptr<OfficeBook> book;
  CString name;
  bool from_1904 = false;
  bool has_controls = false;  // was given a text with characters that not every file keeps
};
using BookRef = std::shared_ptr<OpenBook>;

// An office with its workbooks, in the role of one of the two programs. It lives as long as one of its
// objects, or as long as it is listed among the running ones.
class OfficeProgram : public std::enable_shared_from_this<OfficeProgram> {
 public:
  OfficeProgram(Program family, std::unique_ptr<OfficeBridge> bridge)
      : family_(family), bridge_(std::move(bridge)) {}

  Program Family() const { return family_; }
  const std::vector<BookRef>& Books() const { return books_; }
  // Of the office's process; 0 after Quit.
  long ProcessId() { return bridge_ ? bridge_->ProcessId() : 0; }
  BookRef AddBook();
  BookRef OpenFile(const CString& file, bool as_template);
  void CloseBook(const BookRef& book);
  // The file that stands there stays until the new one is whole.
  void SaveBook(OpenBook& book, const CString& file);
  void Quit();

  std::function<void(OfficeProgram&)> on_visible;
  std::function<void(OfficeProgram&)> on_quit;

 private:
  OfficeBridge& Bridge();
  BookRef Enter(std::shared_ptr<OfficeBook> book, const CString& name);

  Program family_;
  std::unique_ptr<OfficeBridge> bridge_;
  std::vector<BookRef> books_;
  int made_ = 0;
};
using ProgramRef = std::shared_ptr<OfficeProgram>;

AutoRef ApplicationObject(const ProgramRef& program);
AutoRef WorkbookObject(const ProgramRef& program, const BookRef& book);

}  // namespace lorv::office
