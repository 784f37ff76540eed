#include "gridcore/control/editing/grid_composition.h"

#include <algorithm>

#include "gridcore/control/grid_control.h"
#include "gridcore/control/scope_mark.h"

// Input methods over a grid. What is composed over a closed cell opens its editor, empty, and goes on there,
// so that the first key is part of it; keys that an input method works with are none of the grid's. Over a
// cell that takes no text input methods rest: their windows would open over nothing.

namespace lorv {

void SettleComposition(const CBCGPGridCtrl& grid) {
  // Asked for only where the keys are: a change of the selection by program costs nothing.
  if (grid.m_hWnd == nullptr || DesktopInForce().Focus() != grid.m_hWnd) return;
  const auto peer = PeerOf(grid.m_hWnd);
  const CBCGPGridItem* item = grid.GetCurSelItem();
  const bool takes = grid.IsEditableNow(item) != FALSE;
  peer->EnableComposition(takes);
  if (!takes) return;
  CRect cell = item->GetRect();
  cell &= grid.GetListRect();
  // The candidates stand below the left end of the cell, where its text will begin.
  cell.right = std::min<LONG>(cell.right, cell.left + 1);
  peer->SetCompositionCaret(cell);
}

bool IsComposing(const CBCGPGridCtrl& grid) {
  const CWnd* editor = grid.GetInPlaceWnd();
  return editor != nullptr && !PeerOf(editor->m_hWnd)->CompositionNow().text.IsEmpty();
}

// It was typed all the same, and must not be lost with the editor.
void TakeComposed(CBCGPGridCtrl& grid) {
  auto* edit = dynamic_cast<CEdit*>(grid.GetInPlaceWnd());
  if (edit == nullptr || !IsComposing(grid)) return;
  const CString composed = PeerOf(edit->m_hWnd)->CompositionNow().text;
  edit->ReplaceSel(composed);
}

}  // namespace lorv

LRESULT CBCGPGridCtrl::OnComposition(UINT message, WPARAM w, LPARAM l) {
  // Where the system still sends to the grid what belongs to the editor that has been opened.
  if (editor_ != nullptr) return editor_->SendMessage(message, w, l);
  // What is composed and committed over a cell that takes no text is nobody's.
  if (IsEditableNow(GetCurSelItem()) == FALSE) return 0;
  if (message == WM_IME_STARTCOMPOSITION) {
    lorv::SettleComposition(*this);
    const auto life = life_.Watch();
    const lorv::ScopeMark empty(opening_.empty, life);
    m_dwBeginEditReason = lorv::kBeginByCharacter;
    EditItem(GetCurSel());
    // The editor is asked for its composition by the system itself.
    if (life.expired() || m_hWnd == nullptr || editor_ != nullptr) return 0;
  }
  return DefWindowProc(message, w, l);
}
