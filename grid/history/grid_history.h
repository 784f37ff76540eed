#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "gridcore/control/grid_observer.h"
#include "gridcore/life_token.h"

class CBCGPBasicGridCtrl;

namespace lorv {

class GridCommands;
class RecordedStep;

constexpr std::size_t kMaxHistoryBytes = std::size_t{256} << 20U;
constexpr std::size_t kMaxHistorySteps = 10000;

// Which values and looks that the program sets are a part of the history. Rows that come, go or move and
// cells that are merged always are, whoever asks for it.
enum class ProgramChanges {
  kOutside,  // only those between the ends of a HistoryStep, and of the cell that the user works on
  kInSteps,  // those that handlers set within a step of the user too
  kAlways    // each of them; outside of a step each is one
};

enum class HistoryLoss { kMemory, kStepCount, kAnotherTable };

// Undo and redo for a grid: one step for a typed value, a tick, a fill, rows that are put in or deleted, a
// sort, merged cells, and for what stands between the ends of a HistoryStep.
//
// Units: bytes of what the steps keep, counted without the allocator's own.
// Edges: a change that handlers took back is no step. A new step ends what could be redone. Where the limits
//   are passed the oldest steps go; a step that is larger than the limit goes with all others. Columns that
//   come or go, RemoveAll and ReDim, and rows that the program deletes itself make it another table: all
//   steps go. Lost steps are counted, and reported to the listener. A host that fills the table forgets the
//   steps of that with Forget. Steps of a virtual table are not kept.
//   An editor that is open is ended first, with what was typed; one that stays open refuses Undo and Redo.
//   False: nothing to do, a step is open, or handlers ended the grid or the history in the middle of it. What
//   a cell raises while it gets its value is passed on when all others have theirs.
// Rows that were deleted live on in the history, with their cells. The listener is called in the middle of
// the grid's work and must leave grid and history alone. The history and the grid may end in any order.
// One thread: that of the user interface.
//
//   lorv::GridHistory history(grid);  grid.DeleteRows(0, 2);  history.Undo()  gives true, the rows are back
class COMM_LORV_API GridHistory : private GridObserver {
 public:
  explicit GridHistory(CBCGPBasicGridCtrl& grid);
  GridHistory(const GridHistory&) = delete;
  GridHistory& operator=(const GridHistory&) = delete;
  ~GridHistory() override;

  bool CanUndo() const { return !undo_.empty() && IsIdle(); }
  bool CanRedo() const { return !redo_.empty() && IsIdle(); }
  bool Undo();
  bool Redo();
  std::size_t UndoCount() const { return undo_.size(); }
  std::size_t RedoCount() const { return redo_.size(); }

  // All until the EndStep that belongs to it is one step, changes by the program too. HistoryStep does both.
  void BeginStep();
  void EndStep();
  void Forget();

  void SetProgramChanges(ProgramChanges wanted) { program_ = wanted; }
  void SetLimits(std::size_t bytes, std::size_t steps = kMaxHistorySteps);
  std::size_t Bytes() const { return bytes_; }
  // Steps that were lost so far.
  std::size_t LostSteps() const { return lost_; }
  using LossListener = std::function<void(std::size_t steps, HistoryLoss why)>;
  void SetLossListener(LossListener listener) { listener_ = std::move(listener); }

  // The commands undo and redo are this object's, which must outlive them.
  void Bind(GridCommands& commands);

 private:
  friend class HistoryStep;
  using Steps = std::deque<std::unique_ptr<RecordedStep>>;

  void OnStepBegins(StepKind kind, const CBCGPGridItem* subject) override;
  void OnStepEnds() override;
  void OnEditorClosed() override;
  void OnValueChanged(CBCGPGridItem& item, _variant_t& before, ChangeBy by) override;
  void OnLooksChanging(CBCGPGridItem& item) override;
  void OnRowInserted(const RowPlace& place, CBCGPGridRow& row) override;
  void OnRowRemoved(const RowPlace& place, std::unique_ptr<CBCGPGridRow>& row) override;
  void OnRowsMoving(RowArrangement& now) override;
  void OnMergesChanging(const std::vector<CBCGPGridRange>& now) override;
  void OnColumnMoving(int from, int to) override;
  void OnTableReplaced() override;
  void OnGridGone() override;

  bool IsIdle() const { return grid_ != nullptr && applying_ == nullptr && subjects_.empty() && asked_ == 0; }
  bool Records(const CBCGPGridItem& item, ChangeBy by) const;
  template <class Note>
  void Record(Note note);
  void CloseIfDone();
  void Keep();
  void Trim();
  void Lose(std::size_t steps, HistoryLoss why);
  void LoseAll(HistoryLoss why);
  bool EndEditFirst();
  bool Move(Steps& from, Steps& to, bool back);
  void Show(const RecordedStep& step, CBCGPGridRange touched);

  CBCGPBasicGridCtrl* grid_;
  LifeToken life_;
  Steps undo_;
  Steps redo_;
  std::unique_ptr<RecordedStep> open_;
  RecordedStep* applying_ = nullptr;
  std::vector<const CBCGPGridItem*> subjects_;  // of the steps that are open; compared, never followed
  int asked_ = 0;                               // steps that BeginStep opened
  bool with_edit_ = false;                      // the step goes on until the editor closes
  bool spoiled_ = false;                        // what is open cannot be undone
  bool misfits_ = false;                        // what is applied meets another table
  ProgramChanges program_ = ProgramChanges::kOutside;
  std::size_t most_bytes_ = kMaxHistoryBytes;
  std::size_t most_steps_ = kMaxHistorySteps;
  std::size_t bytes_ = 0;
  std::size_t lost_ = 0;
  LossListener listener_;
};

// One step from its making to its end, an exception in between or not. The history may end before it.
class COMM_LORV_API HistoryStep {
 public:
  explicit HistoryStep(GridHistory& history) : history_(history), life_(history.life_.Watch()) {
    history_.BeginStep();
  }
  HistoryStep(const HistoryStep&) = delete;
  HistoryStep& operator=(const HistoryStep&) = delete;
  ~HistoryStep() {
    if (!life_.expired()) history_.EndStep();
  }

 private:
  GridHistory& history_;
  std::weak_ptr<int> life_;
};

}  // namespace lorv
