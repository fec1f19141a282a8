#include "intel/ui/TemplateKeys.h"

#include <QApplication>
#include <QKeyEvent>

#include "intel/outline/CodeWalk.h"
#include "intel/writing/TemplateInsertion.h"
#include "res/ui/UiText.h"
#include "shell/ui/QuillView.h"
#include "widgets/CodePageText.h"

namespace quill {

TemplateKeys::TemplateKeys(CQuillView& view, Source templates)
    : m_view(view),
      m_input(&view.Input()),
      m_templates(std::move(templates)),
      m_watch(view, {[this](const TextChange* change, uint32_t hints, int32_t) {
                       if (change != nullptr) m_session.OnTextChange(*change);
                       if ((hints & hint::kReset) != 0) m_session.End();
                     },
                     [this] { m_session.End(); }}) {
  connect(&view, &CCrystalTextView::CaretMoved, this, [this] { m_session.OnCaretMoved(m_view.CaretPos()); });
  m_input->Add(InputTurn::kTemplate, *this);
}

TemplateKeys::~TemplateKeys() {
  if (m_input != nullptr) m_input->Remove(*this);
}

bool TemplateKeys::TakeInput(QEvent& event) {
  // Nothing is written while a selection is being drawn with the mouse.
  const bool mouseDown = (QApplication::mouseButtons() & (Qt::LeftButton | Qt::RightButton)) != 0;
  return event.type() == QEvent::KeyPress && !mouseDown && m_view.Model().HasText() &&
         OnKey(static_cast<const QKeyEvent&>(event));
}

void TemplateKeys::Insert(const CodeTemplates& templates, const std::string& name) {
  std::optional<InsertedTemplate> inserted;
  m_view.Edit([&](EditTarget& target) {
    inserted = edit::InsertTemplate(target, templates, name);
    return inserted.has_value();
  });
  if (!inserted) return;
  m_session = std::move(inserted->session);
  if (!inserted->problem.empty()) {
    Q_EMIT m_view.Hint(FromCodePage(inserted->problem) + u'.');
  } else if (m_session.IsActive()) {
    Q_EMIT m_view.Hint(UiText(StringId::kTemplateKeysHint));
  }
}

bool TemplateKeys::OnKey(const QKeyEvent& key) {
  if (key.modifiers() != Qt::NoModifier) return false;
  if (key.key() == Qt::Key_Escape && m_session.IsActive()) {
    m_session.End();
    return true;
  }
  if (key.key() != Qt::Key_Tab || m_view.Model().HasSelection() || m_view.Model().IsColumnSelection()) {
    return false;
  }
  if (!m_session.IsActive()) return ExpandName();
  m_view.SetCaretPos(m_session.Next());
  return true;
}

/// False when no name of a template stands before the caret, or where it would be no code.
bool TemplateKeys::ExpandName() {
  if (!m_view.CanEdit()) return false;
  const TextPosition caret = m_view.CaretPos();
  const std::string_view line = m_view.Buffer()->Line(caret.line);
  const Identifier word = IdentifierAt(line, caret.character);
  if (word.start == word.end || word.end != caret.character) return false;
  const uint32_t state = m_view.Model().States().StateAt(caret.line);
  if (!EndsInCode(line.substr(0, static_cast<size_t>(caret.character)), state)) return false;
  const CodeTemplates& templates = m_templates();
  const std::optional<Identifier> name = templates.NameBefore(line, caret.character);
  if (!name) return false;
  const std::string text(name->In(line));
  m_view.SetSelection({caret.line, name->start}, caret);
  Insert(templates, text);
  return true;
}

}  // namespace quill
