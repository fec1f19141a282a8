#include "text/ui/CrystalEditView.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <memory>

#include "base/CodePage1252.h"
#include "res/Strings.h"
#include "text/edit/AutoIndent.h"
#include "text/edit/ClipboardText.h"
#include "text/edit/DeleteCommands.h"
#include "text/edit/Indentation.h"
#include "text/edit/InsertCommands.h"
#include "text/edit/UndoStep.h"
#include "text/ui/ClipboardData.h"

namespace quill {
namespace {

constexpr int kFirstPrintable = 32;
constexpr int kLargestPrimarySelection = 1 << 20;  ///< characters offered to a middle click elsewhere

}  // namespace

CCrystalEditView::CCrystalEditView(QWidget* parent) : CCrystalTextView(parent) {
  setAttribute(Qt::WA_InputMethodEnabled);
  setAcceptDrops(true);
  connect(this, &CCrystalTextView::BufferReplaced, this, [this] { m_typing.LeaveText(); });
  connect(this, &CCrystalTextView::CaretMoved, this, [this] { m_typing.CaretMoved(m_target); });
  Model().SetGroupCallback(
      [this](int32_t action, std::string_view text) { edit::AfterInsertion(m_target, action, text); });
  connect(this, &CCrystalTextView::OverwriteModeChanged, this,
          [this] { m_target.SetOverwriting(OverwriteMode()); });
}

void CCrystalEditView::ApplySettings(const ViewSettings& settings) {
  CCrystalTextView::ApplySettings(settings);
  m_target.SetSettings({settings.tabSize, settings.keepSpaces, settings.autoIndent, settings.autoBrackets,
                        settings.typeOverClosers});
}

// Operations

bool CCrystalEditView::Refuse() {
  QApplication::beep();
  if (Buffer() != nullptr && Buffer()->IsReadOnly()) {
    Q_EMIT Hint(QString::fromUtf8(Text(StringId::kReadOnlyHint)));
  }
  return false;
}

bool CCrystalEditView::Edit(const Operation& operation) {
  if (!Model().HasText()) return false;
  const bool done = operation(m_target);
  AfterCaretMove(done);
  return done || Refuse();
}

bool CCrystalEditView::EditAlong(const Operation& operation) {
  return Edit([&](EditTarget& target) {
    const bool atLastKey = m_typing.IsAtLastKey(target);
    const bool done = operation(target);
    if (atLastKey) m_typing.GoOn(target);
    return done;
  });
}

bool CCrystalEditView::ReplaceSelectedText(std::string_view text) {
  return Edit([&](EditTarget& target) { return edit::ReplaceSelectedText(target, text); });
}

bool CCrystalEditView::CanEdit() const {
  return Model().HasText() && !Buffer()->IsReadOnly();
}
bool CCrystalEditView::CanUndo() const {
  return Model().HasText() && Buffer()->CanUndo();
}
bool CCrystalEditView::CanRedo() const {
  return Model().HasText() && Buffer()->CanRedo();
}

bool CCrystalEditView::DeleteRight() {
  return Edit([this](EditTarget& target) { return m_typing.TypeDelete(target); });
}

bool CCrystalEditView::Undo() {
  m_typing.Forget();
  return Edit([](EditTarget& target) { return edit::Undo(target); });
}

bool CCrystalEditView::Redo() {
  m_typing.Forget();
  return Edit([](EditTarget& target) { return edit::Redo(target); });
}

void CCrystalEditView::ToggleOverwriteMode() {
  SetOverwriteMode(!OverwriteMode());
}

void CCrystalEditView::ExpectCloser(TextPosition place) {
  if (CanEdit()) m_typing.AddCloser(*Buffer(), place);
}

// Clipboard

void CCrystalEditView::Copy() {
  if (!Model().HasSelection()) return;
  QApplication::clipboard()->setMimeData(
      clipboard_data::Make(edit::CopySelection(m_target), Model().IsColumnSelection()));
}

bool CCrystalEditView::Cut() {
  if (!Model().HasSelection()) return true;
  const bool block = Model().IsColumnSelection();
  std::string text;
  if (!Edit([&](EditTarget& target) { return edit::Cut(target, text); })) return false;
  QApplication::clipboard()->setMimeData(clipboard_data::Make(text, block));
  return true;
}

bool CCrystalEditView::CanPaste() const {
  const QMimeData* data = QApplication::clipboard()->mimeData();
  return CanEdit() && data != nullptr && data->hasText();
}

bool CCrystalEditView::Paste() {
  const QMimeData* data = QApplication::clipboard()->mimeData();
  return data != nullptr && data->hasText() && PasteFrom(*data);
}

bool CCrystalEditView::PasteFrom(const QMimeData& data) {
  int replaced = 0;
  const std::string text = clipboard_data::TextOf(data, replaced);
  const bool done =
      Edit([&](EditTarget& target) { return edit::Paste(target, text, clipboard_data::IsBlock(data)); });
  if (done && replaced > 0) {
    Q_EMIT Hint(QString::fromUtf8(FormatText(StringId::kReplacedCharactersHint, {std::to_string(replaced)})));
  }
  return done;
}

void CCrystalEditView::PublishPrimarySelection() {
  QClipboard* clipboard = QApplication::clipboard();
  if (!clipboard->supportsSelection() || !Model().HasSelection()) return;
  const std::string text = edit::CopySelection(m_target);
  if (text.size() > kLargestPrimarySelection) return;
  clipboard->setMimeData(clipboard_data::Make(text, Model().IsColumnSelection()), QClipboard::Selection);
}

// Keys

bool CCrystalEditView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    // Keys that write are the view's own, whatever shortcut somebody gave them.
    auto* key = static_cast<QKeyEvent*>(event);
    const bool plain = (key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
    if (plain && (!key->text().isEmpty() && key->text().front().unicode() >= kFirstPrintable &&
                  key->key() != Qt::Key_Delete)) {
      event->accept();
      return true;
    }
  }
  if (event->type() == QEvent::KeyPress) {
    // Before the focus chain takes Tab away.
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) {
      keyPressEvent(key);
      return true;
    }
  }
  return CCrystalTextView::event(event);
}

void CCrystalEditView::keyPressEvent(QKeyEvent* event) {
  if (!Model().HasText()) {
    CCrystalTextView::keyPressEvent(event);
    return;
  }
  // Nothing is typed while a selection is being drawn with the mouse.
  const bool mouseDown = (QApplication::mouseButtons() & (Qt::LeftButton | Qt::RightButton)) != 0;
  if (HandleNavigationKey(event)) {
    m_typing.Forget();
    if (event->modifiers().testFlag(Qt::ShiftModifier)) PublishPrimarySelection();
    return;
  }
  if (mouseDown || HandleEditKey(event)) return;
  const bool control = (event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier)) != 0;
  const bool shortcut = control != event->modifiers().testFlag(Qt::AltModifier);  // both: the third key level
  if (event->text().isEmpty() || shortcut || event->text().front().unicode() < kFirstPrintable) {
    CCrystalTextView::keyPressEvent(event);
    return;
  }
  TypeText(event->text());
}

bool CCrystalEditView::HandleEditKey(QKeyEvent* event) {
  const bool control = event->modifiers().testFlag(Qt::ControlModifier);
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  if (event->modifiers().testFlag(Qt::AltModifier)) return false;
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (control) return false;
      Edit([this](EditTarget& target) { return m_typing.TypeEnter(target); });
      return true;
    case Qt::Key_Tab:
      if (control) return false;
      Edit([](EditTarget& target) { return edit::TypeTab(target); });
      return true;
    case Qt::Key_Backtab:
      if (control) return false;
      Edit([](EditTarget& target) { return edit::TypeBackTab(target); });
      return true;
    case Qt::Key_Backspace:
      Edit([this, control](EditTarget& target) {
        return control ? edit::DeleteWordLeft(target) : m_typing.TypeBackspace(target);
      });
      return true;
    case Qt::Key_Delete:
      if (shift) return Cut(), true;
      return control ? Edit(edit::DeleteWordRight) : DeleteRight(), true;
    case Qt::Key_Insert:
      if (control) return Copy(), true;
      if (shift) return Paste(), true;
      ToggleOverwriteMode();
      return true;
    default:
      return false;
  }
}

bool CCrystalEditView::TypeText(const QString& text) {
  bool done = true;
  for (const char32_t c : text.toStdU32String()) {
    const int byte = cp1252::FromUnicode(c);
    if (byte < kFirstPrintable) {
      QApplication::beep();
      const QByteArray name = QString::fromUcs4(&c, 1).toUtf8();
      Q_EMIT Hint(QString::fromUtf8(FormatText(StringId::kUnencodableHint, {name.toStdString()})));
      return false;
    }
    const char character = static_cast<char>(byte);
    done = Edit([&](EditTarget& target) { return m_typing.TypeCharacter(target, character); });
    if (done) Q_EMIT Typed(character);
  }
  return done;
}

void CCrystalEditView::inputMethodEvent(QInputMethodEvent* event) {
  if (!event->commitString().isEmpty() && Model().HasText()) TypeText(event->commitString());
  event->accept();
}

QVariant CCrystalEditView::inputMethodQuery(Qt::InputMethodQuery query) const {
  switch (query) {
    case Qt::ImEnabled:
      return CanEdit();
    case Qt::ImCursorRectangle:
      return CaretRect().translated(viewport()->pos());
    case Qt::ImHints:
      return static_cast<int>(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    default:
      return CCrystalTextView::inputMethodQuery(query);
  }
}

}  // namespace quill
