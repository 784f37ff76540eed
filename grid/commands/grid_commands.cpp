#include "grid/commands/grid_commands.h"

#include <algorithm>
#include <utility>

#include "framework/windows/menu.h"
#include "gridcore/control/grid_control.h"
#include "prompts/language.h"

// Commands are looked up by name after each call into a function of the host: that may have changed the
// table, or ended the grid or this object.

namespace lorv {

namespace {

constexpr UINT kFirstMenuCommand = 1;

bool HasKey(const GridCommand& command, const GridKey& key) {
  if (command.own_key || (key.editing && !command.in_editor)) return false;
  const auto chords = ChordsFromText(command.keys);
  const KeyChord pressed{key.key, key.control, key.shift, key.alt};
  return chords && std::find(chords->begin(), chords->end(), pressed) != chords->end();
}

bool Holds(CommandWhen when, const CBCGPGridCtrl& grid) {
  switch (when) {
    case CommandWhen::kCell:
      return grid.GetCurSelItem() != nullptr;
    case CommandWhen::kSelection:
      return !grid.GetSelection().empty();
    case CommandWhen::kEditableCell:
      return grid.IsEditableNow(grid.GetCurSelItem()) != FALSE;
    case CommandWhen::kOwnRows:
      return grid.IsVirtualMode() == FALSE;
    default:
      return true;
  }
}

// "&" would mark a letter of a menu's text.
CString Plain(CString text) {
  text.Replace(_T("&"), _T("&&"));
  return text;
}

}  // namespace

GridCommands::GridCommands(CBCGPGridCtrl& grid)
    : commands_(KnownCommands()), grid_(&grid), grid_life_(grid.Watch()) {
  grid.KeyHandlers().Attach(*this);
}

GridCommands::~GridCommands() = default;

const GridCommand* GridCommands::Find(const CString& name) const {
  const auto found = std::find_if(commands_.begin(), commands_.end(),
                                  [&](const GridCommand& command) { return command.name == name; });
  return found == commands_.end() ? nullptr : &*found;
}

GridCommand* GridCommands::Known(const CString& name) {
  const GridCommand* const found = Find(name);
  return found == nullptr ? nullptr : &commands_[static_cast<std::size_t>(found - commands_.data())];
}

bool GridCommands::Add(const GridCommand& command) {
  if (command.name.IsEmpty() || Find(command.name) != nullptr || !ChordsFromText(command.keys)) return false;
  commands_.push_back(command);
  return true;
}

bool GridCommands::Remove(const CString& name) {
  return std::erase_if(commands_, [&](const GridCommand& command) { return command.name == name; }) > 0;
}

bool GridCommands::SetKeys(const CString& name, const CString& keys) {
  GridCommand* const command = Known(name);
  if (command == nullptr || command->own_key || !ChordsFromText(keys)) return false;
  command->keys = keys;
  return true;
}

bool GridCommands::SetTexts(const CString& name, const CString& chinese, const CString& english) {
  GridCommand* const command = Known(name);
  if (command == nullptr) return false;
  command->chinese = chinese;
  command->english = english;
  return true;
}

bool GridCommands::Bind(const CString& name, Step run, Question enabled, Question checked) {
  GridCommand* const command = Known(name);
  if (command == nullptr || command->own_key) return false;
  command->run = std::move(run);
  command->enabled = std::move(enabled);
  command->checked = std::move(checked);
  return true;
}

bool GridCommands::CanBeGiven(const GridCommand& command) const {
  const CBCGPGridCtrl* const grid = Grid();
  if (grid == nullptr || command.run == nullptr || !Holds(command.when, *grid)) return false;
  const Question enabled = command.enabled;
  const auto life = grid->Watch();
  // Who ends the grid within a question has no command to give.
  return enabled == nullptr || (enabled(*grid) && !life.expired());
}

bool GridCommands::IsEnabled(const CString& name) const {
  const GridCommand* const command = Find(name);
  return command != nullptr && CanBeGiven(*command);
}

bool GridCommands::IsChecked(const CString& name) const {
  const GridCommand* const command = Find(name);
  if (command == nullptr || command->checked == nullptr || Grid() == nullptr) return false;
  const Question checked = command->checked;
  return checked(*Grid());
}

bool GridCommands::Run(const CString& name) {
  const GridCommand* const command = Find(name);
  // As it stands now: the name may be that of the table's own entry, which functions take out.
  return command != nullptr && Give(GridCommand(*command));
}

bool GridCommands::Give(const GridCommand& command) {
  const auto life = life_.Watch();
  if (!CanBeGiven(command) || life.expired() || Grid() == nullptr) return false;
  CBCGPGridCtrl& grid = *grid_;
  const auto grid_life = grid_life_;
  if (grid.GetEditingItem() != nullptr) grid.EndEditItem(TRUE);
  if (life.expired() || grid_life.expired() || grid.GetEditingItem() != nullptr) return false;
  return Find(command.name) != nullptr && command.run(grid);
}

bool GridCommands::OnGridKey(const GridKey& key) {
  std::vector<CString> names;
  for (const GridCommand& command : commands_)
    if (HasKey(command, key)) names.push_back(command.name);
  const auto life = life_.Watch();
  for (const CString& name : names) {
    const bool enabled = IsEnabled(name);
    if (life.expired() || Grid() == nullptr) return true;
    if (!enabled) continue;
    Run(name);
    return true;
  }
  return false;
}

CString GridCommands::Text(const CString& name) const {
  const GridCommand* const command = Find(name);
  if (command == nullptr) return {};
  return GetLanguageType() == LANGUAGE_ENGLISH ? command->english : command->chinese;
}

CString GridCommands::MenuText(const CString& name) const {
  const GridCommand* const command = Find(name);
  if (command == nullptr) return {};
  const auto chords = ChordsFromText(command->keys);
  const CString keys = chords && !chords->empty() ? ChordToText(chords->front()) : CString();
  return Plain(Text(name)) + (keys.IsEmpty() ? CString() : _T("\t") + keys);
}

void GridCommands::FillMenu(CMenu& menu, const std::vector<CString>& names, UINT first_command) const {
  const auto life = life_.Watch();
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == _T("-")) {
      menu.AppendMenu(MF_SEPARATOR);
      continue;
    }
    if (Find(names[i]) == nullptr) continue;
    const CString text = MenuText(names[i]);
    UINT flags = MF_STRING;
    if (!IsEnabled(names[i])) flags |= MF_GRAYED;
    if (life.expired()) return;
    if (IsChecked(names[i])) flags |= MF_CHECKED;
    if (life.expired()) return;
    menu.AppendMenu(flags, first_command + static_cast<UINT>(i), text);
  }
}

bool GridCommands::ShowMenu(const std::vector<CString>& names, CPoint point) {
  CMenu menu;
  const auto life = life_.Watch();
  const auto grid_life = grid_life_;
  if (Grid() == nullptr || menu.CreatePopupMenu() == FALSE) return false;
  FillMenu(menu, names, kFirstMenuCommand);
  if (life.expired() || grid_life.expired()) return false;
  const UINT chosen = static_cast<UINT>(menu.TrackPopupMenu(
      TPM_RETURNCMD | TPM_RIGHTBUTTON, static_cast<int>(point.x), static_cast<int>(point.y), grid_));
  const std::size_t place = chosen - kFirstMenuCommand;
  if (life.expired() || chosen < kFirstMenuCommand || place >= names.size()) return false;
  return Run(names[place]);
}

CString GridCommands::HelpText() const {
  CString text;
  for (const GridCommand& command : commands_)
    if (!command.keys.IsEmpty()) text += command.keys + _T("\t") + Text(command.name) + _T("\n");
  return text;
}

}  // namespace lorv
