#include "intel/ui/CompletionControl.h"

#include <QKeyEvent>

#include "base/CodePage1252.h"
#include "intel/ui/ActiveScript.h"
#include "res/ui/UiText.h"
#include "settings/Settings.h"
#include "shell/ui/ActiveView.h"
#include "widgets/CodePageText.h"
#include "widgets/KeyEvents.h"

namespace quill {
namespace {

CompletionKey KeyOf(const QKeyEvent& event) {
  if ((event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier) {
    const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
    switch (event.key()) {
      case Qt::Key_Up:
      case Qt::Key_Down:
      case Qt::Key_PageUp:
      case Qt::Key_PageDown:
        return shift ? CompletionKey::kOther : CompletionKey::kUpOrDown;
      case Qt::Key_Tab:
        return CompletionKey::kTab;
      case Qt::Key_Return:
      case Qt::Key_Enter:
        return shift ? CompletionKey::kOther : CompletionKey::kEnter;
      case Qt::Key_Escape:
        return CompletionKey::kEscape;
      case Qt::Key_Backspace:
        return CompletionKey::kBackspace;
      default:
        break;
    }
  }
  if (event.text().size() != 1) return CompletionKey::kOther;
  const int byte = cp1252::FromUnicode(event.text().front().unicode());
  return byte >= 0 && cp1252::IsWordChar(static_cast<char>(byte)) ? CompletionKey::kWordCharacter
                                                                  : CompletionKey::kOther;
}

CCodeCompletion::Move MoveOf(int key) {
  switch (key) {
    case Qt::Key_Up:
      return CCodeCompletion::Move::kUp;
    case Qt::Key_PageUp:
      return CCodeCompletion::Move::kPageUp;
    case Qt::Key_PageDown:
      return CCodeCompletion::Move::kPageDown;
    default:
      return CCodeCompletion::Move::kDown;
  }
}

}  // namespace

CompletionControl::CompletionControl(const Needs& needs) : m(needs) {
  connect(&m.active, &ActiveView::Changed, this, &CompletionControl::Close);
  connect(&m.active, &ActiveView::LostFocus, this, &CompletionControl::Close);
  connect(&m.active, &ActiveView::BufferReplaced, this, &CompletionControl::Close);
  connect(&m.active, &ActiveView::Typed, this, &CompletionControl::OnTyped);
  connect(&m.active, &ActiveView::CaretMoved, this, &CompletionControl::OnCaretMoved);
  m.active.AddTaker(InputTurn::kList, *this);
  m.window.installEventFilter(this);
}

CompletionControl::~CompletionControl() {
  m.active.RemoveTaker(*this);
  delete m_list;
}

CQuillView* CompletionControl::View() const {
  return m.active.View();
}

// Opening

std::optional<CompletionRequest> CompletionControl::RequestAtCaret(CQuillView& view,
                                                                   const Outline& outline) const {
  const TextPosition caret = view.CaretPos();
  return CompletionAt(view.Buffer()->Line(caret.line), caret.character,
                      view.Model().States().StateAt(caret.line), outline);
}

void CompletionControl::Open() {
  if (View() == nullptr || !View()->CanEdit()) return;
  const std::shared_ptr<const ScriptFacts> facts = m.script.Latest();
  const auto request = RequestAtCaret(*View(), facts->outline);
  if (request && OpenAt(*View(), *request, facts)) return;
  Q_EMIT View()->Hint(request ? UiText(StringId::kNothingToComplete, {FromCodePage(request->begun)})
                              : UiText(StringId::kUnknownObject));
}

void CompletionControl::OnTyped(char character) {
  if (character != '.' || !ReadFlag(m.settings, settings::kDotComplete)) return;
  const TextPosition caret = View()->CaretPos();
  if (!MemberAccessAt(View()->Buffer()->Line(caret.line), caret.character)) return;
  // The object is mostly known already: reading the script anew would cost each dot more.
  std::shared_ptr<const ScriptFacts> facts = m.script.Shown();
  auto request = RequestAtCaret(*View(), facts->outline);
  if (!request) {
    facts = m.script.Latest();
    request = RequestAtCaret(*View(), facts->outline);
  }
  if (request && request->inCode && request->object != nullptr) OpenAt(*View(), *request, facts);
}

std::shared_ptr<const CompletionNames> CompletionControl::NamesFor(const CompletionRequest& request,
                                                                   const CQuillView& view) {
  if (request.object != nullptr) return std::make_shared<const CompletionNames>(*request.object);
  const NameSet* keywords = &view.Keywords();
  if (m_names == nullptr || m_namesFacts != m_facts || m_namesKeywords != keywords) {
    m_names = std::make_shared<const CompletionNames>(m_facts->outline, m.commands, *keywords);
    m_namesFacts = m_facts;
    m_namesKeywords = keywords;
  }
  return m_names;
}

bool CompletionControl::OpenAt(CQuillView& view, const CompletionRequest& request,
                               const std::shared_ptr<const ScriptFacts>& facts) {
  m_facts = facts;
  CompletionList list(NamesFor(request, view), request.begun);
  if (list.Count() == 0) {
    Close();
    return false;
  }
  if (m_list == nullptr) {
    m_list = new CCodeCompletion(&m.window);
    connect(m_list, &CCodeCompletion::EntryChanged, this, &CompletionControl::EntryChanged);
    connect(m_list, &CCodeCompletion::Clicked, this, [this] {
      m_keys.Chose();
      m_list->SetChosen(true);
    });
    connect(m_list, &CCodeCompletion::DoubleClicked, this, &CompletionControl::Take);
  }
  m_keys = CompletionKeys();
  m_object = request.object;
  m_wordStart = {view.CaretPos().line, request.start};
  m_list->Open(
      std::move(list),
      [this](const CompletionList& names, size_t row) {
        return DetailOf(names, row, m_object, m.commands, m_facts->outline);
      },
      view.Font(), WordOnScreen(view));
  return true;
}

QRect CompletionControl::WordOnScreen(const CQuillView& view) const {
  return {view.viewport()->mapToGlobal(view.PointOf(m_wordStart)), QSize(0, view.LineHeight())};
}

bool CompletionControl::IsOpen() const {
  return m_list != nullptr && m_list->isVisible();
}

void CompletionControl::Close() {
  if (IsOpen()) m_list->hide();
}

std::optional<std::string> CompletionControl::SelectedEntry() const {
  return IsOpen() ? m_list->SelectedEntry() : std::nullopt;
}

QRect CompletionControl::Place() const {
  return IsOpen() ? m_list->geometry() : QRect();
}

bool CompletionControl::IsBelowCaret() const {
  return IsOpen() && View() != nullptr && Place().y() >= WordOnScreen(*View()).bottom();
}

// While it is open

void CompletionControl::OnCaretMoved() {
  if (!IsOpen()) return;
  const TextPosition caret = View()->CaretPos();
  const auto request = RequestAtCaret(*View(), m_facts->outline);
  if (!request || caret.line != m_wordStart.line || request->start != m_wordStart.character ||
      View()->Model().HasSelection()) {
    Close();
    return;
  }
  m_list->Narrow(request->begun);
  const std::optional<std::string> entry = m_list->OnlyEntry();
  if (entry && cp1252::EqualNoCase(*entry, request->begun)) {
    Close();  // it is written already
  } else if (IsOpen()) {
    m_list->MoveTo(WordOnScreen(*View()));
  }
}

bool CompletionControl::OnKey(const QKeyEvent& event) {
  if (!IsOpen() || IsModifierKey(event.key())) return false;
  switch (m_keys.On(KeyOf(event))) {
    case CompletionStep::kMove:
      m_list->SetChosen(true);
      m_list->MoveSelection(MoveOf(event.key()));
      return true;
    case CompletionStep::kTake:
      Take();
      return true;
    case CompletionStep::kClose:
      Close();
      return true;
    case CompletionStep::kTypeAndNarrow:
      return false;
    case CompletionStep::kTypeAndClose:
      Close();
      return false;
  }
  return false;
}

void CompletionControl::Take() {
  const std::optional<std::string> entry = SelectedEntry();
  Close();
  if (!entry || View() == nullptr) return;
  const auto request = RequestAtCaret(*View(), m_facts->outline);
  if (!request) return;
  const int32_t line = View()->CaretPos().line;
  View()->SetSelection({line, request->start}, {line, request->end});
  View()->ReplaceSelectedText(*entry);
}

bool CompletionControl::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Move || event->type() == QEvent::Resize) Close();
  return QObject::eventFilter(watched, event);
}

bool CompletionControl::TakeInput(QEvent& event) {
  switch (event.type()) {
    case QEvent::ShortcutOverride: {
      // The list's keys are no shortcuts while it is open.
      const CompletionKey meaning = KeyOf(static_cast<QKeyEvent&>(event));
      if (!IsOpen() || meaning == CompletionKey::kOther) return false;
      event.accept();
      return true;
    }
    case QEvent::KeyPress:
      return OnKey(static_cast<QKeyEvent&>(event));
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
      Close();
      return false;
    default:
      return false;
  }
}

}  // namespace quill
