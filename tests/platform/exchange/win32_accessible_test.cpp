#include "framework/values/bstr.h"
#include "framework/windows/accessible_window.h"
#include "platform/win32/desktop/win32_desktop.h"
#include "platform/win32/services/system_object.h"
#include "platform/win32/window/accessible_provider.h"
#include "tests/platform/exchange/accessible_suite.h"

namespace lorv_test {
namespace {

using lorv::AccessRole;
using Reference = lorv::CountedReference<IAccessible>;

AccessRole RoleOf(LONG role) {
  static const std::map<LONG, AccessRole> known = {{ROLE_SYSTEM_TABLE, AccessRole::Table},
                                                   {ROLE_SYSTEM_CELL, AccessRole::Cell},
                                                   {ROLE_SYSTEM_COLUMNHEADER, AccessRole::ColumnHeader},
                                                   {ROLE_SYSTEM_ROWHEADER, AccessRole::RowHeader},
                                                   {ROLE_SYSTEM_TEXT, AccessRole::Text},
                                                   {ROLE_SYSTEM_STATICTEXT, AccessRole::Label},
                                                   {ROLE_SYSTEM_PUSHBUTTON, AccessRole::Button},
                                                   {ROLE_SYSTEM_CHECKBUTTON, AccessRole::CheckBox},
                                                   {ROLE_SYSTEM_RADIOBUTTON, AccessRole::RadioButton},
                                                   {ROLE_SYSTEM_GROUPING, AccessRole::Group},
                                                   {ROLE_SYSTEM_LIST, AccessRole::List},
                                                   {ROLE_SYSTEM_LISTITEM, AccessRole::ListItem},
                                                   {ROLE_SYSTEM_COMBOBOX, AccessRole::DropDown}};
  const auto found = known.find(role);
  return found == known.end() ? AccessRole::Image : found->second;
}

unsigned StateOf(LONG state) {
  constexpr std::pair<LONG, unsigned> kPairs[] = {
      {STATE_SYSTEM_FOCUSABLE, lorv::kAccessFocusable},  {STATE_SYSTEM_FOCUSED, lorv::kAccessFocused},
      {STATE_SYSTEM_SELECTED, lorv::kAccessSelected},    {STATE_SYSTEM_READONLY, lorv::kAccessReadOnly},
      {STATE_SYSTEM_UNAVAILABLE, lorv::kAccessDisabled}, {STATE_SYSTEM_INVISIBLE, lorv::kAccessHidden},
      {STATE_SYSTEM_OFFSCREEN, lorv::kAccessOffscreen},  {STATE_SYSTEM_CHECKED, lorv::kAccessChecked},
      {STATE_SYSTEM_EXPANDED, lorv::kAccessExpanded},    {STATE_SYSTEM_PROTECTED, lorv::kAccessProtected}};
  unsigned bits = 0;
  for (const auto& [system, ours] : kPairs)
    if ((state & system) != 0) bits |= ours;
  return bits;
}

VARIANT Self() {
  VARIANT self = {};
  self.vt = VT_I4;
  return self;
}

CString Taken(BSTR text) {
  const _bstr_t owner(text, false);
  return CString(owner.View());
}

class NativeObject : public HeldObject {
 public:
  explicit NativeObject(IAccessible* given) : held_(given) {}
  static Ref Made(IDispatch* given) {
    const lorv::CountedReference<IDispatch> owner(given);
    void* answer = nullptr;
    if (given == nullptr || FAILED(given->QueryInterface(__uuidof(IAccessible), &answer))) return nullptr;
    return std::make_unique<NativeObject>(static_cast<IAccessible*>(answer));
  }
  static Ref Made(const VARIANT& given) { return given.vt == VT_DISPATCH ? Made(given.pdispVal) : nullptr; }

  SeenObject See() const override {
    SeenObject seen;
    LONG count = 0;
    if (held_->get_accChildCount(&count) == CO_E_OBJNOTCONNECTED) return seen;
    VARIANT role = {}, state = {};
    BSTR name = nullptr, value = nullptr;
    LONG left = 0, top = 0, width = 0, height = 0;
    EXPECT_EQ(held_->get_accRole(Self(), &role), S_OK);
    EXPECT_EQ(held_->get_accState(Self(), &state), S_OK);
    held_->get_accName(Self(), &name);
    held_->get_accValue(Self(), &value);
    EXPECT_EQ(held_->accLocation(&left, &top, &width, &height, Self()), S_OK);
    return {true,         RoleOf(role.lVal),   Taken(name),
            Taken(value), StateOf(state.lVal), CRect(CPoint(left, top), SIZE{width, height}),
            count};
  }
  Ref Child(int index) const override {
    VARIANT which = Self();
    which.lVal = index + 1;
    IDispatch* child = nullptr;
    return SUCCEEDED(held_->get_accChild(which, &child)) ? Made(child) : nullptr;
  }
  Ref Parent() const override {
    IDispatch* parent = nullptr;
    return held_->get_accParent(&parent) == S_OK ? Made(parent) : nullptr;
  }
  Ref At(POINT at) const override {
    VARIANT hit = {};
    return held_->accHitTest(at.x, at.y, &hit) == S_OK ? Made(hit) : nullptr;
  }
  Ref Focused() const override {
    VARIANT focus = {};
    return held_->get_accFocus(&focus) == S_OK ? Made(focus) : nullptr;
  }
  std::vector<Ref> Selected() const override {
    std::vector<Ref> all;
    VARIANT selection = {};
    if (held_->get_accSelection(&selection) != S_OK) return all;
    if (selection.vt == VT_DISPATCH) all.push_back(Made(selection));
    if (selection.vt != VT_UNKNOWN) return all;
    const lorv::CountedReference<IUnknown> owner(selection.punkVal);
    void* answer = nullptr;
    EXPECT_EQ(owner->QueryInterface(__uuidof(IEnumVARIANT), &answer), S_OK);
    const lorv::CountedReference<IEnumVARIANT> list(static_cast<IEnumVARIANT*>(answer));
    VARIANT one = {};
    while (list->Next(1, &one, nullptr) == S_OK) all.push_back(Made(one));
    return all;
  }
  bool SetValue(const CString& value) override {
    return held_->put_accValue(Self(), _bstr_t(value).GetBSTR()) == S_OK;
  }
  void DoFirstAction() override { held_->accDoDefaultAction(Self()); }

 private:
  Reference held_;
};

struct Report {
  HWND window;
  std::string event;
};
std::vector<Report> reported;

const char* NameOf(DWORD event) {
  switch (event) {
    case EVENT_OBJECT_FOCUS:
      return "focus";
    case EVENT_OBJECT_VALUECHANGE:
      return "value";
    case EVENT_OBJECT_STATECHANGE:
      return "state";
    case EVENT_OBJECT_SELECTION:
      return "selection";
    case EVENT_OBJECT_REORDER:
      return "structure";
    default:
      return nullptr;
  }
}

void CALLBACK NoteEvent(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG child, DWORD, DWORD) {
  const char* const name = object == OBJID_CLIENT ? NameOf(event) : nullptr;
  if (name != nullptr) reported.push_back({window, std::string(name) + " " + std::to_string(-child)});
}

class NativeReader : public AccessReader {
 public:
  NativeReader() {
    reported.clear();
    hook_ = SetWinEventHook(EVENT_MIN, EVENT_MAX, GetModuleHandleW(nullptr), &NoteEvent,
                            GetCurrentProcessId(), GetCurrentThreadId(), WINEVENT_INCONTEXT);
  }
  ~NativeReader() override { UnhookWinEvent(hook_); }
  HeldObject::Ref Of(HWND window) override {
    IAccessible* const made = lorv::MakeAccessible(lorv::AccessibleOf(window));
    return made == nullptr ? nullptr : std::make_unique<NativeObject>(made);
  }
  std::vector<std::string> TakeEvents(HWND window) override {
    std::vector<std::string> events;
    for (const Report& one : std::exchange(reported, {}))
      if (one.window == window) events.push_back(one.event);
    return events;
  }

 private:
  HWINEVENTHOOK hook_ = nullptr;
};

struct SystemWindows {
  static std::unique_ptr<lorv::Desktop> Make() { return lorv::MakeWin32Desktop(); }
  static constexpr bool kGuardsEdits = true;
  static std::unique_ptr<AccessReader> Reader() { return std::make_unique<NativeReader>(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Win32, Accessible, SystemWindows);

class Provided : public AccessScene {
 protected:
  Provided() : AccessScene(lorv::MakeWin32Desktop()) {}
  IAccessible* Table() { return lorv::MakeAccessible(lorv::AccessibleOf(cells.m_hWnd)); }
};

TEST_F(Provided, WindowsOfTheirOwnAnswerTheSystemsQuestion) {
  const auto client = static_cast<LPARAM>(static_cast<LONG>(OBJID_CLIENT));
  EXPECT_NE(SendMessageW(cells.m_hWnd, WM_GETOBJECT, 0, client), 0);
  EXPECT_NE(SendMessageW(cells.m_hWnd, WM_GETOBJECT, 0, static_cast<DWORD>(OBJID_CLIENT)), 0)
      << "as 32 bits without a sign";
  EXPECT_EQ(lorv::AnswerGetObject(edit.m_hWnd, 0, client), 0) << "the system knows its controls";
  EXPECT_EQ(lorv::AnswerGetObject(cells.m_hWnd, 0, OBJID_WINDOW), 0) << "and the frame";
}

TEST_F(Provided, ChildrenAreHadByTheNumbersOfEvents) {
  const Reference table(Table());
  VARIANT which = Self();
  which.lVal = -11;
  IDispatch* child = nullptr;
  ASSERT_EQ(table->get_accChild(which, &child), S_OK);
  EXPECT_EQ(NativeObject::Made(child)->See().value, CString(_T("3600")));
  BSTR text = nullptr;
  EXPECT_EQ(table->get_accValue(which, &text), S_OK) << "or asked through the table";
  EXPECT_EQ(Taken(text), CString(_T("3600")));
  EXPECT_EQ(table->get_accDescription(which, &text), S_OK);
  EXPECT_EQ(Taken(text), CString(_T("R2C2")));
  EXPECT_EQ(table->get_accDefaultAction(which, &text), S_OK);
  EXPECT_EQ(Taken(text), CString(_T("Edit")));
}

TEST_F(Provided, BadArgumentsAreRefused) {
  const Reference table(Table());
  VARIANT which = Self();
  BSTR text = nullptr;
  IDispatch* child = nullptr;
  for (const LONG bad : {21L, -21L, 1000000L, -1000000L}) {
    which.lVal = bad;
    EXPECT_EQ(table->get_accName(which, &text), E_INVALIDARG) << bad;
    EXPECT_EQ(table->get_accChild(which, &child), E_INVALIDARG) << bad;
    EXPECT_EQ(child, nullptr);
  }
  which.vt = VT_BSTR;
  EXPECT_EQ(table->get_accName(which, &text), E_INVALIDARG);
  EXPECT_EQ(table->get_accName(Self(), nullptr), E_POINTER);
  EXPECT_EQ(table->get_accChildCount(nullptr), E_POINTER);
  EXPECT_EQ(table->accLocation(nullptr, nullptr, nullptr, nullptr, Self()), E_POINTER);
}

TEST_F(Provided, ASelectionIsTakenAndGivenUp) {
  const Reference table(Table());
  VARIANT which = Self();
  which.lVal = -6;
  EXPECT_EQ(table->accSelect(SELFLAG_TAKESELECTION, which), S_OK);
  EXPECT_EQ(cells.chosen, (std::vector<lorv::CellAddress>{{0, 0}}));
  EXPECT_EQ(table->accSelect(SELFLAG_REMOVESELECTION, which), S_OK);
  EXPECT_TRUE(cells.chosen.empty());
}

TEST_F(Provided, WhatAHandlerThrowsGoesNoFurther) {
  const Reference table(Table());
  VARIANT which = Self();
  which.lVal = -11;
  EXPECT_EQ(table->put_accValue(which, _bstr_t(_T("throw")).GetBSTR()), E_FAIL);
}

TEST_F(Provided, ReferencesAreCounted) {
  IAccessible* const table = Table();
  void* other = nullptr;
  EXPECT_EQ(table->QueryInterface(IID_IDispatch, &other), S_OK);
  EXPECT_EQ(other, table);
  EXPECT_EQ(table->Release(), 1U);
  EXPECT_EQ(table->QueryInterface(IID_IDataObject, &other), E_NOINTERFACE);
  EXPECT_EQ(other, nullptr);
  EXPECT_EQ(table->Release(), 0U);
}

}  // namespace
}  // namespace lorv_test
