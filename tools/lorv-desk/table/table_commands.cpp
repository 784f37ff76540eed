#include "tools/lorv-desk/table/table_commands.h"

#include <algorithm>
#include <utility>

#include "platform/ports/platform.h"
#include "tools/lorv/language/spoken_language.h"

// The grid's additions as a program puts them together: each object binds its commands, the program adds
// those of its own, and keys and menu follow from the table.

namespace lorv::tool {
namespace {

CString Words(std::string_view english, std::initializer_list<std::string_view> values = {}) {
  return CString::FromUtf8(Say(english, values));
}

// A command of this program, always to be had, in both languages of its messages.
GridCommand Own(LPCTSTR name, LPCTSTR keys, std::string_view english, std::function<bool()> run) {
  GridCommand command;
  command.name = name;
  command.keys = keys;
  command.in_editor = true;
  command.chinese = CString::FromUtf8(std::string(ChineseOf(english)));
  command.english = CString::FromUtf8(std::string(english));
  command.run = [run = std::move(run)](CBCGPGridCtrl&) { return run(); };
  return command;
}

}  // namespace

TableCommands::TableCommands(EditedGrid& grid, Window window)
    : grid_(grid),
      history_(grid),
      clipboard_(grid),
      find_(grid),
      sort_(grid),
      zoom_(grid),
      frozen_(grid),
      order_(grid),
      printing_(grid),
      commands_(grid) {
  history_.Bind(commands_);
  clipboard_.Bind(commands_);
  find_.Bind(commands_);
  zoom_.Bind(commands_);
  frozen_.Bind(commands_);
  order_.Bind(commands_);
  AddOwn(std::move(window));
}

void TableCommands::AddOwn(Window window) {
  commands_.Bind(_T("paste"), [this](CBCGPGridCtrl&) { return Paste(); });
  const GridCommands::Step insert = commands_.Find(_T("insert_row"))->run;
  commands_.Bind(_T("insert_row"), [this, insert](CBCGPGridCtrl& grid) { return InsertRow(insert(grid)); });
  commands_.Bind(_T("find"), [find = window.find](CBCGPGridCtrl&) { return find(false); });
  commands_.Bind(_T("replace"), [find = window.find](CBCGPGridCtrl&) { return find(true); });
  commands_.Add(Own(_T("save"), _T("Ctrl+S"), "Save", std::move(window.save)));
  commands_.Add(Own(_T("print"), _T("Ctrl+P"), "Print", [this] { return Print(); }));
  commands_.Add(Own(_T("to_spreadsheet"), _T(""), "To a spreadsheet", [this] { return grid_.ToExcel(0); }));
  commands_.Add(Own(_T("from_spreadsheet"), _T(""), "From a spreadsheet", [this] {
    const bool done = grid_.FromExcel(0);
    // Columns and rows are other ones now.
    if (done) grid_.AdjustLayout();
    return done;
  }));
}

void TableCommands::NamePrintedPages(const CString& title) {
  printing_.settings.document = title;
  printing_.settings.title = title;
}

std::vector<CString> TableCommands::MenuNames() {
  return {_T("cut"),
          _T("copy"),
          _T("paste"),
          _T("clear"),
          _T("-"),
          _T("undo"),
          _T("redo"),
          _T("-"),
          _T("find"),
          _T("find_next"),
          _T("replace"),
          _T("-"),
          _T("insert_row"),
          _T("delete_rows"),
          _T("-"),
          _T("sort_up"),
          _T("sort_down"),
          _T("filter_bar"),
          _T("hide_column"),
          _T("show_columns"),
          _T("freeze_columns"),
          _T("unfreeze_columns"),
          _T("move_column_left"),
          _T("move_column_right"),
          _T("restore_columns"),
          _T("-"),
          _T("zoom_in"),
          _T("zoom_out"),
          _T("zoom_reset"),
          _T("-"),
          _T("save"),
          _T("print"),
          _T("to_spreadsheet"),
          _T("from_spreadsheet")};
}

// The new row stands above the one that was current, and is typed into next.
bool TableCommands::InsertRow(bool done) {
  const int above = grid_.GetCurrentRow() - 1;
  if (done) grid_.SetRow(std::max(0, above));
  return done;
}

bool TableCommands::Print() {
  const auto job = PortsInForce().printing->Ask(grid_.m_hWnd, kPrintNoSelection | kPrintNoPages);
  return job != nullptr && printing_.Print(*job);
}

// A table that is too short for what is pasted grows, as a spreadsheet has rows without end; what has no
// column, or is locked, is reported.
bool TableCommands::Paste() {
  PasteOptions options;
  options.adds_rows = true;
  const PasteReport report = clipboard_.Paste(options);
  if (report.refused > 0) {
    const CString text = Words("cells that could not be pasted: {}", {std::to_string(report.refused)});
    PortsInForce().dialogs->ShowMessage({text, CString(), kButtonsOk | kIconError});
  }
  return report.pasted;
}

}  // namespace lorv::tool
