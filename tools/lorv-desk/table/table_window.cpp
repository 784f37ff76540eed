#include "tools/lorv-desk/table/table_window.h"

#include <algorithm>

#include "framework/drawing/device_context.h"
#include "module/progress.h"
#include "platform/ports/platform.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/harmless_text.h"

// The window in which a table is edited: reading with progress, and the question about what is not saved.

namespace lorv::tool {
namespace {

constexpr int kProgressSteps = 1000;
// A page or two of rows show what a column holds; measuring all would take as long as reading.
constexpr int kMeasuredRows = 200;  // by which columns get their first widths
// Pixels at 96 dots an inch.
constexpr int kLeastWidth = 50;
constexpr int kMostWidth = 360;
constexpr int kCellMargins = 14;

CString Words(std::string_view english, std::initializer_list<std::string_view> values = {}) {
  return CString::FromUtf8(Say(english, values));
}

void Report(const CString& text) {
  PortsInForce().dialogs->ShowMessage({text, CString(), kButtonsOk | kIconError});
}

}  // namespace

BEGIN_MESSAGE_MAP(TableWindow, GridWindow)
ON_WM_CLOSE()
ON_WM_CONTEXTMENU()
END_MESSAGE_MAP()

TableWindow::TableWindow(const std::string& path)
    : GridWindow(std::make_unique<EditedGrid>()),
      file_(path),
      table_(static_cast<EditedGrid*>(&Grid())),
      commands_(*table_, {[this] { return Save(); },
                          [this](bool replacing) { return finder_.Show(*this, replacing); }}),
      finder_(commands_.Find()) {
  commands_.NamePrintedPages(CString::FromUtf8(path));
}

TableWindow::~TableWindow() {
  // While its owner's window still stands.
  finder_.DestroyWindow();
}

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
  // Reading the file is no step to be undone.
  commands_.History().Forget();
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
    table_->SetColumnWidth(column, std::clamp(width + table_->Scaled(kCellMargins),
                                              table_->Scaled(kLeastWidth), table_->Scaled(kMostWidth)));
  }
  table_->AdjustLayout();
}

bool TableWindow::Save() {
  // What is being typed is meant to be saved as well.
  table_->EndEditItem(TRUE);
  try {
    file_.Write(*table_);
  } catch (const BadInput& wrong) {
    Report(CString::FromUtf8(wrong.what()));
    return false;
  }
  table_->MarkChanged(false);
  return true;
}

void TableWindow::OnContextMenu(CWnd* /*window*/, CPoint point) {
  commands_.ShowMenu(point);
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
  finder_.DestroyWindow();
  GridWindow::OnClose();
}

}  // namespace lorv::tool
