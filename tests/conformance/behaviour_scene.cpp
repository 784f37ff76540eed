#include "tests/conformance/behaviour_scene.h"

#include <map>
#include <stdexcept>

namespace lorv_test {
namespace {

using lorv::DialogItem;
using lorv::WindowKind;

const DialogItem kItems[] = {
    {WindowKind::Static, 0xFFFF, 7, 7, 90, 8, 0, _T("名称(&N)：")},
    {WindowKind::Edit, kEdit, 7, 20, 150, 14, WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL, _T("")},
    {WindowKind::Edit, kLines, 7, 40, 150, 40, WS_TABSTOP | WS_BORDER | ES_MULTILINE | ES_WANTRETURN, _T("")},
    {WindowKind::Button, kFirstRadio, 7, 85, 50, 12, WS_TABSTOP | WS_GROUP | BS_AUTORADIOBUTTON, _T("&A")},
    {WindowKind::Button, kSecondRadio, 60, 85, 50, 12, BS_AUTORADIOBUTTON, _T("&B")},
    {WindowKind::Button, IDOK, 7, 100, 50, 14, WS_TABSTOP | WS_GROUP | BS_DEFPUSHBUTTON, _T("确定")},
    {WindowKind::Button, IDCANCEL, 60, 100, 50, 14, WS_TABSTOP | BS_PUSHBUTTON, _T("取消")},
};
const lorv::DialogTemplate kForm = {2000, _T("附加提示"), 180, 120, _T("SimSun"), 9, kItems};

const std::map<int, const char*> kNames = {
    {kSheet, "sheet"},        {kEdit, "edit"},   {kLines, "lines"},
    {kChoice, "choice"},      {kTyped, "typed"}, {kList, "list"},
    {kPush, "push"},          {kCheck, "check"}, {kFirstRadio, "first"},
    {kSecondRadio, "second"}, {kExtra, "extra"}, {IDOK, "ok"},
    {IDCANCEL, "cancel"},     {0, "frame"}};

// Notifications that the script is about; not all systems report the focus of buttons alike.
const char* CodeName(int id, int code) {
  static const std::map<int, const char*> edit = {{EN_SETFOCUS, "focus"},
                                                  {EN_KILLFOCUS, "leave"},
                                                  {EN_CHANGE, "change"},
                                                  {EN_UPDATE, "update"},
                                                  {EN_MAXTEXT, "full"}};
  static const std::map<int, const char*> combo = {
      {CBN_SELCHANGE, "select"},  {CBN_SETFOCUS, "focus"},    {CBN_KILLFOCUS, "leave"},
      {CBN_EDITCHANGE, "change"}, {CBN_EDITUPDATE, "update"}, {CBN_DROPDOWN, "drop"},
      {CBN_CLOSEUP, "close"},     {CBN_SELENDOK, "taken"},    {CBN_SELENDCANCEL, "given up"}};
  static const std::map<int, const char*> list = {{LBN_SELCHANGE, "select"}, {LBN_DBLCLK, "double"}};
  static const std::map<int, const char*> button = {{BN_CLICKED, "click"}};
  const bool is_edit = id == kEdit || id == kLines || id == kExtra;
  const bool is_combo = id == kChoice || id == kTyped;
  const auto& names = is_edit ? edit : is_combo ? combo : id == kList ? list : button;
  const auto found = names.find(code);
  return found == names.end() ? nullptr : found->second;
}

std::string At(LPARAM l) {
  return std::to_string(static_cast<short>(LOWORD(l))) + "," + std::to_string(static_cast<short>(HIWORD(l)));
}

std::string SheetEvent(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_KEYDOWN:
      // The key that an input method took: some compose without one.
      return w == VK_PROCESSKEY ? std::string() : "key " + std::to_string(w);
    case WM_CHAR:
      return "char " + std::to_string(w);
    case WM_LBUTTONDOWN:
      return "press " + At(l);
    case WM_LBUTTONUP:
      return "release " + At(l);
    case WM_LBUTTONDBLCLK:
      return "double " + At(l);
    case WM_SETFOCUS:
      return "focus";
    case WM_KILLFOCUS:
      return "leave";
    case WM_CAPTURECHANGED:
      return "capture lost";
    case WM_TIMER:
      return "timer " + std::to_string(w);
    case WM_ENABLE:
      return w != 0 ? "enabled" : "disabled";
    case WM_CREATE:
      return "create";
    case WM_DESTROY:
      return "destroy";
    case WM_NCDESTROY:
      return "gone";
    case WM_SIZE:
      return "size " + At(l);
    case WM_USER:
      return "user " + std::to_string(w);
    case WM_IME_STARTCOMPOSITION:
      return "composition begins";
    case WM_IME_ENDCOMPOSITION:
      return "composition ends";
    default:
      return {};
  }
}

void SayCommand(Scene& scene, int id, int code) {
  const char* const name = CodeName(id, code);
  if (name != nullptr) scene.Say(Scene::NameOf(id) + " " + name);
}

}  // namespace

LRESULT TracedSheet::WindowProc(UINT message, WPARAM w, LPARAM l) {
  const std::string event = SheetEvent(message, w, l);
  if (!event.empty()) scene_.Say(Scene::NameOf(GetDlgCtrlID()) + " " + event);
  const auto reaction = on;
  if (!event.empty() && reaction) reaction(event);
  return CWnd::WindowProc(message, w, l);
}

BOOL TracedSheet::PreTranslateMessage(MSG* message) {
  return takes && takes(*message);
}

BOOL TracedFrame::OnCommand(WPARAM w, LPARAM l) {
  const int id = LOWORD(w);
  const int code = HIWORD(w);
  SayCommand(scene_, id, code);
  const auto reaction = on;
  if (reaction) reaction(id, code);
  return l == 0 ? CWnd::OnCommand(w, l) : TRUE;
}

TracedDialog::TracedDialog(Scene& scene) : CDialog(kForm, &scene.frame), scene_(scene) {}

BOOL TracedDialog::PreTranslateMessage(MSG* message) {
  if (takes && takes(*message)) return TRUE;
  return CDialog::PreTranslateMessage(message);
}

BOOL TracedDialog::OnInitDialog() {
  scene_.Say("dialog init");
  return CDialog::OnInitDialog();
}

void TracedDialog::OnOK() {
  scene_.Say("dialog ok");
  CDialog::OnOK();
}

void TracedDialog::OnCancel() {
  scene_.Say("dialog cancel");
  CDialog::OnCancel();
}

BOOL TracedDialog::OnCommand(WPARAM w, LPARAM l) {
  const int id = LOWORD(w);
  const int code = HIWORD(w);
  if (id != IDOK && id != IDCANCEL) SayCommand(scene_, id, code);
  const auto reaction = on;
  if (reaction) reaction(id, code);
  return CDialog::OnCommand(w, l);
}

Scene::Scene(BehaviourDriver& player) : driver(player), frame(*this), sheet(*this) {
  constexpr DWORD kChild = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
  frame.Create(nullptr, _T("conduct"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(60, 60, 560, 460), nullptr, 0);
  sheet.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(10, 10, 110, 110), &frame, kSheet);
  edit.Create(kChild | ES_AUTOHSCROLL, CRect(120, 10, 260, 34), &frame, kEdit);
  lines.Create(kChild | ES_MULTILINE | ES_WANTRETURN, CRect(120, 40, 260, 110), &frame, kLines);
  choice.Create(kChild | CBS_DROPDOWNLIST, CRect(10, 120, 110, 260), &frame, kChoice);
  typed.Create(kChild | CBS_DROPDOWN, CRect(120, 120, 260, 260), &frame, kTyped);
  list.Create(kChild | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, CRect(280, 10, 380, 110), &frame, kList);
  push.Create(_T("push"), kChild | BS_PUSHBUTTON, CRect(280, 120, 380, 144), &frame, kPush);
  check.Create(_T("check"), kChild | BS_AUTOCHECKBOX, CRect(280, 150, 380, 174), &frame, kCheck);
  first.Create(_T("first"), kChild | WS_GROUP | BS_AUTORADIOBUTTON, CRect(280, 180, 380, 204), &frame,
               kFirstRadio);
  second.Create(_T("second"), WS_CHILD | WS_VISIBLE | BS_AUTORADIOBUTTON, CRect(280, 210, 380, 234), &frame,
                kSecondRadio);
  for (const LPCTSTR text : {_T("C20"), _T("C25"), _T("C30"), _T("C35")}) {
    choice.AddString(text);
    typed.AddString(text);
    list.AddString(text);
  }
  frame.SetForegroundWindow();
  driver.Settle();
  trace.clear();
}

std::string Scene::NameOf(int id) {
  const auto found = kNames.find(id);
  return found == kNames.end() ? "window " + std::to_string(id) : found->second;
}

CString Scene::Text(const CWnd& window) {
  CString text;
  window.GetWindowText(text);
  return text;
}

void Scene::SayText(const CWnd& window) {
  CString text = Text(window);
  text.Replace(_T("\r\n"), _T("|"));
  Say(NameOf(window.GetDlgCtrlID()) + " = " + text.ToUtf8());
}

void Scene::SaySelection(const CEdit& of) {
  int start = 0;
  int end = 0;
  of.GetSel(start, end);
  Say(NameOf(of.GetDlgCtrlID()) + " selects " + std::to_string(start) + " to " + std::to_string(end));
}

void Scene::SayFocus() {
  const CWnd* const focus = CWnd::GetFocus();
  Say("focus at " + (focus == nullptr ? std::string("none") : NameOf(focus->GetDlgCtrlID())));
}

POINT Scene::On(const CWnd& window, int x, int y) const {
  POINT at = {x, y};
  window.ClientToScreen(&at);
  return at;
}

void Scene::Fill(CWnd& window, LPCTSTR text) {
  const std::size_t before = trace.size();
  window.SetWindowText(text);
  driver.Settle();
  trace.resize(before);
}

void SayThrown(Scene& s, const std::function<void()>& work) {
  try {
    work();
    s.Say("nothing thrown");
  } catch (const std::runtime_error& error) {
    s.Say(std::string("thrown: ") + error.what());
  }
}

HWND MakeBareEdit(lorv::Desktop& desktop, HWND parent, const RECT& place) {
  lorv::WindowRequest request;
  request.kind = WindowKind::Edit;
  request.style = WS_CHILD | WS_VISIBLE;
  request.place = place;
  request.parent = parent;
  request.id = kExtra;
  request.attach = [](HWND) {};
  return desktop.Create(request);
}

std::vector<std::string> PlayBehaviour(BehaviourDriver& driver) {
  Scene scene(driver);
  int number = 0;
  for (auto* const part :
       {EditSteps,       EditKeySteps,   EditStateSteps,     LineSteps,        ListSteps,
        TypedListSteps,  ButtonSteps,    MenuSteps,          WindowSteps,      QueueSteps,
        PlaceSteps,      PaintSteps,     DialogSteps,        DialogInputSteps, FaultSteps,
        LoopFaultSteps,  ScrollSteps,    ClipboardSteps,     CompositionSteps, DefaultButtonSteps,
        SystemLoopSteps, TakenAwaySteps, EndInCallbackSteps, EndingSteps,      LateEndingSteps}) {
    for (const Step& step : part()) {
      scene.trace.push_back(std::to_string(++number) + " " + step.name);
      step.play(scene);
      driver.Settle();
    }
  }
  return scene.trace;
}

}  // namespace lorv_test
