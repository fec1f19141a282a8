// Keys, mouse, timers and focus of CCrystalTextView.
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyleHints>
#include <algorithm>
#include <cmath>

#include "text/ui/CrystalTextView.h"
#include "text/ui/FoldCommands.h"

namespace quill {
namespace {

constexpr int kDragScrollMs = 100;
constexpr int kWheelStep = 120;  ///< eighths of a degree a notch, as the platforms report it
constexpr int kZoomStep = 10;    ///< percent
constexpr int64_t kMeasureBudget = 2'000'000;
constexpr int64_t kBraceSlice = 1'000'000;  ///< characters: a millisecond or two

struct MotionKey {
  int key;
  bool control;
  Motion motion;
};
constexpr MotionKey kMotionKeys[] = {
    {Qt::Key_Left, false, Motion::kLeft},      {Qt::Key_Right, false, Motion::kRight},
    {Qt::Key_Up, false, Motion::kUp},          {Qt::Key_Down, false, Motion::kDown},
    {Qt::Key_Left, true, Motion::kWordLeft},   {Qt::Key_Right, true, Motion::kWordRight},
    {Qt::Key_Home, false, Motion::kLineStart}, {Qt::Key_End, false, Motion::kLineEnd},
    {Qt::Key_Home, true, Motion::kTextStart},  {Qt::Key_End, true, Motion::kTextEnd},
    {Qt::Key_PageUp, false, Motion::kPageUp},  {Qt::Key_PageDown, false, Motion::kPageDown},
};

std::optional<Motion> MotionOf(const QKeyEvent& event) {
  const bool control = event.modifiers().testFlag(Qt::ControlModifier);
  for (const MotionKey& entry : kMotionKeys) {
    if (entry.key == event.key() && entry.control == control) return entry.motion;
  }
  return std::nullopt;
}

}  // namespace

bool CCrystalTextView::event(QEvent* event) {
  if (event->type() == DamageEvent()) {
    m_damagePosted = false;
    ApplyDamage();
    return true;
  }
  return QAbstractScrollArea::event(event);
}

void CCrystalTextView::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) viewport()->update();
}

void CCrystalTextView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  UpdateScrollBars();
  ApplyDamage();
  if (m_font != nullptr) KeepCaretRow(RowsIn(event->oldSize().height()));
}

// Keys

void CCrystalTextView::keyPressEvent(QKeyEvent* event) {
  if (!HandleNavigationKey(event)) QAbstractScrollArea::keyPressEvent(event);
}

bool CCrystalTextView::HandleNavigationKey(QKeyEvent* event) {
  if (!m_model.HasText()) return false;
  const bool control = event->modifiers().testFlag(Qt::ControlModifier);
  const bool alt = event->modifiers().testFlag(Qt::AltModifier);
  if (control && !alt && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
    verticalScrollBar()->setValue(verticalScrollBar()->value() + (event->key() == Qt::Key_Up ? -1 : 1));
    return true;
  }
  return MoveCaret(event);
}

bool CCrystalTextView::MoveCaret(QKeyEvent* event) {
  const auto motion = MotionOf(*event);
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  const bool alt = event->modifiers().testFlag(Qt::AltModifier);
  if (!motion || (alt && !shift)) return false;
  // Left and right without Shift leave a selection at its side.
  if (m_model.HasSelection() && !shift && (*motion == Motion::kLeft || *motion == Motion::kRight)) {
    const TextRange range = Selection();
    SetCaretPos(*motion == Motion::kLeft ? range.start : range.end);
    m_navigator.ForgetWantedPlace();
    return true;
  }
  const bool page = *motion == Motion::kPageUp || *motion == Motion::kPageDown;
  const int32_t rows = std::max(1, PageRows() - 1);
  if (page) {
    const int step = *motion == Motion::kPageUp ? -rows : rows;
    verticalScrollBar()->setValue(verticalScrollBar()->value() + step);
  }
  if (alt) {
    m_model.SetBlock(m_model.AnchorCorner(), m_navigator.BlockTarget(m_model.CaretCorner(), *motion, rows));
  } else {
    m_model.SetColumnSelection(false);
    m_model.SetCaret(m_navigator.Target(CaretPos(), *motion, rows), shift);
  }
  AfterCaretMove();
  return true;
}

// Mouse

void CCrystalTextView::mousePressEvent(QMouseEvent* event) {
  if (!m_model.HasText() || event->button() != Qt::LeftButton) return;
  m_navigator.ForgetWantedPlace();
  const QPoint point = event->position().toPoint();
  const TextPosition place = PositionAt(point);
  if (IsInMargin(point)) {
    MarginPress(event, place.line);
    return;
  }
  if (IsTripleClick(event)) {
    SelectLines(place.line);
    return;
  }
  if (BeginsDrag(event)) return;
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  const bool alt = event->modifiers().testFlag(Qt::AltModifier);
  const TextPosition anchor = shift ? m_model.Anchor() : place;
  m_mouse.Begin(alt ? MouseSelection::Unit::kColumns : MouseSelection::Unit::kCharacter, {anchor, anchor});
  if (alt) {
    m_blockOrigin = shift ? m_model.AnchorCorner() : CornerAt(point);
    m_model.SetBlock(m_blockOrigin, CornerAt(point));
  } else {
    m_model.SetColumnSelection(false);
    m_model.SetSelection(anchor, place);
  }
  AfterCaretMove();
  m_dragScroll.start(kDragScrollMs, this);
}

bool CCrystalTextView::IsTripleClick(QMouseEvent* event) {
  const bool triple = m_doubleClick.isValid() &&
                      !m_doubleClick.hasExpired(QApplication::doubleClickInterval()) &&
                      (event->position().toPoint() - m_doubleClickPoint).manhattanLength() <
                          QApplication::startDragDistance();
  m_doubleClick.invalidate();
  return triple;
}

void CCrystalTextView::MarginPress(QMouseEvent* event, int32_t line) {
  const QPoint point = event->position().toPoint();
  if (m_margin.IsInFolding(point.x())) {
    if ((Buffer()->LineFlags(line) & line_flag::kBlockStart) == 0) return;
    return fold_command::ToggleBlockAt(*this, line);
  }
  SelectLines(line, event->modifiers().testFlag(Qt::ShiftModifier));
}

void CCrystalTextView::SelectLines(int32_t line, bool extend) {
  const TextRange lines = LineRangeAt(line);
  const TextRange origin = extend ? TextRange{m_model.Anchor(), m_model.Anchor()} : lines;
  m_mouse.Begin(MouseSelection::Unit::kLine, origin);
  const MouseSelection::Ends ends = m_mouse.ExtendTo(lines);
  m_model.SetColumnSelection(false);
  m_model.SetSelection(ends.anchor, ends.caret);
  AfterCaretMove(false);
  m_dragScroll.start(kDragScrollMs, this);
}

TextRange CCrystalTextView::LineRangeAt(int32_t line) const {
  const int32_t next = m_model.Folds().NextShown(line);
  if (next < Buffer()->LineCount()) return {{line, 0}, {next, 0}};
  return {{line, 0}, Buffer()->EndOfText()};
}

void CCrystalTextView::mouseDoubleClickEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  if (!m_model.HasText() || event->button() != Qt::LeftButton) return;
  if (point.x() < m_margin.width) {
    mousePressEvent(event);
    return;
  }
  const TextPosition place = PositionAt(point);
  const WordRange word = WordAt(Buffer()->Line(place.line), place.character);
  const TextRange range{{place.line, word.start}, {place.line, word.end}};
  m_mouse.Begin(MouseSelection::Unit::kWord, range);
  m_model.SetColumnSelection(false);
  m_model.SetSelection(range.start, range.end);
  AfterCaretMove();
  m_doubleClick.start();
  m_doubleClickPoint = point;
  m_dragScroll.start(kDragScrollMs, this);
}

void CCrystalTextView::mouseMoveEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  // The release may have gone to a menu or a dialog that came up in between.
  if (!event->buttons().testFlag(Qt::LeftButton)) EndMouse();
  if (m_mouse.IsActive()) {
    ExtendSelectionTo(point);
  } else {
    viewport()->setCursor(IsInMargin(point) ? Qt::ArrowCursor : Qt::IBeamCursor);
  }
}

void CCrystalTextView::ExtendSelectionTo(QPoint point) {
  if (m_mouse.CurrentUnit() == MouseSelection::Unit::kColumns) {
    const BlockCorner corner = CornerAt(point);
    if (m_model.IsColumnSelection() && corner == m_model.CaretCorner()) return;
    m_model.SetBlock(m_blockOrigin, corner);
    return AfterCaretMove();
  }
  const TextPosition place = PositionAt(point);
  TextRange target{place, place};
  if (m_mouse.CurrentUnit() == MouseSelection::Unit::kWord) {
    const WordRange word = WordAt(Buffer()->Line(place.line), place.character);
    target = {{place.line, word.start}, {place.line, word.end}};
  } else if (m_mouse.CurrentUnit() == MouseSelection::Unit::kLine) {
    target = LineRangeAt(place.line);
  }
  const MouseSelection::Ends ends = m_mouse.ExtendTo(target);
  if (ends.caret == CaretPos() && ends.anchor == m_model.Anchor()) return;
  m_model.SetSelection(ends.anchor, ends.caret);
  AfterCaretMove(m_mouse.CurrentUnit() != MouseSelection::Unit::kLine);
}

void CCrystalTextView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) EndMouse();
}

void CCrystalTextView::EndMouse() {
  m_mouse.End();
  m_dragScroll.stop();
}

bool CCrystalTextView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::UngrabMouse) EndMouse();
  return QAbstractScrollArea::viewportEvent(event);
}

void CCrystalTextView::hideEvent(QHideEvent* event) {
  QAbstractScrollArea::hideEvent(event);
  EndMouse();
}

void CCrystalTextView::DragScrollStep() {
  const QPoint point = viewport()->mapFromGlobal(QCursor::pos());
  const QRect area = TextArea();
  if (area.contains(point) || !m_model.HasText()) return;
  const auto stepsBeyond = [](int beyond, int unit) { return 1 + std::min(beyond / std::max(unit, 1), 20); };
  if (point.y() < 0)
    verticalScrollBar()->setValue(verticalScrollBar()->value() - stepsBeyond(-point.y(), LineHeight()));
  if (point.y() >= area.bottom()) {
    verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                  stepsBeyond(point.y() - area.bottom(), LineHeight()));
  }
  ExtendSelectionTo(point);
}

void CCrystalTextView::ScrollAtEdge(QPoint point) {
  const QRect inner = TextArea().adjusted(LineHeight(), LineHeight(), -LineHeight(), -LineHeight());
  const auto step = [](QScrollBar& bar, int at, int from, int to) {
    const int direction = at < from ? -1 : at > to ? 1 : 0;
    if (direction != 0) bar.setValue(bar.value() + direction * bar.singleStep());
  };
  step(*verticalScrollBar(), point.y(), inner.top(), inner.bottom());
  step(*horizontalScrollBar(), point.x(), inner.left(), inner.right());
}

void CCrystalTextView::wheelEvent(QWheelEvent* event) {
  if (event->modifiers() == Qt::ShiftModifier) {
    QApplication::sendEvent(horizontalScrollBar(), event);
    return;
  }
  if (!event->modifiers().testFlag(Qt::ControlModifier)) {
    QAbstractScrollArea::wheelEvent(event);
    return;
  }
  m_wheelRest += event->angleDelta().y();
  const int steps = m_wheelRest / kWheelStep;
  m_wheelRest -= steps * kWheelStep;
  if (steps != 0) SetZoom(m_zoom + steps * kZoomStep);
  event->accept();
}

// Timers and focus

void CCrystalTextView::timerEvent(QTimerEvent* event) {
  if (event->timerId() == m_blink.timerId()) {
    m_caretShown = !m_caretShown;
    viewport()->update(CaretRect());
  } else if (event->timerId() == m_dragScroll.timerId()) {
    DragScrollStep();
  } else if (event->timerId() == m_scrollBars.timerId()) {
    UpdateScrollBars();
  } else if (event->timerId() == m_measure.timerId()) {
    const bool more = m_model.HasText() && m_model.Widths().Continue(kMeasureBudget);
    UpdateScrollBars();
    if (!more) m_measure.stop();
  } else if (event->timerId() == m_braceSearch.timerId()) {
    SearchBrace(kBraceSlice);
  } else {
    QAbstractScrollArea::timerEvent(event);
  }
}

void CCrystalTextView::RestartBlink() {
  if (!hasFocus()) return;
  m_caretShown = true;
  const int period = QGuiApplication::styleHints()->cursorFlashTime() / 2;
  if (period > 0) {
    m_blink.start(period, this);
  } else {
    m_blink.stop();
  }
}

void CCrystalTextView::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  RestartBlink();
  viewport()->update(CaretRect());
  Q_EMIT GotFocus();
}

void CCrystalTextView::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  EndMouse();
  m_blink.stop();
  m_caretShown = false;
  viewport()->update(CaretRect());
  Q_EMIT LostFocus();
}

}  // namespace quill
