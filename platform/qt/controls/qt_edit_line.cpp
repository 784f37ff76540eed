#include <QFocusEvent>
#include <QLineEdit>
#include <QMenu>

#include "platform/qt/controls/qt_edit_pane.h"
#include "platform/qt/desktop/qt_text.h"

// The edit of one line over QLineEdit. Its positions are units, as the messages count them, so they pass
// unchanged.

namespace lorv {
namespace {

constexpr int kNoLimit = 0x7FFFFFF;

class LinePane : public QtEditPane {
 public:
  LinePane(QWidget* around, std::function<void()> changed) : line_(*new QLineEdit(around)) {
    // Limits are those of the messages, which do not cut a text that is set by program.
    line_.setMaxLength(kNoLimit);
    line_.setTextMargins(0, 0, 0, 0);
    QObject::connect(&line_, &QLineEdit::textChanged, &line_,
                     [reported = std::move(changed)] { reported(); });
  }

  QWidget* Widget() const override { return &line_; }
  QWidget* Pane() const override { return &line_; }

  void UseStyle(DWORD style, bool framed) override {
    line_.setFrame(framed);
    line_.setReadOnly((style & ES_READONLY) != 0);
    line_.setEchoMode((style & ES_PASSWORD) != 0 ? QLineEdit::Password : QLineEdit::Normal);
    const bool right = (style & ES_RIGHT) != 0;
    line_.setAlignment(right ? Qt::AlignRight
                             : ((style & ES_CENTER) != 0 ? Qt::AlignHCenter : Qt::AlignLeft));
  }

  CString Text() const override { return FromQt(line_.text()); }
  void Set(const CString& text) override {
    undone_ = false;
    line_.setText(ToQt(text.View()));
    // Messages that set a text leave the caret in front; the widget would put it behind.
    line_.setCursorPosition(0);
  }
  void Replace(const CString& text) override {
    undone_ = false;
    line_.insert(ToQt(text.View()));
  }
  bool Undo() override {
    // The widget does not say whether there was anything to take back. One step, as the messages have it: the
    // next call brings back what this one took away.
    const QString before = line_.text();
    if (undone_) {
      line_.redo();
    } else {
      line_.undo();
    }
    undone_ = !undone_;
    line_.deselect();
    return line_.text() != before;
  }

  int Start() const override {
    return line_.hasSelectedText() ? line_.selectionStart() : line_.cursorPosition();
  }
  int End() const override { return line_.hasSelectedText() ? line_.selectionEnd() : line_.cursorPosition(); }
  int Caret() const override { return line_.cursorPosition(); }
  void Select(int start, int end) override {
    if (start == end) {
      line_.deselect();
      line_.setCursorPosition(start);
    } else {
      line_.setSelection(start, end - start);
    }
  }
  void Move(Step step, bool extend) override {
    // In a single line Up and Down go sideways, as in the edit of Windows.
    switch (step) {
      case Step::Back:
      case Step::Up:
        return line_.cursorBackward(extend);
      case Step::On:
      case Step::Down:
        return line_.cursorForward(extend);
      case Step::WordBack:
        return line_.cursorWordBackward(extend);
      case Step::WordOn:
        return line_.cursorWordForward(extend);
      case Step::LineStart:
      case Step::Start:
        return line_.home(extend);
      case Step::LineEnd:
      case Step::End:
        return line_.end(extend);
      default:
        return;
    }
  }

  std::vector<int> LineStarts() const override { return {0}; }
  int FirstLine() const override { return 0; }
  void Scroll(int /*lines*/) override {}
  void ShowCaret() override {}
  // The widget gives the place of its caret, and of no other place: the letters before it are measured.
  CPoint PlaceOf(int position) const override {
    const int left = LeftOfText();
    return CPoint(left + line_.fontMetrics().horizontalAdvance(line_.text().left(position)), 0);
  }
  int PositionAt(CPoint at) const override {
    // Qt only forgot the const: asking for a position changes nothing.
    return const_cast<QLineEdit&>(line_).cursorPositionAt(QPoint(at.x, line_.height() / 2));
  }
  void ShowMenu(CPoint screen) override {
    QMenu* const menu = line_.createStandardContextMenu();
    // It is shown without waiting, so nobody here could delete it.
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(ToQt(screen));
  }

 private:
  int LeftOfText() const {
    const QRect caret = line_.inputMethodQuery(Qt::ImCursorRectangle).toRectF().toRect();
    return caret.center().x() -
           line_.fontMetrics().horizontalAdvance(line_.text().left(line_.cursorPosition()));
  }

  QLineEdit& line_;
  // An edit has one step: undoing twice brings the text back, so every other undo is a redo.
  bool undone_ = false;
};

}  // namespace

std::unique_ptr<QtEditPane> MakeLinePane(QWidget* around, std::function<void()> changed) {
  return std::make_unique<LinePane>(around, std::move(changed));
}

}  // namespace lorv
