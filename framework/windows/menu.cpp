#include "framework/windows/menu.h"

#include <algorithm>
#include <map>
#include <utility>

#include "framework/windows/menu_resources.h"
#include "framework/windows/window.h"

// Popup menus as models that the desktop shows. Handles lead to shared models by a map, so a submenu may be
// destroyed before or after the menus that show it, and a stale handle is answered like one that never was.

namespace {

constexpr UINT kNothing = 0xFFFFFFFF;
constexpr UINT kStates = MF_GRAYED | MF_DISABLED;

struct LiveMenus {
  std::map<HMENU, std::shared_ptr<lorv::MenuModel>> models;
  std::map<HMENU, std::unique_ptr<CMenu>> made_up;
  std::map<HMENU, std::vector<HMENU>> loaded;  // submenus that came with a menu, and go with it
  UINT_PTR last = 0x20000;
};

LiveMenus& Live() {
  static LiveMenus live;
  return live;
}

std::shared_ptr<lorv::MenuModel> ModelOf(HMENU menu) {
  const auto found = Live().models.find(menu);
  return found == Live().models.end() ? nullptr : found->second;
}

HMENU HandleOf(const lorv::MenuModel* model) {
  // Programs have a handful of menus: a search costs less than a second map to keep in step.
  for (const auto& [handle, known] : Live().models)
    if (known.get() == model) return handle;
  return nullptr;
}

bool Contains(const lorv::MenuModel& model, const lorv::MenuModel* wanted) {
  if (&model == wanted) return true;
  for (const lorv::MenuEntry& entry : model.entries)
    if (entry.submenu != nullptr && Contains(*entry.submenu, wanted)) return true;
  return false;
}

// Null for a submenu that was destroyed: it is still shown, and not searched any more.
std::shared_ptr<lorv::MenuModel> Below(const lorv::MenuEntry& entry) {
  return entry.submenu == nullptr ? nullptr : ModelOf(HandleOf(entry.submenu.get()));
}

lorv::MenuEntry* ByCommand(lorv::MenuModel& model, UINT id) {
  for (lorv::MenuEntry& entry : model.entries) {
    if (entry.submenu == nullptr && (entry.flags & MF_SEPARATOR) == 0 && entry.id == id) return &entry;
    const auto below = Below(entry);
    lorv::MenuEntry* const found = below == nullptr ? nullptr : ByCommand(*below, id);
    if (found != nullptr) return found;
  }
  return nullptr;
}

// From whichever menu holds it: a command may stand in a submenu.
bool Erase(lorv::MenuModel& model, const lorv::MenuEntry* gone) {
  if (std::erase_if(model.entries, [gone](const lorv::MenuEntry& entry) { return &entry == gone; }) != 0)
    return true;
  return std::any_of(model.entries.begin(), model.entries.end(), [gone](const lorv::MenuEntry& entry) {
    const auto below = Below(entry);
    return below != nullptr && Erase(*below, gone);
  });
}

HMENU MakeHandle(std::shared_ptr<lorv::MenuModel> model) {
  auto* const handle = reinterpret_cast<HMENU>(++Live().last);
  Live().models[handle] = std::move(model);
  return handle;
}

// Each menu of a copy has a handle of its own, so that it can be asked for and changed.
std::shared_ptr<lorv::MenuModel> Copied(const lorv::MenuModel& model, std::vector<HMENU>& handles) {
  auto copy = std::make_shared<lorv::MenuModel>(model);
  for (lorv::MenuEntry& entry : copy->entries) {
    if (entry.submenu == nullptr) continue;
    const auto below = Copied(*entry.submenu, handles);
    handles.push_back(MakeHandle(below));
    entry.submenu = below;
  }
  return copy;
}

}  // namespace

BOOL CMenu::CreatePopupMenu() {
  if (m_hMenu != nullptr) return FALSE;
  m_hMenu = MakeHandle(std::make_shared<lorv::MenuModel>());
  return TRUE;
}

BOOL CMenu::LoadMenu(UINT number) {
  if (m_hMenu != nullptr) return FALSE;
  const auto found = lorv::FindMenuResource(number);
  if (!found.has_value()) return FALSE;
  std::vector<HMENU> below;
  m_hMenu = MakeHandle(Copied(*found, below));
  if (!below.empty()) Live().loaded[m_hMenu] = std::move(below);
  return TRUE;
}

BOOL CMenu::DestroyMenu() {
  const HMENU menu = Detach();
  const auto below = Live().loaded.extract(menu);
  if (!below.empty())
    for (const HMENU submenu : below.mapped()) Live().models.erase(submenu);
  // Menus that show it keep the model: they go on as before.
  return menu != nullptr && Live().models.erase(menu) != 0;
}

BOOL CMenu::Attach(HMENU menu) {
  if (m_hMenu != nullptr || ModelOf(menu) == nullptr) return FALSE;
  m_hMenu = menu;
  return TRUE;
}

HMENU CMenu::Detach() {
  return std::exchange(m_hMenu, nullptr);
}

CMenu* CMenu::FromHandle(HMENU menu) {
  auto& made_up = Live().made_up;
  // Objects for the moment go when their menus have, and no earlier: callers hold the pointer.
  std::erase_if(made_up, [](const auto& pair) {
    if (ModelOf(pair.first) != nullptr) return false;
    pair.second->Detach();
    return true;
  });
  if (ModelOf(menu) == nullptr) return nullptr;
  auto& object = made_up[menu];
  if (object == nullptr) {
    // Let go before its end: it never owned the menu.
    struct Borrowed : CMenu {
      ~Borrowed() override { Detach(); }
    };
    object = std::make_unique<Borrowed>();
    object->m_hMenu = menu;
  }
  return object.get();
}

BOOL CMenu::AppendMenu(UINT flags, UINT_PTR id, LPCTSTR text) {
  return InsertMenu(kNothing, flags | MF_BYPOSITION, id, text);
}

BOOL CMenu::InsertMenu(UINT position, UINT flags, UINT_PTR id, LPCTSTR text) {
  const auto model = ModelOf(m_hMenu);
  if (model == nullptr) return FALSE;
  lorv::MenuEntry fresh;
  // How the call names the place is nothing that the entry keeps.
  fresh.flags = lorv::Without(flags, MF_BYPOSITION | MF_POPUP);
  fresh.text = text;
  if ((flags & MF_POPUP) != 0) {
    // The model is shared with the menu of its own: what is changed there is shown here.
    const auto submenu = ModelOf(reinterpret_cast<HMENU>(id));
    // A circle would never end when it is searched or shown.
    if (submenu == nullptr || Contains(*submenu, model.get())) return FALSE;
    fresh.submenu = submenu;
  } else {
    fresh.id = static_cast<UINT>(id);
  }
  auto& entries = model->entries;
  std::size_t at = position;
  if ((flags & MF_BYPOSITION) == 0) {
    const lorv::MenuEntry* const before = ByCommand(*model, position);
    // Before the command, or at the end where it is not in this menu itself.
    for (at = 0; at < entries.size() && &entries[at] != before;) ++at;
  }
  entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(std::min(at, entries.size())),
                 std::move(fresh));
  return TRUE;
}

lorv::MenuEntry* CMenu::Entry(UINT position, UINT flags) const {
  const auto model = ModelOf(m_hMenu);
  if (model == nullptr) return nullptr;
  if ((flags & MF_BYPOSITION) == 0) return ByCommand(*model, position);
  return position < model->entries.size() ? &model->entries[position] : nullptr;
}

BOOL CMenu::DeleteMenu(UINT position, UINT flags) {
  const auto model = ModelOf(m_hMenu);
  const lorv::MenuEntry* const gone = Entry(position, flags);
  return static_cast<BOOL>(gone != nullptr && Erase(*model, gone));
}

int CMenu::GetMenuItemCount() const {
  const auto model = ModelOf(m_hMenu);
  return model == nullptr ? -1 : static_cast<int>(model->entries.size());
}

UINT CMenu::GetMenuItemID(int position) const {
  const lorv::MenuEntry* const entry =
      position < 0 ? nullptr : Entry(static_cast<UINT>(position), MF_BYPOSITION);
  return entry == nullptr || entry->submenu != nullptr ? kNothing : entry->id;
}

UINT CMenu::GetMenuState(UINT position, UINT flags) const {
  const lorv::MenuEntry* const entry = Entry(position, flags);
  if (entry == nullptr) return kNothing;
  if (entry->submenu == nullptr) return entry->flags;
  // Of a submenu the count of its entries stands in the second byte.
  return (entry->flags & 0xFFU) | MF_POPUP | (static_cast<UINT>(entry->submenu->entries.size()) << 8U);
}

int CMenu::GetMenuString(UINT position, CString& text, UINT flags) const {
  const lorv::MenuEntry* const entry = Entry(position, flags);
  text = entry == nullptr ? CString() : entry->text;
  return text.GetLength();
}

CMenu* CMenu::GetSubMenu(int position) const {
  const lorv::MenuEntry* const entry =
      position < 0 ? nullptr : Entry(static_cast<UINT>(position), MF_BYPOSITION);
  return entry == nullptr || entry->submenu == nullptr ? nullptr : FromHandle(HandleOf(entry->submenu.get()));
}

UINT CMenu::CheckMenuItem(UINT position, UINT check) {
  lorv::MenuEntry* const entry = Entry(position, check);
  if (entry == nullptr) return kNothing;
  const UINT former = entry->flags & MF_CHECKED;
  entry->flags = lorv::Without(entry->flags, MF_CHECKED) | (check & MF_CHECKED);
  return former;
}

UINT CMenu::EnableMenuItem(UINT position, UINT enable) {
  lorv::MenuEntry* const entry = Entry(position, enable);
  if (entry == nullptr) return kNothing;
  const UINT former = entry->flags & kStates;
  entry->flags = lorv::Without(entry->flags, kStates) | (enable & kStates);
  return former;
}

BOOL CMenu::TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, LPCRECT /*always_null*/) {
  // What is shown stays as it is, whatever handlers do to the menu meanwhile.
  const auto model = ModelOf(m_hMenu);
  if (model == nullptr) return FALSE;
  const HWND window = owner == nullptr ? nullptr : owner->m_hWnd;
  const lorv::MenuModel shown = *model;
  const UINT chosen = lorv::DesktopInForce().Popup(shown, {x, y}, flags, window);
  if ((flags & TPM_RETURNCMD) != 0) return static_cast<BOOL>(chosen);
  // Posted, not sent: the menu is gone from the screen before the command runs.
  if (chosen != 0) lorv::DesktopInForce().Post(window, WM_COMMAND, MAKEWPARAM(chosen, 0), 0);
  return TRUE;
}
