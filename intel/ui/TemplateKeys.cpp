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
                       ShowFields();
                     },
                     [this] {
                       m_session.End();
                       ShowFields();
                     }}) {
  connect(&view, &CCrystalTextView::CaretMoved, this, &TemplateKeys::OnCaretMoved);
  m_input->Add(InputTurn::kTemplate, *this);
}

TemplateKeys::~TemplateKeys() {
  if (m_input != nullptr) m_input->Remove(*this);
  if (m_viewLives && m_fieldsShown) m_view.SetFields(nullptr);
}

bool TemplateKeys::TakeInput(QEvent& event) {
  // Nothing is written while a selection is being drawn with the mouse.
  const bool mouseDown = (QApplication::mouseButtons() & (Qt::LeftButton | Qt::RightButton)) != 0;
  return event.type() == QEvent::KeyPress && !mouseDown && m_view.Model().HasText() &&
         OnKey(static_cast<const QKeyEvent&>(event));
}

void TemplateKeys::Insert(const CodeTemplates& templates, const std::string& name) {
  std::optional<InsertedTemplate> inserted;
  m_filling = true;  // the fields of the template before are not to follow
  m_view.Edit([&](EditTarget& target) {
    inserted = edit::InsertTemplate(target, templates, name);
    return inserted.has_value();
  });
  m_filling = false;
  if (!inserted) return;
  m_session = std::move(inserted->session);
  ExpectClosers();
  ShowFields();
  // The whole of it; when it is too long, as much as goes with the place to begin at.
  m_view.EnsureVisible(m_session.Range().end);
  m_view.EnsureVisible(m_session.Range().start);
  m_view.EnsureVisible(m_view.CaretPos());
  if (!inserted->problem.empty()) {
    Q_EMIT m_view.Hint(FromCodePage(inserted->problem) + u'.');
  } else if (m_session.IsActive()) {
    Q_EMIT m_view.Hint(UiText(StringId::kTemplateKeysHint));
  }
}

void TemplateKeys::ExpectClosers() {
  for (const TemplateSession::Place& place : m_session.Places()) {
    const TextPosition end = place.range.end;
    const std::string_view behind =
        m_view.Buffer()->Line(end.line).substr(static_cast<size_t>(end.character));
    if (!behind.empty() && std::string_view(")]}").find(behind.front()) != std::string_view::npos) {
      m_view.ExpectCloser(end);
    }
  }
}

bool TemplateKeys::OnKey(const QKeyEvent& key) {
  if (key.modifiers() != Qt::NoModifier) return false;
  if (key.key() == Qt::Key_Escape && m_session.IsActive()) {
    m_session.End();
    ShowFields();
    return true;
  }
  if (key.key() != Qt::Key_Tab || m_view.Model().HasSelection() || m_view.Model().IsColumnSelection()) {
    return false;
  }
  if (!m_session.IsActive()) return ExpandName();
  m_view.SetCaretPos(m_session.Next());
  ShowFields();
  return true;
}

void TemplateKeys::OnCaretMoved() {
  if (m_filling) return;
  m_session.OnCaretMoved(m_view.CaretPos());
  ShowFields();
  // An undo has restored the other places, too; an edit would take the redo away.
  if (!m_session.IsActive() || !m_view.hasFocus() || m_view.CanRedo()) return;
  const std::optional<size_t> place = m_session.PlaceAt(m_view.CaretPos());
  if (!place || !m_session.HasUnequal(*m_view.Buffer(), *place)) return;
  m_filling = true;
  m_view.EditAlong(
      [this, place](EditTarget& target) { return edit::FillEqualPlaces(target, m_session, *place); });
  m_filling = false;
}

void TemplateKeys::ShowFields() {
  if (m_session.IsActive() == m_fieldsShown || !m_viewLives) return;
  m_fieldsShown = m_session.IsActive();
  m_view.SetFields(m_fieldsShown ? this : nullptr);
}

void TemplateKeys::MarksOf(int32_t line, ColumnRange, std::vector<ColumnRange>& marks) const {
  for (const TemplateSession::Place& place : m_session.Places()) {
    if (place.isLast || place.range.start.line != line || place.range.end.line != line) continue;
    marks.push_back({place.range.start.character, place.range.end.character});
  }
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
