#include "tools/lorv-desk/table/find_dialog.h"

#include "tools/lorv/language/spoken_language.h"

// The dialog over GridFind: it takes options from its controls before each search, and says below them what
// came of it. Handlers of the grid may close it in the middle of a replacement.

namespace lorv::tool {
namespace {

constexpr DWORD kEditStyle = WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL;
constexpr DWORD kTick = WS_TABSTOP | BS_AUTOCHECKBOX;
constexpr DWORD kButton = WS_TABSTOP | BS_PUSHBUTTON;
constexpr UINT kFindLabel = 2010;
constexpr UINT kReplaceLabel = 2011;

// Texts come when it is shown, in the language that is spoken then.
const DialogItem kFindItems[] = {
    {WindowKind::Static, kFindLabel, 7, 9, 50, 10, 0, _T("")},
    {WindowKind::Edit, kFindText, 60, 7, 120, 13, kEditStyle, _T("")},
    {WindowKind::Static, kReplaceLabel, 7, 26, 50, 10, 0, _T("")},
    {WindowKind::Edit, kReplaceText, 60, 24, 120, 13, kEditStyle, _T("")},
    {WindowKind::Button, kWholeCell, 60, 42, 120, 11, kTick, _T("")},
    {WindowKind::Button, kMatchCase, 60, 55, 120, 11, kTick, _T("")},
    {WindowKind::Button, kSelectionOnly, 60, 68, 120, 11, kTick, _T("")},
    {WindowKind::Button, kPattern, 60, 81, 120, 11, kTick, _T("")},
    {WindowKind::Button, IDOK, 188, 7, 64, 14, WS_TABSTOP | BS_DEFPUSHBUTTON, _T("")},
    {WindowKind::Button, kReplaceOne, 188, 24, 64, 14, kButton, _T("")},
    {WindowKind::Button, kReplaceAll, 188, 41, 64, 14, kButton, _T("")},
    {WindowKind::Button, IDCANCEL, 188, 65, 64, 14, kButton, _T("")},
    {WindowKind::Static, kFindOutcome, 7, 97, 245, 10, 0, _T("")},
};

struct Label {
  UINT control;
  const char* text;
};

constexpr Label kLabels[] = {
    {kFindLabel, "Find"},       {kReplaceLabel, "Replace with"},
    {kWholeCell, "Whole cell"}, {kMatchCase, "Match case"},
    {IDOK, "Find next"},        {kSelectionOnly, "In the selection only"},
    {kReplaceOne, "Replace"},   {kReplaceAll, "Replace all"},
    {IDCANCEL, "Close"},        {kPattern, "Regular expression"},
};

CString Words(std::string_view english, std::initializer_list<std::string_view> values = {}) {
  return CString::FromUtf8(Say(english, values));
}

bool AreSame(const FindOptions& one, const FindOptions& other) {
  return one.text == other.text && one.whole_cell == other.whole_cell && one.match_case == other.match_case &&
         one.selection_only == other.selection_only && one.pattern == other.pattern;
}

}  // namespace

const DialogTemplate kFindForm = {
    2000, _T(""), 259, 113, _T("宋体"), 9, kFindItems, WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME};

BEGIN_MESSAGE_MAP(FindDialog, CDialog)
ON_BN_CLICKED(kReplaceOne, OnReplaceOne)
ON_BN_CLICKED(kReplaceAll, OnReplaceAll)
END_MESSAGE_MAP()

bool FindDialog::Show(CWnd& owner, bool with_replacement) {
  fresh_ = true;
  if (m_hWnd == nullptr && Create(kFindForm, &owner) == FALSE) return false;
  ShowWindow(SW_SHOW);
  CWnd* const text = m_hWnd == nullptr ? nullptr : GetDlgItem(with_replacement ? kReplaceText : kFindText);
  if (text != nullptr) {
    text->SetFocus();
    text->SendMessage(EM_SETSEL, 0, -1);
  }
  return true;
}

BOOL FindDialog::OnInitDialog() {
  SetWindowText(Words("Find and replace"));
  for (const Label& label : kLabels) SetDlgItemText(static_cast<int>(label.control), Words(label.text));
  const FindOptions& options = find_.Options();
  SetDlgItemText(kFindText, options.text);
  const auto tick = [this](UINT control, bool on) {
    GetDlgItem(static_cast<int>(control))->SendMessage(BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED);
  };
  tick(kWholeCell, options.whole_cell);
  tick(kMatchCase, options.match_case);
  tick(kSelectionOnly, options.selection_only);
  tick(kPattern, options.pattern);
  return CDialog::OnInitDialog();
}

CString FindDialog::TextAt(UINT control) const {
  CString text;
  GetDlgItemText(static_cast<int>(control), text);
  return text;
}

bool FindDialog::IsTicked(UINT control) const {
  return GetDlgItem(static_cast<int>(control))->SendMessage(BM_GETCHECK) == BST_CHECKED;
}

// The selection that is searched is the one that the user had when asking, not the cell found last.
void FindDialog::TakeOptions() {
  FindOptions options = find_.Options();
  options.text = TextAt(kFindText);
  options.whole_cell = IsTicked(kWholeCell);
  options.match_case = IsTicked(kMatchCase);
  options.selection_only = IsTicked(kSelectionOnly);
  options.pattern = IsTicked(kPattern);
  if (fresh_ || !AreSame(options, find_.Options())) find_.SetOptions(options);
  fresh_ = false;
}

void FindDialog::Report(const CString& outcome) {
  if (m_hWnd != nullptr) SetDlgItemText(kFindOutcome, outcome);
}

void FindDialog::ReportNothing() {
  Report(Words(find_.IsPatternValid() ? "Nothing was found" : "This is not a regular expression"));
}

void FindDialog::ReportCount(const ReplaceCount& count) {
  if (count.changed + count.kept + count.refused == 0) return ReportNothing();
  Report(Words("cells changed: {}; kept as they were: {}",
               {std::to_string(count.changed), std::to_string(count.kept + count.refused)}));
}

void FindDialog::OnOK() {
  TakeOptions();
  find_.FindNext() ? Report(CString()) : ReportNothing();
}

void FindDialog::OnReplaceOne() {
  TakeOptions();
  const CString by = TextAt(kReplaceText);
  const ReplaceCount count = find_.ReplaceNext(by);
  // Pressed on a cell without the text, it goes to the first one that has it.
  if (count.changed + count.kept + count.refused > 0) return ReportCount(count);
  find_.Count() > 0 ? Report(CString()) : ReportNothing();
}

void FindDialog::OnReplaceAll() {
  TakeOptions();
  ReportCount(find_.ReplaceAll(TextAt(kReplaceText)));
}

void FindDialog::OnCancel() {
  DestroyWindow();
}

}  // namespace lorv::tool
