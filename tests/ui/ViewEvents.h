#pragma once
#include <QApplication>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QImage>
#include <QMouseEvent>
#include <QPixmap>
#include <QScreen>
#include <QWheelEvent>
#include <QWidget>
#include <string>

#include "shell/ui/QuillView.h"
#include "ui/ShellFixture.h"

namespace quill {

/// A mouse over a widget, usually a view's viewport: events as the platform delivers them. Nothing else is
/// handled between them, so that timers of a held button stay out of the test.
class Mouse {
 public:
  explicit Mouse(QWidget& widget) : m_widget(widget) {}

  void Press(QPoint at, Qt::KeyboardModifiers modifiers = {}) {
    m_modifiers = modifiers;
    Send(QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
  }
  /// The button comes up where the widget does not hear of it.
  void ReleaseElsewhere() { m_held = Qt::NoButton; }
  void Move(QPoint at) { Send(QEvent::MouseMove, at, Qt::NoButton, m_held); }
  void Release(QPoint at) { Send(QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton); }
  void Click(QPoint at, Qt::KeyboardModifiers modifiers = {}) {
    Press(at, modifiers);
    Release(at);
  }
  /// The button stays down after the second press.
  void DoublePress(QPoint at) {
    Click(at);
    Send(QEvent::MouseButtonDblClick, at, Qt::LeftButton, Qt::LeftButton);
  }
  void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = {}) {
    Press(from, modifiers);
    Move((from + to) / 2);
    Move(to);
    Release(to);
  }
  /// `turn` in eighths of a degree, 120 a notch; away from the user is positive.
  void Wheel(int turn, Qt::KeyboardModifiers modifiers = {}) {
    const QPointF at(m_widget.rect().center());
    QWheelEvent wheel(at, m_widget.mapToGlobal(at), QPoint(), QPoint(0, turn), Qt::NoButton, modifiers,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&m_widget, &wheel);
  }

 private:
  void Send(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) {
    m_held = held;
    QMouseEvent event(type, QPointF(at), m_widget.mapToGlobal(QPointF(at)), button, held, m_modifiers);
    QApplication::sendEvent(&m_widget, &event);
  }

  QWidget& m_widget;
  Qt::MouseButtons m_held;
  Qt::KeyboardModifiers m_modifiers;
};

/// What is dragged over a widget. Ctrl and Shift decide what a drop does, as they do on a desktop.
class DraggedData {
 public:
  /// `plain` is what the source wants to be done without these keys.
  DraggedData(QWidget& widget, const QMimeData& data, Qt::DropAction plain = Qt::CopyAction)
      : m_widget(widget), m_data(data), m_plain(plain) {}

  /// False when the widget does not want it.
  bool EnterAndMove(QPoint at, Qt::KeyboardModifiers modifiers = {}) {
    QDragEnterEvent enter(at, ActionWith(modifiers), &m_data, Qt::LeftButton, modifiers);
    enter.ignore();
    QApplication::sendEvent(&m_widget, &enter);
    if (!enter.isAccepted()) return false;
    QDragMoveEvent move(at, ActionWith(modifiers), &m_data, Qt::LeftButton, modifiers);
    move.ignore();
    QApplication::sendEvent(&m_widget, &move);
    return move.isAccepted();
  }
  void Leave() {
    QDragLeaveEvent leave;
    QApplication::sendEvent(&m_widget, &leave);
  }
  bool Drop(QPoint at, Qt::KeyboardModifiers modifiers = {}) {
    if (!EnterAndMove(at, modifiers)) {
      Leave();
      return false;
    }
    QDropEvent drop(QPointF(at), ActionWith(modifiers), &m_data, Qt::LeftButton, modifiers);
    drop.ignore();
    QApplication::sendEvent(&m_widget, &drop);
    return drop.isAccepted();
  }

 private:
  Qt::DropAction ActionWith(Qt::KeyboardModifiers modifiers) const {
    if (modifiers.testFlag(Qt::ControlModifier)) return Qt::CopyAction;
    return modifiers.testFlag(Qt::ShiftModifier) ? Qt::MoveAction : m_plain;
  }

  QWidget& m_widget;
  const QMimeData& m_data;
  Qt::DropAction m_plain;
};

/// Tests of the active view that look at its text, caret and selection, or at its pixels. The caret does not
/// blink, and a double click may take its time.
class ViewFixture : public ShellFixture {
 protected:
  ViewFixture() {
    QApplication::setCursorFlashTime(0);
    QApplication::setDoubleClickInterval(60'000);
    Start();
  }
  ~ViewFixture() override {
    QApplication::setDoubleClickInterval(m_doubleClickInterval);
    QApplication::setCursorFlashTime(m_cursorFlashTime);
  }

  QWidget& Viewport() { return *View().viewport(); }
  Mouse ViewMouse() { return Mouse(Viewport()); }
  /// In the left half of a character.
  QPoint At(int32_t line, int32_t character) {
    return View().PointOf({line, character}) + QPoint(2, View().LineHeight() / 2);
  }
  /// In the margin beside a line, where the marks are.
  QPoint BesideLine(int32_t line) { return {4, At(line, 0).y()}; }

  /// The text with "|" at the caret and "[" at the other end of a selection.
  std::string Shown() {
    const CCrystalTextBuffer& buffer = *View().Buffer();
    std::string text;
    buffer.CopyRange({{0, 0}, buffer.EndOfText()}, text, "\n");
    const auto offset = [&buffer](TextPosition p) {
      size_t at = static_cast<size_t>(p.character);
      for (int32_t line = 0; line < p.line; ++line) at += static_cast<size_t>(buffer.LineLength(line)) + 1;
      return at;
    };
    const TextRange selection = View().Selection();
    const bool caretFirst = View().CaretPos() == selection.start;
    if (selection.start == selection.end) return text.insert(offset(selection.end), "|");
    text.insert(offset(selection.end), caretFirst ? "[" : "|");
    return text.insert(offset(selection.start), caretFirst ? "|" : "[");
  }
  void PressKeys(const std::vector<const char*>& keys) {
    for (const char* key : keys) Press(key);
  }

  /// The viewport as it is on the screen, after all repaints that were asked for.
  QImage OnScreen() {
    Pump();
    QWidget& window = *View().window();
    const QRect area(Viewport().mapTo(&window, QPoint(0, 0)), Viewport().size());
    return window.screen()
        ->grabWindow(window.winId())
        .toImage()
        .convertToFormat(QImage::Format_RGB32)
        .copy(area);
  }
  /// The viewport as a repaint of everything draws it.
  QImage Repainted() { return Viewport().grab().toImage().convertToFormat(QImage::Format_RGB32); }

  static int Count(const QImage& image, QRect area, QRgb colour) {
    area &= image.rect();
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
      for (int x = area.left(); x <= area.right(); ++x) count += image.pixel(x, y) == colour ? 1 : 0;
    }
    return count;
  }
  static int Count(const QImage& image, QRgb colour) { return Count(image, image.rect(), colour); }
  /// A line's row without the margin.
  QRect RowOf(int32_t line) {
    const QPoint left = View().PointOf({line, 0});
    return {left.x(), left.y(), Viewport().width() - left.x(), View().LineHeight()};
  }

 private:
  int m_cursorFlashTime = QApplication::cursorFlashTime();
  int m_doubleClickInterval = QApplication::doubleClickInterval();
};

}  // namespace quill
