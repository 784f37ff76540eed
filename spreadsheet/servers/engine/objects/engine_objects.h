#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "spreadsheet/automation/auto_object.h"
#include "spreadsheet/automation/automation_table.h"
#include "spreadsheet/servers/engine/book/book.h"

// The objects of the engine: a program of one of the two families whose workbooks are in memory.
namespace lorv::engine {

class ProgramState;
using ProgramRef = std::shared_ptr<ProgramState>;

// What one application holds. It lives as long as one of its objects, or as long as it is listed among the
// running ones.
class ProgramState : public std::enable_shared_from_this<ProgramState> {
 public:
  explicit ProgramState(Program family) : family_(family) {}

  Program Family() const { return family_; }
  const std::vector<std::shared_ptr<Book>>& Books() const { return books_; }
  std::shared_ptr<Book> AddBook();
  std::shared_ptr<Book> OpenBook(const CString& file, bool as_template);
  void CloseBook(const std::shared_ptr<Book>& book);

  // What the user has marked, in the first sheet of the last workbook unless another one is shown.
  void Select(const std::shared_ptr<Sheet>& sheet, const Area& area);
  std::shared_ptr<Sheet> ActiveSheet() const;
  Area Selection() const { return selection_; }
  std::shared_ptr<Book> BookOf(const std::shared_ptr<Sheet>& sheet) const;

  bool visible = false;
  bool alerts = true;
  bool ended = false;
  std::function<void(ProgramState&)> on_visible;
  std::function<void(ProgramState&)> on_quit;

 private:
  Program family_;
  std::vector<std::shared_ptr<Book>> books_;
  std::weak_ptr<Sheet> active_;
  Area selection_;
  int made_ = 0;
};

AutoRef ApplicationObject(const ProgramRef& program);
AutoRef WorkbookObject(const ProgramRef& program, const std::shared_ptr<Book>& book);

}  // namespace lorv::engine
