#include "tools/lorv-desk/table/table_window.h"

#include <algorithm>

#include "framework/drawing/device_context.h"
#include "framework/windows/menu.h"
#include "module/progress.h"
#include "platform/ports/platform.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/text/harmless_text.h"
#include "tools/lorv/text/spoken_language.h"

// The window in which a table is edited: reading with progress, commands, and the question about
// what is not saved.

namespace lorv::tool {
namespace {

constexpr int kProgressSteps = 1000;
// A page or two of rows tell what a column holds; measuring all would take as long as reading.
constexpr int kMeasuredRows = 200;  // by which columns get their first widths
constexpr int kLeastWidth = 50;
constexpr int kMostWidth = 360;
constexpr int kCellMargins = 14;

CString Words(std::string_view english, std::initializer_list<std::string_view> values = {}) {
  return CString::FromUtf8(Say(english, values));
}

bool IsDown(int key) {
  return (DesktopInForce().KeyState(key) & 0x8000) != 0;
}

void Tell(const CString& text) {
  PortsInForce().dialogs->ShowMessage({text, CString(), kButtonsOk | kIconError});
}

}  // namespace

BEGIN_MESSAGE_MAP(TableWindow, GridWindow)
ON_WM_CLOSE()
ON_WM_CONTEXTMENU()
END_MESSAGE_MAP()

TableWindow::TableWindow(const std::string& path)
    : GridWindow(std::make_unique<EditedGrid>()), file_(path), table_(static_cast<EditedGrid*>(&Grid())) {}

bool TableWindow::Read() {
  constexpr int kWidth = 1000;
  constexpr int kHeight = 640;
  if (!Open(CString::FromUtf8(file_.Path()), {kWidth, kHeight}))
    throw BadInput(Say("this desktop opens no window"));
  CProgressCom progress(kProgressSteps);
  progress.StartProgress(Words("Reading the table"));
  const CString name = CString::FromUtf8(file_.Path());
  const bool whole = file_.Read(*table_, [&](std::uint64_t done, std::uint64_t size) {
    // A pipe has no size: its progress shows that it goes on, not how far.
    const auto step = size == 0 ? 0 : static_cast<int>(done * kProgressSteps / size);
    progress.StepProgress(step, name);
    return !progress.QueryCancel(Words("Stop reading the table?"));
  });
  progress.EndProgress();
  // A table of which a part is missing must not be saved over the whole one.
  if (!whole) return false;
  FitColumns();
  table_->MarkChanged(false);
  return true;
}

// As wide as the names and the first rows' texts, within reason.
void TableWindow::FitColumns() {
  CClientDC dc(table_);
  dc.SelectObject(table_->GetFont());
  const int rows = std::min(kMeasuredRows, table_->GetRowCount());
  for (int column = 0; column < table_->GetColumnCount(); ++column) {
    int width = static_cast<int>(dc.GetTextExtent(table_->GetColumnName(column)).cx);
    for (int row = 0; row < rows; ++row) {
      const CBCGPGridItem* item = table_->GetItem(row, column);
      if (item != nullptr) width = std::max(width, static_cast<int>(dc.GetTextExtent(item->FormatItem()).cx));
    }
    table_->SetColumnWidth(column, std::clamp(width + kCellMargins, kLeastWidth, kMostWidth));
  }
  table_->AdjustLayout();
}

bool TableWindow::Save() {
  // What is being typed is meant to be saved as well.
  table_->EndEditItem(TRUE);
  try {
    file_.Write(*table_);
  } catch (const BadInput& wrong) {
    Tell(CString::FromUtf8(wrong.what()));
    return false;
  }
  table_->MarkChanged(false);
  return true;
}

void TableWindow::InsertRow() {
  const int at = std::max(0, table_->GetCurrentRow());
  // A table without rows has no place to insert at.
  if (table_->InsertRows(at, 1) == 0) table_->AppendRows(1);
  table_->MarkChanged(true);
  table_->SetRow(at);
}

void TableWindow::Do(UINT command) {
  switch (command) {
    case kSaveTable:
      Save();
      break;
    case kInsertTableRow:
      InsertRow();
      break;
    case kDeleteTableRows:
      if (table_->DeleteSelectedRows() > 0) table_->MarkChanged(true);
      break;
    case kTableToSpreadsheet:
      table_->ToExcel(0);
      break;
    case kTableFromSpreadsheet:
      // Columns and rows are other ones now.
      if (table_->FromExcel(0)) table_->AdjustLayout();
      break;
    default:
      break;
  }
}

BOOL TableWindow::PreTranslateMessage(MSG* message) {
  // Before the grid sees the key. Control with Alt is how keyboards of many countries send their AltGr, whose
  // letters are typed into cells.
  const bool alone = IsDown(VK_CONTROL) && !IsDown(VK_MENU);
  if (message->message == WM_KEYDOWN && message->wParam == 'S' && alone) {
    Save();
    return TRUE;
  }
  return GridWindow::PreTranslateMessage(message);
}

void TableWindow::OnContextMenu(CWnd* /*window*/, CPoint point) {
  CMenu menu;
  menu.CreatePopupMenu();
  menu.AppendMenu(MF_STRING, kSaveTable, Words("Save") + _T("\tCtrl+S"));
  menu.AppendMenu(MF_SEPARATOR);
  menu.AppendMenu(MF_STRING, kInsertTableRow, Words("Insert a row"));
  menu.AppendMenu(MF_STRING, kDeleteTableRows, Words("Delete the selected rows"));
  menu.AppendMenu(MF_SEPARATOR);
  menu.AppendMenu(MF_STRING, kTableToSpreadsheet, Words("To a spreadsheet"));
  menu.AppendMenu(MF_STRING, kTableFromSpreadsheet, Words("From a spreadsheet"));
  Do(static_cast<UINT>(menu.TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON, static_cast<int>(point.x),
                                           static_cast<int>(point.y), this)));
}

void TableWindow::OnClose() {
  // The text in the open editor may be the change.
  table_->EndEditItem(TRUE);
  if (table_->IsChanged()) {
    const CString question = Words("Save the changes of {}?", {Quoted(file_.Path())});
    const int answer =
        PortsInForce().dialogs->ShowMessage({question, CString(), kButtonsYesNo | kIconQuestion});
    // A file that could not be written keeps its window: the changes stand nowhere else.
    if (answer == kAnswerYes && !Save()) return;
  }
  GridWindow::OnClose();
}

}  // namespace lorv::tool
