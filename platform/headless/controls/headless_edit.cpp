#include "platform/headless/controls/headless_edit.h"

#include <algorithm>
#include <cstdint>

#include "platform/models/controls/unit_pairs.h"

// An edit in memory: rows of fixed height, widths of fixed metrics, so that a test can say to the pixel where
// a caret is. Keys, messages and limits are the shared behaviour; this is the pane that shows them.

namespace lorv {

// The text as the window shows it: rows of 16 pixels, the first of which may be scrolled away.
class HeadlessEdit::Pane : public EditPane {
 public:
  explicit Pane(bool lines) : text_(lines), lines_(lines) {}

  void Serve(HeadlessEdit& window) { window_ = &window; }
  const HeadlessEditText& Shown() const { return Wrapped(); }

  CString Text() const override { return text_.text; }
  void Set(const CString& text) override {
    text_.Set(text);
    first_line_ = 0;
    Show();
  }
  void Replace(const CString& text) override { text_.Replace(text), Show(); }
  bool Undo() override {
    Show();
    return text_.Undo();
  }
  int Start() const override { return text_.Start(); }
  int End() const override { return text_.End(); }
  int Caret() const override { return text_.Caret(); }
  void Select(int start, int end) override {
    if (start <= end) {
      text_.Select(start, end);
    } else {
      // A selection made backwards has its caret at the smaller position.
      text_.MoveCaret(start, false);
      text_.MoveCaret(end, true);
    }
    Show();
  }
  void Move(Step step, bool extend) override { text_.MoveCaret(Target(step), extend), Show(); }

  std::vector<int> LineStarts() const override { return Wrapped().LineStarts(); }
  int FirstLine() const override { return first_line_; }
  void Scroll(int lines) override {
    const auto wanted = std::int64_t{first_line_} + lines;
    first_line_ = static_cast<int>(std::clamp<std::int64_t>(wanted, 0, Wrapped().Lines().Count() - 1));
    Show();
  }
  void ShowCaret() override {
    const int line = Wrapped().Lines().Of(Caret());
    // The least scrolling that brings the line of the caret into sight.
    first_line_ = lines_ ? std::clamp(first_line_, std::max(0, line - Page() + 1), line) : 0;
    Show();
  }
  CPoint PlaceOf(int position) const override {
    const EditLines lines = Wrapped().Lines();
    const int line = lines.Of(position);
    const CString before = text_.text.Mid(lines.Start(line), position - lines.Start(line));
    return CPoint(HeadlessExtent(before.View()).cx, (line - first_line_) * kHeadlessHeight);
  }
  int PositionAt(CPoint at) const override;

 private:
  void Show() const {
    if (window_ != nullptr) window_->Invalidate(nullptr);
  }
  int Page() const { return std::max(1, static_cast<int>(window_->ClientRect().bottom) / kHeadlessHeight); }
  int Target(Step step) const;

  // The width may have changed since the text was last looked at.
  HeadlessEditText& Wrapped() const {
    const bool wraps = lines_ && window_ != nullptr && (window_->Style() & ES_AUTOHSCROLL) == 0;
    // One wide character has room at any width, else no line would ever hold one.
    text_.wrap_width = wraps ? std::max<int>(window_->ClientRect().right, kHeadlessWide) : 0;
    return text_;
  }

  mutable HeadlessEditText text_;
  const bool lines_;
  HeadlessEdit* window_ = nullptr;
  int first_line_ = 0;
};

int HeadlessEdit::Pane::Target(Step step) const {
  const HeadlessEditText& text = Wrapped();
  const int caret = text.Caret();
  const EditLines lines = text.Lines();
  const int start = lines.Start(lines.Of(caret));
  switch (step) {
    case Step::Back:
      return text.StepBack(caret);
    case Step::On:
      return text.StepOn(caret);
    case Step::WordBack:
      return text.WordBack(caret);
    case Step::WordOn:
      return text.WordOn(caret);
    case Step::Up:
      return lines_ ? text.Above(caret, 1) : text.StepBack(caret);
    case Step::Down:
      return lines_ ? text.Above(caret, -1) : text.StepOn(caret);
    case Step::PageUp:
      // One row of the page stays in sight, and never farther than there are lines.
      return text.Above(caret, std::min(Page() - 1, lines.Of(caret)));
    case Step::PageDown:
      return text.Above(caret, -std::min(Page() - 1, lines.Count() - 1 - lines.Of(caret)));
    case Step::LineStart:
      return start;
    case Step::LineEnd:
      return start + lines.Length(lines.Of(caret));
    default:
      return step == Step::Start ? 0 : text.text.GetLength();
  }
}

int HeadlessEdit::Pane::PositionAt(CPoint at) const {
  const EditLines lines = Wrapped().Lines();
  const int row = first_line_ + static_cast<int>(at.y) / kHeadlessHeight;
  // Places above and below the text belong to its first and last line.
  const int line = lines_ ? std::clamp(row, 0, lines.Count() - 1) : 0;
  const CString text = lines.Text(line);
  int unit = 0;
  int left = 0;
  while (unit < text.GetLength()) {
    const int units = IsUnitPair(text.GetAt(unit), text.GetAt(unit + 1)) ? 2 : 1;
    const int width = HeadlessExtent(text.Mid(unit, units).View()).cx;
    // The nearer edge of a character, and never between its two units.
    if (at.x < left + (width + 1) / 2) break;
    left += width;
    unit += units;
  }
  return lines.Start(line) + unit;
}

HeadlessEdit::HeadlessEdit(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request)
    : HeadlessEdit(desktop, handle, request, std::make_unique<Pane>((request.style & ES_MULTILINE) != 0)) {}

HeadlessEdit::HeadlessEdit(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request,
                           std::unique_ptr<Pane> pane)
    : EditBehaviour(desktop, handle, request), pane_(*pane) {
  pane->Set(request.text);
  // After the first text: a window that is being made must not be asked to repaint.
  pane->Serve(*this);
  UsePane(std::move(pane));
}

void HeadlessEdit::PaintSelf(Canvas& canvas) {
  const CRect client(ClientRect());
  canvas.Fill(client, ReadOnly() ? RGB(240, 240, 240) : RGB(255, 255, 255));
  const EditLines lines = pane_.Shown().Lines();
  for (int line = pane_.FirstLine(); line < lines.Count(); ++line) {
    const int y = (line - pane_.FirstLine()) * kHeadlessHeight;
    if (y >= client.bottom) break;
    canvas.Text({0, y}, lines.Text(line).View(), 0);
  }
}

}  // namespace lorv
