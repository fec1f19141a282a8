// Mouse, drag and drop of CCrystalEditView.
#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>

#include "text/edit/ClipboardText.h"
#include "text/edit/InsertCommands.h"
#include "text/ui/ClipboardData.h"
#include "text/ui/CrystalEditView.h"

namespace quill {

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

bool CCrystalEditView::BeginsDrag(QMouseEvent* event) {
  if (!Model().HasSelection() || Model().IsColumnSelection()) return false;
  if ((event->modifiers() & (Qt::ShiftModifier | Qt::AltModifier)) != 0) return false;
  const TextRange range = Selection();
  const TextPosition place = PositionAt(event->position().toPoint());
  const bool behindLine = event->position().x() > PointOf(place).x() + LineHeight() &&
                          place.character == Buffer()->LineLength(place.line);
  if (place < range.start || place >= range.end || behindLine) return false;
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
  m_dragPending = false;
  m_dropInside = false;
  auto* drag = new QDrag(this);
  drag->setMimeData(clipboard_data::Make(edit::CopySelection(m_target), false));
  const Qt::DropActions actions =
      CanEdit() ? Qt::CopyAction | Qt::MoveAction : Qt::DropActions(Qt::CopyAction);
  const Qt::DropAction done = drag->exec(actions, CanEdit() ? Qt::MoveAction : Qt::CopyAction);
  if (done == Qt::MoveAction && !m_dropInside && CanEdit()) {
    const TextRange range = Selection();
    Edit([&](EditTarget& target) { return edit::RemoveDraggedText(target, range); });
  }
}

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
  SetDropPlace(PositionAt(event->position().toPoint()));
  event->acceptProposedAction();
}

void CCrystalEditView::dragLeaveEvent(QDragLeaveEvent*) {
  SetDropPlace(std::nullopt);
}

void CCrystalEditView::dropEvent(QDropEvent* event) {
  SetDropPlace(std::nullopt);
  if (!CanEdit() || !event->mimeData()->hasText()) return;
  const TextPosition place = PositionAt(event->position().toPoint());
  if (event->source() == this) {
    m_dropInside = true;
    const bool copy = event->dropAction() == Qt::CopyAction;
    const TextRange from = Selection();
    Edit([&](EditTarget& target) { return edit::MoveText(target, from, place, copy); });
  } else {
    int replaced = 0;
    const std::string text = clipboard_data::TextOf(*event->mimeData(), replaced);
    Edit([&](EditTarget& target) { return edit::DropText(target, place, text); });
  }
  event->acceptProposedAction();
  setFocus();
}

}  // namespace quill
