#include "platform/win32/window/accessible_provider.h"

#include <limits>

#include "framework/drawing/geometry.h"
#include "framework/values/bstr.h"
#include "framework/windows/accessible_window.h"
#include "platform/win32/services/system_object.h"

// Our accessible objects as the system's screen readers ask for them. Each answer is made from the object at
// the time, which may be of a window that has gone: then the reader gets a failure. Names, roles and states
// are translated here and nowhere else.

namespace lorv {
namespace {

// In the order of AccessRole.
constexpr LONG kRoles[] = {ROLE_SYSTEM_WINDOW,       ROLE_SYSTEM_DIALOG,     ROLE_SYSTEM_PANE,
                           ROLE_SYSTEM_GROUPING,     ROLE_SYSTEM_TABLE,      ROLE_SYSTEM_CELL,
                           ROLE_SYSTEM_COLUMNHEADER, ROLE_SYSTEM_ROWHEADER,  ROLE_SYSTEM_TEXT,
                           ROLE_SYSTEM_STATICTEXT,   ROLE_SYSTEM_PUSHBUTTON, ROLE_SYSTEM_CHECKBUTTON,
                           ROLE_SYSTEM_RADIOBUTTON,  ROLE_SYSTEM_LIST,       ROLE_SYSTEM_LISTITEM,
                           ROLE_SYSTEM_COMBOBOX,     ROLE_SYSTEM_GRAPHIC};

struct StatePair {
  unsigned ours;
  LONG system;
};
constexpr StatePair kStates[] = {{kAccessFocusable, STATE_SYSTEM_FOCUSABLE},
                                 {kAccessFocused, STATE_SYSTEM_FOCUSED},
                                 {kAccessSelectable, STATE_SYSTEM_SELECTABLE},
                                 {kAccessSelected, STATE_SYSTEM_SELECTED},
                                 {kAccessReadOnly, STATE_SYSTEM_READONLY},
                                 {kAccessDisabled, STATE_SYSTEM_UNAVAILABLE},
                                 {kAccessHidden, STATE_SYSTEM_INVISIBLE},
                                 {kAccessOffscreen, STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN},
                                 {kAccessChecked, STATE_SYSTEM_CHECKED},
                                 {kAccessMixed, STATE_SYSTEM_MIXED},
                                 {kAccessExpanded, STATE_SYSTEM_EXPANDED},
                                 {kAccessProtected, STATE_SYSTEM_PROTECTED},
                                 {kAccessDefault, STATE_SYSTEM_DEFAULT}};

LONG SystemState(unsigned bits) {
  LONG state = 0;
  for (const StatePair& pair : kStates)
    if ((bits & pair.ours) != 0) state |= pair.system;
  // The system knows no "can be opened": what is not open and could be is closed.
  const bool closed = (bits & kAccessExpandable) != 0 && (bits & kAccessExpanded) == 0;
  return closed ? state | STATE_SYSTEM_COLLAPSED : state;
}

const wchar_t* NameOf(AccessAction action) {
  switch (action) {
    case AccessAction::Press:
      return L"Press";
    case AccessAction::Toggle:
      return L"Toggle";
    case AccessAction::ShowList:
      return L"ShowList";
    case AccessAction::Edit:
      return L"Edit";
    default:
      return L"SetFocus";
  }
}

using Object = std::shared_ptr<AccessibleObject>;

// No text at all is S_FALSE.
HRESULT GiveText(const CString& text, BSTR* answer) {
  *answer = text.IsEmpty() ? nullptr : _bstr_t(text).Detach();
  return *answer == nullptr ? S_FALSE : S_OK;
}

HRESULT GiveNumber(LONG number, VARIANT* answer) {
  answer->vt = VT_I4;
  answer->lVal = number;
  return S_OK;
}

HRESULT GiveObject(const Object& object, VARIANT* answer) {
  answer->vt = VT_EMPTY;
  if (object == nullptr) return S_FALSE;
  answer->vt = VT_DISPATCH;
  answer->pdispVal = MakeAccessible(object);
  return S_OK;
}

void FillObject(const Object& object, VARIANT& answer) {
  GiveObject(object, &answer);
}
using ObjectList = CountedList<IEnumVARIANT, VARIANT, Object, &FillObject>;

class Provider : public CountedObject<IAccessible> {
 public:
  explicit Provider(Object object) : object_(std::move(object)) {}

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*which*/, LCID /*locale*/, ITypeInfo** /*info*/) override {
    return E_NOTIMPL;
  }
  // Readers call by the interface's own table; scripts by name are not served.
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*iid*/, LPOLESTR* /*names*/, UINT /*count*/,
                                          LCID /*locale*/, DISPID* /*ids*/) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID /*id*/, REFIID /*iid*/, LCID /*locale*/, WORD /*flags*/,
                                   DISPPARAMS* /*parameters*/, VARIANT* /*result*/, EXCEPINFO* /*fault*/,
                                   UINT* /*argument*/) override {
    return E_NOTIMPL;
  }

  HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override {
    return Answer(parent, [&] { return GiveParent(parent); });
  }
  HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override {
    return Answer(count, [&] { return *count = object_->ChildCount(), S_OK; });
  }
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT which, IDispatch** child) override {
    return Answer(child, [&] {
      const Object found = Which(which);
      if (found == nullptr) return E_INVALIDARG;
      *child = MakeAccessible(found);
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE get_accName(VARIANT which, BSTR* name) override {
    return OfOne(which, name, [&](AccessibleObject& one) { return GiveText(one.Name(), name); });
  }
  HRESULT STDMETHODCALLTYPE get_accValue(VARIANT which, BSTR* value) override {
    return OfOne(which, value, [&](AccessibleObject& one) { return GiveText(one.Value(), value); });
  }
  // Where a cell stands, counted from 1 as spreadsheets write it: the interface has no place for rows.
  HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT which, BSTR* text) override {
    return OfOne(which, text, [&](AccessibleObject& one) {
      CString place;
      if (one.Row() >= 0 && one.Column() >= 0) place.Format(_T("R%dC%d"), one.Row() + 1, one.Column() + 1);
      return GiveText(place, text);
    });
  }
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT which, VARIANT* role) override {
    return OfOne(which, role, [&](AccessibleObject& one) {
      return GiveNumber(kRoles[static_cast<int>(one.Role())], role);
    });
  }
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT which, VARIANT* state) override {
    return OfOne(which, state,
                 [&](AccessibleObject& one) { return GiveNumber(SystemState(one.State()), state); });
  }
  HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT /*which*/, BSTR* help) override { return None(help); }
  HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT /*which*/, LONG* /*topic*/) override {
    return None(file);
  }
  HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT /*which*/, BSTR* keys) override {
    return None(keys);
  }
  HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* focus) override {
    return Answer(focus, [&] {
      const Object child = object_->FocusedChild();
      if (child != nullptr) return GiveObject(child, focus);
      focus->vt = VT_EMPTY;
      return (object_->State() & kAccessFocused) != 0 ? GiveNumber(CHILDID_SELF, focus) : S_FALSE;
    });
  }
  HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* selection) override {
    return Answer(selection, [&] {
      const std::vector<Object> selected = object_->Selected();
      // One is given itself, several as a list: so the interface wants it.
      if (selected.size() < 2) return GiveObject(selected.empty() ? nullptr : selected.front(), selection);
      selection->vt = VT_UNKNOWN;
      selection->punkVal = new ObjectList(selected);
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT which, BSTR* action) override {
    return OfOne(which, action, [&](AccessibleObject& one) {
      const auto actions = one.Actions();
      return GiveText(actions.empty() ? CString() : CString(NameOf(actions.front())), action);
    });
  }
  HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT which) override {
    return Of(which, [&](AccessibleObject& one) {
      // The focus first: taking it may change the selection that is asked for next.
      if ((flags & SELFLAG_TAKEFOCUS) != 0) one.Do(AccessAction::Focus);
      constexpr LONG kOn = SELFLAG_TAKESELECTION | SELFLAG_ADDSELECTION;
      if ((flags & (kOn | SELFLAG_REMOVESELECTION)) == 0) return S_OK;
      return one.Select((flags & kOn) != 0) ? S_OK : S_FALSE;
    });
  }
  HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                        VARIANT which) override {
    if (left == nullptr || top == nullptr || width == nullptr || height == nullptr) return E_POINTER;
    return Of(which, [&](AccessibleObject& one) {
      const CRect place(one.Place());
      *left = place.left, *top = place.top, *width = place.Width(), *height = place.Height();
      return S_OK;
    });
  }
  // Readers walk by children and parents.
  HRESULT STDMETHODCALLTYPE accNavigate(LONG /*way*/, VARIANT /*start*/, VARIANT* end) override {
    if (end != nullptr) end->vt = VT_EMPTY;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE accHitTest(LONG x, LONG y, VARIANT* hit) override {
    return Answer(hit, [&] {
      const Object inner = object_->At({x, y});
      if (inner != nullptr) return GiveObject(inner, hit);
      hit->vt = VT_EMPTY;
      return CRect(object_->Place()).PtInRect({x, y}) != 0 ? GiveNumber(CHILDID_SELF, hit) : S_FALSE;
    });
  }
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT which) override {
    return Of(which, [&](AccessibleObject& one) {
      const auto actions = one.Actions();
      if (actions.empty()) return DISP_E_MEMBERNOTFOUND;
      return one.Do(actions.front()) ? S_OK : S_FALSE;
    });
  }
  HRESULT STDMETHODCALLTYPE put_accName(VARIANT /*which*/, BSTR /*name*/) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_accValue(VARIANT which, BSTR value) override {
    return Of(which, [&](AccessibleObject& one) {
      return one.SetValue(CString(TextOfBstr(value))) ? S_OK : E_ACCESSDENIED;
    });
  }

 protected:
  bool Answers(REFIID wanted) const override {
    return CountedObject<IAccessible>::Answers(wanted) || IsEqualIID(wanted, IID_IDispatch);
  }

 private:
  // What a handler of the class throws does not pass through the system.
  template <class Work>
  HRESULT Living(Work work) const {
    // A handler may let go of the last count of this object in the middle of the call.
    const Object keep = object_;
    try {
      return keep->Exists() ? static_cast<HRESULT>(work()) : CO_E_OBJNOTCONNECTED;
    } catch (...) {
      return E_FAIL;
    }
  }
  template <class Room, class Work>
  HRESULT Answer(Room* room, Work work) const {
    if (room == nullptr) return E_POINTER;
    // In any case, as the system's rules are: a caller may free what stands there after a failure.
    *room = {};
    return Living(work);
  }
  template <class Work>
  HRESULT Of(const VARIANT& which, Work work) const {
    return Living([&]() -> HRESULT {
      const Object one = Which(which);
      return one == nullptr ? E_INVALIDARG : work(*one);
    });
  }
  template <class Room, class Work>
  HRESULT OfOne(const VARIANT& which, Room* room, Work work) const {
    if (room == nullptr) return E_POINTER;
    *room = {};
    return Of(which, work);
  }
  static HRESULT None(BSTR* text) {
    if (text == nullptr) return E_POINTER;
    *text = nullptr;
    return S_FALSE;
  }

  Object Which(const VARIANT& which) const {
    if (which.vt != VT_I4) return nullptr;
    if (which.lVal == CHILDID_SELF) return object_;
    // Positive numbers are children by place; negative ones are those that our events name.
    return which.lVal > 0 ? object_->Child(which.lVal - 1) : object_->Numbered(-std::int64_t{which.lVal});
  }

  // Above the client area of a window stands the window itself, of which the system knows.
  HRESULT GiveParent(IDispatch** parent) const {
    if (object_->Number() != 0) {
      *parent = MakeAccessible(object_->Parent());
      return *parent == nullptr ? S_FALSE : S_OK;
    }
    void* above = nullptr;
    const HRESULT found = AccessibleObjectFromWindow(object_->Window(), static_cast<DWORD>(OBJID_WINDOW),
                                                     __uuidof(IAccessible), &above);
    *parent = SUCCEEDED(found) ? static_cast<IAccessible*>(above) : nullptr;
    return *parent == nullptr ? S_FALSE : S_OK;
  }

  Object object_;
};

DWORD SystemEvent(AccessEvent event) {
  switch (event) {
    case AccessEvent::Focus:
      return EVENT_OBJECT_FOCUS;
    case AccessEvent::Name:
      return EVENT_OBJECT_NAMECHANGE;
    case AccessEvent::Value:
      return EVENT_OBJECT_VALUECHANGE;
    case AccessEvent::Selection:
      return EVENT_OBJECT_SELECTION;
    case AccessEvent::State:
      return EVENT_OBJECT_STATECHANGE;
    default:
      return EVENT_OBJECT_REORDER;
  }
}

}  // namespace

IAccessible* MakeAccessible(const Object& object) {
  return object == nullptr ? nullptr : new Provider(object);
}

LRESULT AnswerGetObject(HWND window, WPARAM w, LPARAM l) {
  // The number of the object is 32 bits, whatever the words are.
  if (static_cast<LONG>(l) != OBJID_CLIENT || !HasOwnAccessible(window)) return 0;
  const CountedReference<IAccessible> tree(MakeAccessible(AccessibleOf(window)));
  return tree.Get() == nullptr ? 0 : LresultFromObject(__uuidof(IAccessible), w, tree.Get());
}

// An object beyond the system's numbers is reported as its window.
void ReportNativeReaders(HWND window, AccessEvent event, std::int64_t number) {
  const bool fits = number > 0 && number <= std::numeric_limits<LONG>::max();
  NotifyWinEvent(SystemEvent(event), window, OBJID_CLIENT, fits ? static_cast<LONG>(-number) : CHILDID_SELF);
}

}  // namespace lorv
