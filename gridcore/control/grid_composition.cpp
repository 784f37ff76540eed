#include <algorithm>

#include "gridcore/control/grid_control.h"
#include "gridcore/control/scope_mark.h"

// Input methods over a grid. What is composed over a closed cell opens its editor, empty, and goes on there,
// so that the first key is part of it; keys that an input method works with are none of the grid's. Over a
// cell that takes no text input methods rest: their windows would open over nothing.

void CBCGPGridCtrl::SettleComposition() const {
  // Asked for only where the keys are: a change of the selection by program costs nothing.
  if (m_hWnd == nullptr || lorv::DesktopInForce().Focus() != m_hWnd) return;
  const auto peer = lorv::PeerOf(m_hWnd);
  const CBCGPGridItem* item = GetCurSelItem();
  const bool takes = IsEditableNow(item) != FALSE;
  peer->EnableComposition(takes);
  if (!takes) return;
  CRect cell = item->GetRect();
  cell &= m_rectList;
  // The candidates stand below the left end of the cell, where its text will begin.
  cell.right = std::min<LONG>(cell.right, cell.left + 1);
  peer->SetCompositionCaret(cell);
}

bool CBCGPGridCtrl::IsComposing() const {
  return editor_ != nullptr && !lorv::PeerOf(editor_->m_hWnd)->CompositionNow().text.IsEmpty();
}

LRESULT CBCGPGridCtrl::OnComposition(UINT message, WPARAM w, LPARAM l) {
  // Where the system still sends to the grid what belongs to the editor that has been opened.
  if (editor_ != nullptr) return editor_->SendMessage(message, w, l);
  // What is composed and committed over a cell that takes no text is nobody's.
  if (IsEditableNow(GetCurSelItem()) == FALSE) return 0;
  if (message == WM_IME_STARTCOMPOSITION) {
    SettleComposition();
    const auto life = life_.Watch();
    const lorv::ScopeMark empty(opens_empty_, life);
    m_dwBeginEditReason = lorv::kBeginByCharacter;
    EditItem(GetCurSel());
    // The editor is asked for its composition by the system itself.
    if (life.expired() || m_hWnd == nullptr || editor_ != nullptr) return 0;
  }
  return DefWindowProc(message, w, l);
}
