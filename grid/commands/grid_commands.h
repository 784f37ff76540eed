#pragma once

#include <memory>
#include <vector>

#include "framework/drawing/geometry.h"
#include "grid/commands/grid_command.h"
#include "grid/commands/key_text.h"
#include "gridcore/control/grid_key_handler.h"
#include "gridcore/life_token.h"

class CMenu;

namespace lorv {

// The commands of one grid: a table from which its keys, its menus and its help come. A host changes keys and
// texts, adds commands of its own and binds those whose work lies elsewhere.
//
// Edges: names that nobody knows are answered with null, false or an empty text. Of two commands with the
//   same key the first one in the table that can be given now takes it. The keys of the grid's own commands
//   are listed and cannot be changed. With an editor open only keys of commands that say so are taken; a
//   command that is given ends the edit first, and is not given where the editor stays.
// Texts are in the language in force (prompts/language.h).
// The grid may end before the object and after it; functions of commands may end both. One thread: that of
// the user interface.
//
//   GridCommands commands(grid);  commands.Run(_T("select_all"))
//   commands.Add({_T("sum"), _T("Alt+Plus"), CommandWhen::kCell, false, false, _T("求和"), _T("Sum"), sum})
class COMM_LORV_API GridCommands : private GridKeyHandler {
 public:
  using Step = std::function<bool(CBCGPGridCtrl&)>;
  using Question = std::function<bool(const CBCGPGridCtrl&)>;

  explicit GridCommands(CBCGPGridCtrl& grid);
  GridCommands(const GridCommands&) = delete;
  GridCommands& operator=(const GridCommands&) = delete;
  ~GridCommands() override;

  CBCGPGridCtrl* Grid() const { return grid_life_.expired() ? nullptr : grid_; }

  // The table.
  const std::vector<GridCommand>& All() const { return commands_; }
  const GridCommand* Find(const CString& name) const;
  // Behind all others. False: no name, one that is known, or keys that are none.
  bool Add(const GridCommand& command);
  bool Remove(const CString& name);
  bool SetKeys(const CString& name, const CString& keys);
  bool SetTexts(const CString& name, const CString& chinese, const CString& english);
  bool Bind(const CString& name, Step run, Question enabled = {}, Question checked = {});

  // Giving commands. True: something was done.
  bool Run(const CString& name);
  bool IsEnabled(const CString& name) const;
  bool IsChecked(const CString& name) const;

  // Menus: entries in that order, "-" for a line between them; what nobody knows is left out. The entry of
  // the n-th name has the command first_command + n.
  CString Text(const CString& name) const;
  CString MenuText(const CString& name) const;  // with the first of its keys
  void FillMenu(CMenu& menu, const std::vector<CString>& names, UINT first_command) const;
  // Shows them at a point of the screen and gives what was chosen.
  bool ShowMenu(const std::vector<CString>& names, CPoint point);

  // A line a command that has keys, with those keys, a tabulator and its text.
  CString HelpText() const;

 private:
  bool OnGridKey(const GridKey& key) override;
  GridCommand* Known(const CString& name);
  bool Give(const GridCommand& command);
  bool CanBeGiven(const GridCommand& command) const;

  std::vector<GridCommand> commands_;
  CBCGPGridCtrl* grid_;
  std::weak_ptr<int> grid_life_;
  LifeToken life_;
};

}  // namespace lorv
