#include "gridcore/control/grid_key_handler.h"

#include <algorithm>
#include <utility>

#include "framework/native/window_types.h"

// Who is asked for keys. Any of them may end within its answer, and the grid with it.

namespace lorv {

namespace {

constexpr UINT kFirstSymbol = 0xBA;  // of the keys whose character the layout of the keyboard says

bool TypesCharacter(const GridKey& key) {
  if (key.control != key.alt || key.key >= kKeyWheelUp) return false;
  const bool letter = key.key >= '0' && key.key <= 'Z';
  const bool pad = key.key >= VK_NUMPAD0 && key.key <= VK_DIVIDE;
  return key.key == VK_SPACE || letter || pad || key.key >= kFirstSymbol;
}

bool Holds(const std::vector<GridKeyHandler*>& list, const GridKeyHandler* handler) {
  return std::find(list.begin(), list.end(), handler) != list.end();
}

}  // namespace

GridKeyHandler::~GridKeyHandler() {
  GridKeyHandlers::Detach(*this);
}

void GridKeyHandlers::Attach(GridKeyHandler& handler) {
  if (!handler.list_.expired()) return;
  list_->push_back(&handler);
  handler.list_ = list_;
}

void GridKeyHandlers::Detach(GridKeyHandler& handler) {
  const auto list = std::exchange(handler.list_, {}).lock();
  if (list != nullptr) list->erase(std::remove(list->begin(), list->end(), &handler), list->end());
}

bool GridKeyHandlers::Ask(const GridKey& key) {
  takes_character_ = false;
  if (list_->empty()) return false;
  const std::weak_ptr<std::vector<GridKeyHandler*>> life = list_;
  const std::vector<GridKeyHandler*> asked = *list_;
  for (auto handler = asked.rbegin(); handler != asked.rend(); ++handler) {
    if (!Holds(*list_, *handler)) continue;
    const bool used = (*handler)->OnGridKey(key);
    if (life.expired()) return true;
    if (!used) continue;
    takes_character_ = !key.editing && TypesCharacter(key);
    return true;
  }
  return false;
}

bool GridKeyHandlers::UsesUpCharacter() {
  return std::exchange(takes_character_, false);
}

}  // namespace lorv
