// Mouse, drag and drop of CCrystalEditView.
#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QTimerEvent>

#include "text/edit/ClipboardText.h"
#include "text/edit/ColumnBlock.h"
#include "text/edit/InsertCommands.h"
#include "text/ui/ClipboardData.h"
#include "text/ui/CrystalEditView.h"

namespace quill {
namespace {

constexpr int kDropScrollMs = 100;

}  // namespace

void CCrystalEditView::mousePressEvent(QMouseEvent* event) {
  m_typing.Forget();
  if (event->button() == Qt::MiddleButton && QApplication::clipboard()->supportsSelection() && CanEdit()) {
    const QMimeData* data = QApplication::clipboard()->mimeData(QClipboard::Selection);
    if (data != nullptr && data->hasText()) {
      SetCaretPos(PositionAt(event->position().toPoint()));
      PasteFrom(*data);
    }
    return;
  }
  CCrystalTextView::mousePressEvent(event);
}

bool CCrystalEditView::IsOnSelection(QPoint point) const {
  if (Model().IsColumnSelection()) {
    const ColumnBlock block = BlockOf(m_target);
    const BlockCorner corner = CornerAt(point);
    return corner.line >= block.firstLine && corner.line <= block.lastLine && corner.column >= block.left &&
           corner.column < block.right;
  }
  const TextRange range = Selection();
  const TextPosition place = PositionAt(point);
  const bool behindLine =
      point.x() > PointOf(place).x() + LineHeight() && place.character == Buffer()->LineLength(place.line);
  return place >= range.start && place < range.end && !behindLine;
}

bool CCrystalEditView::BeginsDrag(QMouseEvent* event) {
  if (!Model().HasSelection()) return false;
  if ((event->modifiers() & (Qt::ShiftModifier | Qt::AltModifier)) != 0) return false;
  if (!IsOnSelection(event->position().toPoint())) return false;
  m_dragPending = true;
  m_dragStart = event->position().toPoint();
  return true;
}

void CCrystalEditView::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) EndMouse();
  if (!m_dragPending) {
    CCrystalTextView::mouseMoveEvent(event);
  } else if ((event->position().toPoint() - m_dragStart).manhattanLength() >=
             QApplication::startDragDistance()) {
    StartDrag();
  }
}

void CCrystalEditView::EndMouse() {
  m_dragPending = false;
  CCrystalTextView::EndMouse();
}

void CCrystalEditView::mouseReleaseEvent(QMouseEvent* event) {
  const bool click = std::exchange(m_dragPending, false);
  if (click && event->button() == Qt::LeftButton) SetCaretPos(PositionAt(event->position().toPoint()));
  CCrystalTextView::mouseReleaseEvent(event);
  if (!click && event->button() == Qt::LeftButton) PublishPrimarySelection();
}

void CCrystalEditView::StartDrag() {
  EndMouse();
  m_droppedInText = false;
  const std::string dragged = edit::CopySelection(m_target);
  auto* drag = new QDrag(this);
  drag->setMimeData(clipboard_data::Make(dragged, Model().IsColumnSelection()));
  const Qt::DropActions actions =
      CanEdit() ? Qt::CopyAction | Qt::MoveAction : Qt::DropActions(Qt::CopyAction);
  const QPointer<CCrystalEditView> alive(this);
  const Qt::DropAction done = drag->exec(actions, CanEdit() ? Qt::MoveAction : Qt::CopyAction);
  if (alive == nullptr || done != Qt::MoveAction || m_droppedInText || !CanEdit()) return;
  // Events were handled meanwhile: what is taken away is what was dragged, or nothing.
  if (edit::CopySelection(m_target) == dragged) Edit(edit::RemoveDraggedSelection);
}

// What is dragged over the view

void CCrystalEditView::dragEnterEvent(QDragEnterEvent* event) {
  // Files are the main window's.
  if (event->mimeData()->hasUrls() || !event->mimeData()->hasText() || !CanEdit()) {
    event->ignore();
    return;
  }
  event->acceptProposedAction();
}

void CCrystalEditView::dragMoveEvent(QDragMoveEvent* event) {
  if (!CanEdit() || event->mimeData()->hasUrls()) {
    event->ignore();
    return;
  }
  m_dropPoint = event->position().toPoint();
  SetDropPlace(PositionAt(m_dropPoint));
  if (!m_dropScroll.isActive()) m_dropScroll.start(kDropScrollMs, this);
  event->acceptProposedAction();
}

void CCrystalEditView::dragLeaveEvent(QDragLeaveEvent*) {
  EndDropPlace();
}

void CCrystalEditView::EndDropPlace() {
  m_dropScroll.stop();
  SetDropPlace(std::nullopt);
}

void CCrystalEditView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != m_dropScroll.timerId()) return CCrystalTextView::timerEvent(event);
  if (!CanEdit()) return EndDropPlace();
  ScrollAtEdge(m_dropPoint);
  SetDropPlace(PositionAt(m_dropPoint));
}

void CCrystalEditView::dropEvent(QDropEvent* event) {
  EndDropPlace();
  const TextPosition place = PositionAt(event->position().toPoint());
  if (!CanEdit() || !event->mimeData()->hasText() || !Drop(*event, place)) {
    // Else the other end would take away what is nowhere now.
    event->setDropAction(Qt::IgnoreAction);
    event->ignore();
    return;
  }
  event->acceptProposedAction();
  setFocus();
}

bool CCrystalEditView::Drop(const QDropEvent& event, TextPosition place) {
  auto* from = qobject_cast<CCrystalEditView*>(event.source());
  if (from == nullptr || from->Buffer() != Buffer() || !from->Model().HasSelection()) {
    int replaced = 0;
    const std::string text = clipboard_data::TextOf(*event.mimeData(), replaced);
    const bool block = clipboard_data::IsBlock(*event.mimeData());
    return Edit([&](EditTarget& target) {
      return block ? edit::DropBlock(target, place, text) : edit::DropText(target, place, text);
    });
  }
  // From another window of this text, too, it is one step, and nothing is left to do for that window.
  from->m_droppedInText = true;
  const bool copy = event.dropAction() == Qt::CopyAction;
  if (from->Model().IsColumnSelection()) {
    const ColumnBlock block = BlockOf(from->m_target);
    return Edit([&](EditTarget& target) { return edit::MoveBlock(target, block, place, copy); });
  }
  const TextRange range = from->Selection();
  return Edit([&](EditTarget& target) { return edit::MoveText(target, range, place, copy); });
}

}  // namespace quill
