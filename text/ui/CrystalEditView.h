#pragma once
#include <QString>
#include <functional>
#include <string_view>

#include "text/edit/ModelEditTarget.h"
#include "text/edit/TypingSession.h"
#include "text/ui/CrystalTextView.h"

class QMimeData;

namespace quill {

/// The text view with a keyboard that writes: typing, clipboard, drag and drop. What an edit does to the
/// text is decided by the editing operations; this class asks them and shows the outcome.
class CCrystalEditView : public CCrystalTextView {
  Q_OBJECT

 public:
  explicit CCrystalEditView(QWidget* parent = nullptr);

  void ApplySettings(const ViewSettings& settings) override;

  using Operation = std::function<bool(EditTarget&)>;
  /// Carries out an operation and shows its outcome. A refusal (read-only text) beeps and says why;
  /// returns false then.
  bool Edit(const Operation& operation);
  /// The same for what follows from the last key: the next key still joins the step.
  bool EditAlong(const Operation& operation);
  /// Replaces the selection, or inserts at the caret, which goes behind the text.
  bool ReplaceSelectedText(std::string_view text);

  /// The Delete key.
  bool DeleteRight();
  bool Undo();
  bool Redo();
  bool CanEdit() const;
  bool CanUndo() const;
  bool CanRedo() const;
  void Copy();
  bool Cut();
  bool Paste();
  bool CanPaste() const;
  void ToggleOverwriteMode();
  /// The closing bracket at that place came by itself: typing it goes past it.
  void ExpectCloser(TextPosition place);

 Q_SIGNALS:
  /// The user has written this character, and caret and text are where it left them.
  void Typed(char character);
  /// Something was refused; a sentence for the status bar.
  void Hint(const QString& text);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void EndMouse() override;
  bool BeginsDrag(QMouseEvent* event) override;

 private:
  /// A key that edits; true when it was one.
  bool HandleEditKey(QKeyEvent* event);
  bool TypeText(const QString& text);
  void StartDrag();
  bool IsOnSelection(QPoint point) const;
  /// Inserts what is dropped; false when the text refused it.
  bool Drop(const QDropEvent& event, TextPosition place);
  void EndDropPlace();
  bool PasteFrom(const QMimeData& data);
  void PublishPrimarySelection();
  bool Refuse();

  ModelEditTarget m_target{Model()};
  TypingSession m_typing;
  QPoint m_dragStart;
  bool m_dragPending = false;
  bool m_droppedInText = false;  ///< what this view drags was dropped in a window of the same text
  QPoint m_dropPoint;            ///< where something is held over the view
  QBasicTimer m_dropScroll;
};

}  // namespace quill
