#include "platform/headless/controls/headless_edit_text.h"

#include <algorithm>
#include <utility>

#include "platform/headless/drawing/headless_canvas.h"
#include "platform/models/controls/unit_pairs.h"

// The text of an edit in memory with caret, selection, one step of undo, and its lines. Positions count
// units; a caret never stands between the two units of a character.

namespace lorv {
namespace {

constexpr TCHAR kFirstIdeograph = 0x2E80;

bool IsGap(TCHAR unit) {
  return unit == _T(' ') || unit == _T('\t') || unit == _T('\r') || unit == _T('\n');
}

}  // namespace

int HeadlessEditText::Clamped(int position) const {
  return std::clamp(position, 0, text.GetLength());
}

void HeadlessEditText::Select(int start, int end) {
  // The system's message takes -1 as "select nothing".
  if (start == -1) {
    anchor_ = caret_ = End();
    return;
  }
  const int length = text.GetLength();
  // Below 0 is the end for either: (0, -1) selects all.
  const int from = start < 0 ? length : std::min(start, length);
  const int to = end < 0 ? length : std::min(end, length);
  anchor_ = std::min(from, to);
  caret_ = std::max(from, to);
}

void HeadlessEditText::MoveCaret(int to, bool extend) {
  caret_ = Clamped(to);
  // Into a character is in front of it.
  if (IsUnitPair(text.GetAt(caret_ - 1), text.GetAt(caret_))) --caret_;
  if (!extend) anchor_ = caret_;
}

void HeadlessEditText::Set(const CString& fresh) {
  text = fresh;
  anchor_ = caret_ = 0;
  can_undo_ = false;
}

void HeadlessEditText::Replace(const CString& fresh) {
  // The whole text, not the change: texts of edits are short, and one step is all there is.
  before_ = text;
  before_caret_ = caret_;
  can_undo_ = true;
  const int start = Start();
  text = text.Left(start) + fresh + text.Mid(End());
  anchor_ = caret_ = start + fresh.GetLength();
}

bool HeadlessEditText::Undo() {
  if (!can_undo_) return false;
  // Undo once more brings back what was undone, as the system's edit does.
  std::swap(text, before_);
  std::swap(caret_, before_caret_);
  anchor_ = caret_ = Clamped(caret_);
  return true;
}

int HeadlessEditText::StepBack(int from) const {
  from = Clamped(from);
  if (from == 0) return 0;
  return from - (IsUnitPair(text.GetAt(from - 2), text.GetAt(from - 1)) ? 2 : 1);
}

int HeadlessEditText::StepOn(int from) const {
  from = Clamped(from);
  if (from == text.GetLength()) return from;
  return from + (IsUnitPair(text.GetAt(from), text.GetAt(from + 1)) ? 2 : 1);
}

int HeadlessEditText::WordBack(int from) const {
  from = Clamped(from);
  // Gaps first: back from behind a blank is to the start of the word in front of it.
  while (from > 0 && IsGap(text.GetAt(from - 1))) --from;
  while (from > 0 && !IsGap(text.GetAt(from - 1))) --from;
  return from;
}

int HeadlessEditText::WordOn(int from) const {
  const int length = text.GetLength();
  from = Clamped(from);
  while (from < length && !IsGap(text.GetAt(from))) ++from;
  while (from < length && IsGap(text.GetAt(from))) ++from;
  return from;
}

int HeadlessEditText::WidthOf(int start, int end) const {
  return HeadlessExtent(
             text.View().substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start)))
      .cx;
}

void HeadlessEditText::WrapFrom(int start, int end, std::vector<int>& starts) const {
  starts.push_back(start);
  if (wrap_width <= 0) return;
  int width = 0;
  int last_break = start;
  for (int at = start; at < end; at = StepOn(at)) {
    const int next = StepOn(at);
    // Blanks hang over the edge, so a line never begins with one.
    const bool after_blank = at > start && text.GetAt(at - 1) == _T(' ');
    if (after_blank || text.GetAt(at) >= kFirstIdeograph) last_break = at;
    width += WidthOf(at, next);
    // A line takes at least one character, whatever the width.
    if (width <= wrap_width || at == starts.back() || text.GetAt(at) == _T(' ')) continue;
    // A word longer than the line is broken where it reaches the edge.
    starts.push_back(last_break > starts.back() ? last_break : at);
    width = WidthOf(starts.back(), next);
  }
}

std::vector<int> HeadlessEditText::LineStarts() const {
  if (!lines_) return {0};
  std::vector<int> starts;
  int start = 0;
  for (int end = text.Find(_T("\r\n")); end >= 0; end = text.Find(_T("\r\n"), start)) {
    WrapFrom(start, end, starts);
    start = end + 2;
  }
  WrapFrom(start, text.GetLength(), starts);
  return starts;
}

int HeadlessEditText::Above(int position, int lines) const {
  const EditLines layout = Lines();
  const int line = layout.Of(position);
  const int target = line - lines;
  const int start = layout.Start(target);
  if (line < 0 || start < 0) return position;
  const int next = layout.Start(target + 1);
  // Behind the last letter of a broken line lies the start of the next one.
  const int last = next < 0 || layout.EndsLine(next) ? start + layout.Length(target) : StepBack(next);
  return std::min(start + (position - layout.Start(line)), last);
}

}  // namespace lorv
