#pragma once
#include <QAccessibleWidget>
#include <optional>

#include "text/buffer/TextPosition.h"
#include "text/view/TextUnit.h"

namespace quill {

class CCrystalTextBuffer;
class CCrystalTextView;
class TextAnnouncer;

/// A text view as assistive technology sees it: a text of several lines parted by "\n", its offsets counted
/// in characters of the code page. A column selection is a selection a line.
class AccessibleText : public QAccessibleWidget,
                       public QAccessibleTextInterface,
                       public QAccessibleEditableTextInterface {
 public:
  /// Makes this the interface of every text view.
  static void Register();

  explicit AccessibleText(CCrystalTextView& view);

  void* interface_cast(QAccessible::InterfaceType type) override;
  QAccessible::State state() const override;
  QString text(QAccessible::Text what) const override;

  // Of QAccessibleTextInterface
  int selectionCount() const override;
  void selection(int index, int* start, int* end) const override;
  void addSelection(int start, int end) override;
  void removeSelection(int index) override;
  void setSelection(int index, int start, int end) override;
  int cursorPosition() const override;
  void setCursorPosition(int offset) override;
  int characterCount() const override;
  QString text(int start, int end) const override;
  QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                           int* end) const override;
  QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                       int* end) const override;
  QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                          int* end) const override;
  /// On the screen; empty for what a collapsed block hides.
  QRect characterRect(int offset) const override;
  int offsetAtPoint(const QPoint& point) const override;
  void scrollToSubstring(int start, int end) override;
  QString attributes(int offset, int* start, int* end) const override;

  // Of QAccessibleEditableTextInterface. Each call is a step that can be undone; a read-only text, and
  // characters that the code page lacks, are refused with the beep.
  void deleteText(int start, int end) override;
  void insertText(int offset, const QString& text) override;
  void replaceText(int start, int end, const QString& text) override;

 private:
  CCrystalTextView& View() const;
  TextAnnouncer& Announcer() const;
  /// Null without lines.
  const CCrystalTextBuffer* Buffer() const;
  TextPosition PositionAt(int offset) const;
  TextRange RangeOf(int start, int end) const;
  /// What a selected block of columns takes of its line number `index`.
  TextRange ColumnsOf(int index) const;
  /// The text of a range that may be none, and where it lies.
  QString Told(const std::optional<TextRange>& range, int* start, int* end) const;
};

}  // namespace quill
