#include <QAbstractTextDocumentLayout>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <algorithm>
#include <cstdint>

#include "platform/qt/controls/qt_edit_pane.h"
#include "platform/qt/desktop/qt_text.h"

// The edit of several lines over QPlainTextEdit. The widget counts a line end as one unit and the messages as
// two, so every position that goes in or out passes Inner or Outer, which count the line ends in front of it.

namespace lorv {
namespace {

QTextCursor::MoveOperation OperationOf(EditPane::Step step) {
  using Step = EditPane::Step;
  switch (step) {
    case Step::Back:
      return QTextCursor::Left;
    case Step::On:
      return QTextCursor::Right;
    case Step::WordBack:
      return QTextCursor::WordLeft;
    case Step::WordOn:
      return QTextCursor::WordRight;
    case Step::Up:
      return QTextCursor::Up;
    case Step::Down:
      return QTextCursor::Down;
    case Step::LineStart:
      return QTextCursor::StartOfLine;
    case Step::LineEnd:
      return QTextCursor::EndOfLine;
    case Step::Start:
      return QTextCursor::Start;
    case Step::End:
      return QTextCursor::End;
    default:
      return QTextCursor::NoMove;
  }
}

QString WithSingleEnds(const CString& text) {
  return ToQt(text.View()).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

class TextPane : public QtEditPane {
 public:
  TextPane(QWidget* around, std::function<void()> changed) : text_(*new QPlainTextEdit(around)) {
    // Where Tab goes is decided by the dialog, before the widget sees it.
    text_.setTabChangesFocus(false);
    text_.document()->setDocumentMargin(1);
    QObject::connect(&text_, &QPlainTextEdit::textChanged, &text_,
                     [reported = std::move(changed)] { reported(); });
  }

  QWidget* Widget() const override { return &text_; }
  QWidget* Pane() const override { return text_.viewport(); }

  void UseStyle(DWORD style, bool framed) override {
    text_.setFrameShape(framed ? QFrame::Box : QFrame::NoFrame);
    text_.setLineWidth(1);
    text_.setReadOnly((style & ES_READONLY) != 0);
    // An edit that does not scroll sideways breaks its lines, as on Windows.
    const bool wraps = (style & ES_AUTOHSCROLL) == 0;
    text_.setLineWrapMode(wraps ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
    const auto policy = [style](DWORD bit) {
      return (style & bit) != 0 ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
    };
    text_.setVerticalScrollBarPolicy(policy(WS_VSCROLL));
    text_.setHorizontalScrollBarPolicy(policy(WS_HSCROLL));
  }

  CString Text() const override {
    return FromQt(text_.toPlainText().replace(QChar(u'\n'), QStringLiteral("\r\n")));
  }
  void Set(const CString& text) override {
    undone_ = false;
    text_.setPlainText(WithSingleEnds(text));
  }
  void Replace(const CString& text) override {
    undone_ = false;
    text_.textCursor().insertText(WithSingleEnds(text));
  }
  bool Undo() override {
    // One step, as the messages have it: the next call brings back what this one took away.
    if (undone_ ? !text_.document()->isRedoAvailable() : !text_.document()->isUndoAvailable()) return false;
    if (undone_) {
      text_.redo();
    } else {
      text_.undo();
    }
    undone_ = !undone_;
    return true;
  }

  int Start() const override { return Outer(text_.textCursor().selectionStart()); }
  int End() const override { return Outer(text_.textCursor().selectionEnd()); }
  int Caret() const override { return Outer(text_.textCursor().position()); }
  void Select(int start, int end) override {
    QTextCursor cursor = text_.textCursor();
    cursor.setPosition(Inner(start));
    cursor.setPosition(Inner(end), QTextCursor::KeepAnchor);
    text_.setTextCursor(cursor);
  }
  void Move(Step step, bool extend) override {
    const auto mode = extend ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor;
    int times = 1;
    if (step == Step::PageUp || step == Step::PageDown) {
      // A page is what is seen less one line, which stays in sight.
      times = std::max(text_.viewport()->height() / std::max(text_.fontMetrics().lineSpacing(), 1) - 1, 1);
      step = step == Step::PageUp ? Step::Up : Step::Down;
    }
    QTextCursor cursor = text_.textCursor();
    // Steps by lines need the lines.
    LayOut();
    cursor.movePosition(OperationOf(step), mode, times);
    text_.setTextCursor(cursor);
  }

  std::vector<int> LineStarts() const override {
    LayOut();
    std::vector<int> starts;
    for (QTextBlock block = text_.document()->begin(); block.isValid(); block = block.next()) {
      // Each line end in front counts one unit more than the widget has for it.
      const int first = block.position() + block.blockNumber();
      const QTextLayout* const layout = block.layout();
      const int lines = layout->lineCount();
      starts.push_back(first);
      for (int i = 1; i < lines; ++i) starts.push_back(first + layout->lineAt(i).textStart());
    }
    return starts;
  }
  int FirstLine() const override { return text_.verticalScrollBar()->value(); }
  void Scroll(int lines) override {
    QScrollBar* const bar = text_.verticalScrollBar();
    const auto wanted = std::int64_t{bar->value()} + lines;
    bar->setValue(static_cast<int>(std::clamp<std::int64_t>(wanted, bar->minimum(), bar->maximum())));
  }
  void ShowCaret() override { text_.ensureCursorVisible(); }
  CPoint PlaceOf(int position) const override {
    QTextCursor cursor = text_.textCursor();
    cursor.setPosition(Inner(position));
    return FromQt(text_.cursorRect(cursor).topLeft());
  }
  int PositionAt(CPoint at) const override { return Outer(text_.cursorForPosition(ToQt(at)).position()); }
  void ShowMenu(CPoint screen) override {
    QMenu* const menu = text_.createStandardContextMenu();
    // It is shown without waiting, so nobody here could delete it.
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(ToQt(screen));
  }

 private:
  // Blocks have their lines only once the layout was asked for them.
  void LayOut() const {
    const QAbstractTextDocumentLayout* const layout = text_.document()->documentLayout();
    for (QTextBlock block = text_.document()->begin(); block.isValid(); block = block.next())
      layout->blockBoundingRect(block);
  }
  int Outer(int inner) const { return inner + text_.document()->findBlock(inner).blockNumber(); }
  // A position between CR and LF counts as before both.
  int Inner(int outer) const {
    int low = 0;
    int high = text_.document()->blockCount() - 1;
    while (low < high) {
      const int middle = (low + high + 1) / 2;
      const QTextBlock block = text_.document()->findBlockByNumber(middle);
      if (block.position() + middle <= outer) {
        low = middle;
      } else {
        high = middle - 1;
      }
    }
    const QTextBlock block = text_.document()->findBlockByNumber(low);
    return std::clamp(outer - low, block.position(), block.position() + block.length() - 1);
  }

  QPlainTextEdit& text_;
  bool undone_ = false;
};

}  // namespace

std::unique_ptr<QtEditPane> MakeTextPane(QWidget* around, std::function<void()> changed) {
  return std::make_unique<TextPane>(around, std::move(changed));
}

}  // namespace lorv
