#include <QCoreApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QWidget>
#include <utility>

#include "platform/models/carried_fault.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_keys.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/desktop/qt_transfer.h"

// Drag and drop, and content on its way. Effects have the same numbers on both sides.

namespace lorv {
namespace {

static_assert(Qt::CopyAction == DROPEFFECT_COPY && Qt::MoveAction == DROPEFFECT_MOVE &&
              Qt::LinkAction == DROPEFFECT_LINK);

Qt::DropActions ActionsOf(DROPEFFECT effects) {
  constexpr DROPEFFECT kAll = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK;
  return Qt::DropActions(QFlag(static_cast<int>(effects & kAll)));
}

DROPEFFECT EffectsOf(Qt::DropActions actions) {
  return static_cast<DROPEFFECT>(int(actions)) & (DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK);
}

void Answer(QDropEvent& event, DROPEFFECT effect) {
  event.setDropAction(static_cast<Qt::DropAction>(effect));
  event.setAccepted(effect != DROPEFFECT_NONE);
}

// One of several that a receiver may have named.
DROPEFFECT OneOf(DROPEFFECT effects) {
  for (const DROPEFFECT effect : {DROPEFFECT_COPY, DROPEFFECT_MOVE, DROPEFFECT_LINK})
    if ((effects & effect) != 0) return effect;
  return DROPEFFECT_NONE;
}

}  // namespace

std::unique_ptr<QMimeData> ToMime(const TransferData& data) {
  auto content = std::make_unique<QMimeData>();
  if (data.HasText())
    // Line ends as programs on these systems write them; coming in they are made those of the messages.
    content->setText(ToQt(data.Text().View()).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
  for (const auto& [format, bytes] : data.Formats()) {
    const auto size = static_cast<qsizetype>(bytes.size());
    content->setData(ToQt(format.View()), QByteArray(reinterpret_cast<const char*>(bytes.data()), size));
  }
  return content;
}

CString TextOfMime(const QString& text) {
  QString plain = text;
  plain.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  return FromQt(plain.replace(QChar(u'\n'), QStringLiteral("\r\n")));
}

CString MimeContent::Text() const {
  return HasText() ? TextOfMime(data_->text()) : CString();
}

bool MimeContent::Has(const CString& format) const {
  return data_ != nullptr && data_->hasFormat(ToQt(format.View()));
}

std::vector<BYTE> MimeContent::Bytes(const CString& format) const {
  const QByteArray bytes = data_ == nullptr ? QByteArray() : data_->data(ToQt(format.View()));
  return {bytes.begin(), bytes.end()};
}

bool QtWindow::AcceptDrops(bool on) {
  if (!Exists()) return false;
  pane_->setAcceptDrops(on);
  return true;
}

bool QtWindow::TakeDrag(QEvent& event) {
  if (event.type() == QEvent::DragLeave) {
    if (DropReceiver* const receiver = MappedDropReceiver(Handle())) receiver->Leave();
    return true;
  }
  auto& drag = static_cast<QDropEvent&>(event);
  DropReceiver* const receiver = Blocked() ? nullptr : MappedDropReceiver(Handle());
  if (receiver == nullptr) return event.ignore(), true;
  const MimeContent content(drag.mimeData());
  const Edges edges = pane_ == widget_ ? Margins() : Edges();
  const DROPEFFECT allowed = EffectsOf(drag.possibleActions());
  const DWORD keys = static_cast<DWORD>(HeldBits(drag.buttons(), drag.modifiers()));
  const CPoint at = FromQt(drag.position().toPoint()) - CSize(edges.left, edges.top);
  const DragPlace place{at, keys, allowed};
  DROPEFFECT effect = DROPEFFECT_NONE;
  const DROPEFFECT asked = std::exchange(promised_, DROPEFFECT{DROPEFFECT_NONE});
  // A receiver that throws takes nothing.
  Answer(drag, DROPEFFECT_NONE);
  if (event.type() == QEvent::DragEnter) effect = receiver->Enter(content, place);
  if (event.type() == QEvent::DragMove) effect = receiver->Over(content, place);
  // A drop does what the last move promised; of another program's drag the event names its own wish.
  if (event.type() == QEvent::Drop) effect = receiver->Drop(content, place, asked);
  promised_ = OneOf(effect & allowed);
  Answer(drag, promised_);
  return true;
}

DROPEFFECT QtDesk::Drag(const TransferData& content, DROPEFFECT allowed) {
  // A second drag within the first would take its mouse away.
  if (Windows().empty() || dragging_ || ActionsOf(allowed) == Qt::DropActions()) return DROPEFFECT_NONE;
  SetCapture(nullptr);
  // The widget may go with its window while it is dragged, so the drag belongs to none; nor does it end with
  // this call, as the other program asks for the content after the drop. The widget set deletes it.
  auto* const drag = new QDrag(&drags_);
  drag->setMimeData(ToMime(content).release());
  dragging_ = true;
  struct End {
    explicit End(bool& dragging) : dragging_(dragging) {}
    ~End() { dragging_ = false; }
    bool& dragging_;
  };
  const End end(dragging_);
  const DROPEFFECT done =
      RunInner([&] { return EffectsOf(drag->exec(ActionsOf(allowed), Qt::IgnoreAction)); }, &QDrag::cancel);
  // The button came up within the drag.
  HoldKey(VK_LBUTTON, false);
  return done;
}

}  // namespace lorv
