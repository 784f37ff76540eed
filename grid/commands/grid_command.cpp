#include "grid/commands/grid_command.h"

#include "grid/commands/command_steps.h"
#include "grid/commands/command_table.h"

// The table of commands as values, and as a part of a document: the document is tested against what this
// gives, so that no key is told that does not work.

namespace lorv {

namespace {

CString WhenText(CommandWhen when) {
  switch (when) {
    case CommandWhen::kCell:
      return _T("a cell is current");
    case CommandWhen::kSelection:
      return _T("cells are selected");
    case CommandWhen::kEditableCell:
      return _T("the cell can be edited");
    case CommandWhen::kOwnRows:
      return _T("the rows are the grid's");
    default:
      return _T("always");
  }
}

// A bar would end the cell of the document's table.
CString Cell(CString text) {
  text.Replace(_T("|"), _T("\\|"));
  return text + _T(" | ");
}

}  // namespace

std::vector<GridCommand> KnownCommands() {
  std::vector<GridCommand> commands;
  for (const CommandRow& row : kCommandRows) {
    GridCommand command;
    command.name = row.name;
    command.keys = row.keys;
    command.when = row.when;
    command.in_editor = row.place == KeyPlace::kGridAndEditor;
    command.own_key = row.place == KeyPlace::kOwn;
    command.chinese = row.chinese;
    command.english = row.english;
    BindOwnStep(command);
    commands.push_back(command);
  }
  return commands;
}

CString CommandsAsMarkdown(const std::vector<GridCommand>& commands) {
  CString text = _T("| Name | Keys | When | 中文 | English |\n| --- | --- | --- | --- | --- |\n");
  for (const GridCommand& command : commands) {
    CString line = _T("| ") + Cell(_T("`") + command.name + _T("`")) + Cell(command.keys);
    line += Cell(WhenText(command.when)) + Cell(command.chinese) + Cell(command.english);
    text += line.TrimRight() + _T("\n");
  }
  return text;
}

}  // namespace lorv
