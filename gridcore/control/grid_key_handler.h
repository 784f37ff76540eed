#pragma once

#include <memory>
#include <vector>

#include "framework/native/export.h"
#include "framework/native/native_types.h"

namespace lorv {

// Notches of the wheel, away from the user and to him, as keys behind all virtual ones.
constexpr UINT kKeyWheelUp = 0x100;
constexpr UINT kKeyWheelDown = 0x101;

// A key that goes down over a grid or its editor, or a notch of the wheel.
struct GridKey {
  UINT key = 0;  // a virtual key, as the grid has translated it
  bool control = false;
  bool shift = false;
  bool alt = false;
  bool editing = false;  // it goes to the editor of a cell
};

// Who is asked for a key before the grid does with it what it does by itself.
//
// Edges: the keys of an open list and of the filter bar's editor are asked of nobody. With the key down the
//   character that it types is used up as well.
// It may end itself, others and the grid within its answer. It is taken off when it ends; it is not the
// grid's: the grid may end before it.
class COMM_LORV_API GridKeyHandler {
 public:
  GridKeyHandler() = default;
  GridKeyHandler(const GridKeyHandler&) = delete;
  GridKeyHandler& operator=(const GridKeyHandler&) = delete;
  virtual ~GridKeyHandler();
  // True: the key is used up.
  virtual bool OnGridKey(const GridKey& key) = 0;

 private:
  friend class GridKeyHandlers;
  std::weak_ptr<std::vector<GridKeyHandler*>> list_;
};

// Those of one grid. The one that came last is asked first.
class COMM_LORV_API GridKeyHandlers {
 public:
  // Passed over: one that is on a list.
  void Attach(GridKeyHandler& handler);
  static void Detach(GridKeyHandler& handler);
  bool IsEmpty() const { return list_->empty(); }
  // Answers that the key is used up, also where the grid has ended.
  bool Ask(const GridKey& key);
  // Whether the character was typed by a key that was used up.
  bool UsesUpCharacter();

 private:
  std::shared_ptr<std::vector<GridKeyHandler*>> list_ = std::make_shared<std::vector<GridKeyHandler*>>();
  bool takes_character_ = false;
};

}  // namespace lorv
