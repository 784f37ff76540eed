#include "grid/history/grid_history.h"

#include <exception>
#include <new>
#include <utility>

#include "grid/basic/basic_grid.h"
#include "grid/commands/grid_commands.h"
#include "grid/history/recorded_step.h"
#include "grid/history/selection_colour.h"
#include "grid/items/multi_line_row.h"

// What was done to a table, as two stacks of steps. Rows keep their identity: one that leaves the table is
// owned by the step that took it out, so the notes of all other steps go on naming its cells.

namespace lorv {

GridHistory::GridHistory(CBCGPBasicGridCtrl& grid) : grid_(&grid) {
  grid.Changes().Add(*this);
}

GridHistory::~GridHistory() {
  if (grid_ != nullptr) grid_->Changes().Remove(*this);
}

void GridHistory::BeginStep() {
  if (grid_ != nullptr) ++asked_;
}

void GridHistory::EndStep() {
  if (asked_ == 0) return;
  --asked_;
  CloseIfDone();
}

void GridHistory::Forget() {
  undo_.clear();
  redo_.clear();
  bytes_ = 0;
  // Half of the step that is open is forgotten with the rest: the other half would undo what it never knew.
  spoiled_ = spoiled_ || open_ != nullptr;
  open_.reset();
  misfits_ = true;
}

void GridHistory::SetLimits(std::size_t bytes, std::size_t steps) {
  most_bytes_ = bytes;
  most_steps_ = steps;
  Trim();
}

void GridHistory::OnStepBegins(StepKind kind, const CBCGPGridItem* subject) {
  subjects_.push_back(subject);
  // A typed value and the row that grows for it are taken back together.
  if (kind == StepKind::kPartOfEdit && grid_->GetEditingItem() != nullptr) with_edit_ = true;
}

void GridHistory::OnStepEnds() {
  // Of a step that was open when the history was attached only the end is reported.
  if (subjects_.empty()) return;
  subjects_.pop_back();
  CloseIfDone();
}

void GridHistory::OnEditorClosed() {
  with_edit_ = false;
  CloseIfDone();
}

void GridHistory::CloseIfDone() {
  if (!subjects_.empty() || asked_ > 0 || with_edit_) return;
  if (!spoiled_) Keep();
  open_.reset();
  spoiled_ = false;
}

void GridHistory::Keep() {
  if (open_ == nullptr || open_->ChangesNothing()) return;
  // What was undone starts from a table that is no more.
  for (const auto& step : redo_) bytes_ -= step->Bytes();
  redo_.clear();
  bytes_ += open_->Bytes();
  undo_.push_back(std::move(open_));
  Trim();
}

void GridHistory::Trim() {
  std::size_t dropped = 0;
  const bool too_many = undo_.size() > most_steps_;
  while (!undo_.empty() && (undo_.size() > most_steps_ || bytes_ > most_bytes_)) {
    bytes_ -= undo_.front()->Bytes();
    undo_.pop_front();
    ++dropped;
  }
  // Those that were undone go last, the one that is furthest away first.
  while (!redo_.empty() && bytes_ > most_bytes_) {
    bytes_ -= redo_.front()->Bytes();
    redo_.pop_front();
    ++dropped;
  }
  if (dropped > 0) Lose(dropped, too_many ? HistoryLoss::kStepCount : HistoryLoss::kMemory);
}

void GridHistory::Lose(std::size_t steps, HistoryLoss why) {
  lost_ += steps;
  // A copy: the listener may set another one, or end this object.
  const LossListener listener = listener_;
  if (listener) listener(steps, why);
}

void GridHistory::LoseAll(HistoryLoss why) {
  const std::size_t steps = undo_.size() + redo_.size() + (open_ != nullptr ? 1 : 0);
  Forget();
  if (steps > 0) Lose(steps, why);
}

bool GridHistory::Records(const CBCGPGridItem& item, ChangeBy by) const {
  if (by == ChangeBy::kUser || asked_ > 0 || program_ == ProgramChanges::kAlways) return true;
  if (program_ == ProgramChanges::kInSteps && !subjects_.empty()) return true;
  // The cell that is being edited is the user's, whoever sets it in its handlers.
  for (const CBCGPGridItem* subject : subjects_)
    if (subject == &item) return true;
  return false;
}

template <class Note>
void GridHistory::Record(Note note) {
  if (spoiled_) return;
  try {
    if (open_ == nullptr) open_ = std::make_unique<RecordedStep>();
    note(*open_);
    // The change stands all the same; only the way back is lost.
  } catch (const std::bad_alloc&) {
    LoseAll(HistoryLoss::kMemory);
  }
  if (open_ != nullptr && open_->Bytes() > most_bytes_) LoseAll(HistoryLoss::kMemory);
  CloseIfDone();
}

void GridHistory::OnValueChanged(CBCGPGridItem& item, _variant_t& before, ChangeBy by) {
  // An undo swaps: what it takes out is what the redo puts back.
  if (applying_ != nullptr)
    applying_->TakeFormer(before);
  else if (Records(item, by))
    Record([&](RecordedStep& step) { step.NoteValue(item, before); });
}

void GridHistory::OnLooksChanging(CBCGPGridItem& item) {
  const ChangeBy by = grid_->Changes().By();
  if (applying_ != nullptr || !Records(item, by)) return;
  const ItemLooks looks = SelectionColour(*grid_).Without(item);
  Record([&](RecordedStep& step) { step.NoteLooks(item, looks); });
}

void GridHistory::OnRowInserted(const RowPlace& /*place*/, CBCGPGridRow& row) {
  if (applying_ == nullptr) Record([&](RecordedStep& step) { step.NoteInserted(row); });
}

void GridHistory::OnRowRemoved(const RowPlace& place, std::unique_ptr<CBCGPGridRow>& row) {
  // A handler that removes another row in the middle of an undo makes another table of it.
  if (applying_ != nullptr) {
    if (!applying_->TakeRow(place, row)) misfits_ = true;
    return;
  }
  // A row that is another's now, or nobody's, may end at any time: no note may name it.
  if (row == nullptr) {
    OnTableReplaced();
    return;
  }
  Record([&](RecordedStep& step) { step.NoteRemoved(place, row); });
}

void GridHistory::OnRowsMoving(RowArrangement& now) {
  if (applying_ == nullptr) Record([&](RecordedStep& step) { step.NoteMoving(now); });
}

void GridHistory::OnMergesChanging(const std::vector<CBCGPGridRange>& now) {
  if (applying_ == nullptr) Record([&](RecordedStep& step) { step.NoteMerged(now); });
}

void GridHistory::OnColumnMoving(int from, int to) {
  if (applying_ == nullptr) Record([=](RecordedStep& step) { step.NoteColumn(from, to); });
}

void GridHistory::OnTableReplaced() {
  LoseAll(HistoryLoss::kAnotherTable);
  spoiled_ = !subjects_.empty() || asked_ > 0 || with_edit_;
}

void GridHistory::OnGridGone() {
  grid_->Changes().Remove(*this);
  grid_ = nullptr;
  Forget();
  subjects_.clear();
  asked_ = 0;
}

bool GridHistory::EndEditFirst() {
  if (grid_->GetEditingItem() == nullptr) return true;
  const auto life = life_.Watch();
  grid_->EndEditItem(TRUE);
  return !life.expired() && IsIdle() && grid_->GetEditingItem() == nullptr;
}

bool GridHistory::Undo() {
  return Move(undo_, redo_, true);
}

bool GridHistory::Redo() {
  return Move(redo_, undo_, false);
}

bool GridHistory::Move(Steps& from, Steps& to, bool back) {
  if (!IsIdle() || !EndEditFirst() || from.empty()) return false;
  std::unique_ptr<RecordedStep> step = std::move(from.back());
  from.pop_back();
  bytes_ -= step->Bytes();
  misfits_ = false;
  applying_ = step.get();
  const auto life = life_.Watch();
  const auto still_there = [&] { return !life.expired() && grid_ != nullptr && !misfits_; };
  std::exception_ptr raised;
  bool whole = false;
  try {
    whole = step->Apply(*grid_, back, still_there);
    // A handler that throws does not make half an undo: the step goes on; the fault is reported at its end.
  } catch (...) {
    raised = std::current_exception();
    whole = still_there();
  }
  if (life.expired()) return false;
  applying_ = nullptr;
  if (!whole) {
    // The rows of the step are named by others: they end together.
    LoseAll(HistoryLoss::kAnotherTable);
    return false;
  }
  bytes_ += step->Bytes();
  const RecordedStep& shown = *step;
  to.push_back(std::move(step));
  Show(shown, shown.Touched());
  if (raised != nullptr) std::rethrow_exception(raised);
  return !life.expired() && grid_ != nullptr;
}

void GridHistory::Bind(GridCommands& commands) {
  commands.Bind(
      _T("undo"), [this](CBCGPGridCtrl&) { return Undo(); },
      [this](const CBCGPGridCtrl&) { return CanUndo(); });
  commands.Bind(
      _T("redo"), [this](CBCGPGridCtrl&) { return Redo(); },
      [this](const CBCGPGridCtrl&) { return CanRedo(); });
}

void GridHistory::Show(const RecordedStep& step, CBCGPGridRange touched) {
  CBCGPBasicGridCtrl& grid = *grid_;
  // Rows grow and shrink with the texts that came back.
  step.EachRow([&grid](CBCGPGridRow& row) {
    auto* const lines = dynamic_cast<CBCGPGridMultiLineRow*>(&row);
    if (lines != nullptr && grid.m_hWnd != nullptr) lines->OnItemUpdate(FALSE);
  });
  const auto life = grid.Watch();
  grid.AdjustLayout();
  if (life.expired()) return;
  CBCGPGridItemID first(touched.m_nTop, touched.m_nLeft);
  // The user is led to what changed, also where its column is hidden.
  if (grid.GetColumnVisible(first.m_nColumn) == FALSE)
    first.m_nColumn = grid.GetColumnsInfo().GetFirstVisibleColumn();
  if (touched.IsValid() && grid.GetGridItem(first) != nullptr) {
    grid.SetCurSel(first);
    if (life.expired()) return;
    if (!touched.IsSingle()) grid.SelectRange(touched);
    if (life.expired()) return;
    grid.EnsureVisible(first);
  }
  if (!life.expired()) grid.Invalidate(FALSE);
}

}  // namespace lorv
