#include "intel/ui/CompletionControl.h"

#include <QKeyEvent>

#include "base/CodePage1252.h"
#include "intel/ui/ActiveScript.h"
#include "intel/ui/Templates.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/writing/CallInsertion.h"
#include "intel/writing/DefinitionBody.h"
#include "res/ui/UiText.h"
#include "settings/Settings.h"
#include "shell/ui/ActiveView.h"
#include "widgets/CodePageText.h"
#include "widgets/KeyEvents.h"

namespace quill {
namespace {

/// Of a script with more names the list opens on command only: to put them in order would be felt.
constexpr size_t kMostElementsUnasked = 20000;

constexpr TextPosition kNoWord{-1, 0};

/// Whether taking an entry writes more than its name.
bool WritesMore(const CompletionEntry& entry, const CommandDatabase& commands) {
  if (entry.kind == CompletionKind::kTemplate) return true;
  return entry.command >= 0 &&
         FormOfCall(commands.GetCommandParameters(entry.command)) != CallForm::kNameOnly;
}

CompletionKey KeyOf(const QKeyEvent& event) {
  if ((event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier) {
    const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
    switch (event.key()) {
      case Qt::Key_Down:
        return shift ? CompletionKey::kOther : CompletionKey::kDown;
      case Qt::Key_Up:
      case Qt::Key_PageUp:
      case Qt::Key_PageDown:
        return shift ? CompletionKey::kOther : CompletionKey::kUpOrPage;
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
  if (request && OpenAt(*View(), *request, facts, Cause::kAsked)) return;
  Q_EMIT View()->Hint(request ? UiText(StringId::kNothingToComplete, {FromCodePage(request->begun)})
                              : UiText(StringId::kUnknownObject));
}

void CompletionControl::OnTyped(char character) {
  if (character == '.') {
    OpenBehindDot();
  } else if (cp1252::IsWordChar(character) && !IsOpen()) {
    OpenInWord();
  }
}

void CompletionControl::OpenBehindDot() {
  if (!ReadFlag(m.settings, settings::kDotComplete)) return;
  const TextPosition caret = View()->CaretPos();
  if (!MemberAccessAt(View()->Buffer()->Line(caret.line), caret.character)) return;
  // The object is mostly known already: reading the script anew would cost each dot more.
  std::shared_ptr<const ScriptFacts> facts = m.script.Shown();
  auto request = RequestAtCaret(*View(), facts->outline);
  if (!request) {
    facts = m.script.Latest();
    request = RequestAtCaret(*View(), facts->outline);
  }
  if (request && request->inCode && request->object != nullptr) {
    OpenAt(*View(), *request, facts, Cause::kDot);
  }
}

void CompletionControl::OpenInWord() {
  const std::shared_ptr<const ScriptFacts> facts = m.script.Shown();
  if (facts->outline.Orders().elements.size() > kMostElementsUnasked || View()->Model().IsColumnSelection())
    return;
  const TextPosition caret = View()->CaretPos();
  const auto request = RequestAtCaret(*View(), facts->outline);
  if (!request || !OpensByItself(View()->Buffer()->Line(caret.line), *request)) return;
  if (m_sentAway == TextPosition{caret.line, request->start}) return;
  if (ReadFlag(m.settings, settings::kCompleteWhileTyping)) OpenAt(*View(), *request, facts, Cause::kLetters);
}

std::shared_ptr<const CompletionNames> CompletionControl::AllNames(const CQuillView& view, Cause cause) {
  const NameSet* keywords = &view.Keywords();
  const CodeTemplates& templates = cause == Cause::kAsked ? m.templates.Latest() : m.templates.Known();
  if (m_names == nullptr || m_namesFacts != m_facts || m_namesKeywords != keywords ||
      m_namesTemplates != templates.Names()) {
    m_namesFacts = m_facts;
    m_namesKeywords = keywords;
    m_namesTemplates = templates.Names();
    m_names =
        std::make_shared<const CompletionNames>(m_facts->outline, m.commands, *keywords, m_namesTemplates);
  }
  return m_names;
}

bool CompletionControl::OpenAt(CQuillView& view, const CompletionRequest& request,
                               const std::shared_ptr<const ScriptFacts>& facts, Cause cause) {
  m_facts = facts;
  m_wordStart = {view.CaretPos().line, request.start};
  const ObjectKind* object = request.object;
  if (object == nullptr) {
    object = DefinitionBodyAt(*view.Buffer(), m_wordStart,
                              [&view](int32_t line) { return view.Model().States().StateAt(line); });
  }
  std::optional<CompletionList> list;
  if (object != nullptr) {
    list.emplace(std::make_shared<const CompletionNames>(*object), request.begun);
  }
  // Where a member of a definition may begin, something else may, too.
  const auto fits = [cause](const CompletionList& names) {
    return cause == Cause::kLetters ? names.HasBeginnings() : names.Count() > 0;
  };
  if (request.object == nullptr && (!list || !fits(*list))) {
    object = nullptr;
    list.emplace(AllNames(view, cause), request.begun);
  }
  const bool isWritten = list->Count() == 1 && cp1252::EqualNoCase(list->Name(0), request.begun);
  if (!fits(*list) || (isWritten && cause == Cause::kLetters)) {
    Close();
    return false;
  }
  Show(view, std::move(*list), object, cause);
  return true;
}

void CompletionControl::Show(CQuillView& view, CompletionList list, const ObjectKind* object, Cause cause) {
  if (m_list == nullptr) {
    m_list = new CCodeCompletion(&m.window);
    connect(m_list, &CCodeCompletion::EntryChanged, this, &CompletionControl::EntryChanged);
    connect(m_list, &CCodeCompletion::Clicked, this, [this] {
      m_keys.Chose();
      m_list->SetChosen(true);
    });
    connect(m_list, &CCodeCompletion::DoubleClicked, this, &CompletionControl::Take);
  }
  m_keys = CompletionKeys(cause == Cause::kAsked);
  m_cause = cause;
  m_object = object;
  m_list->Open(
      std::move(list),
      [this](const CompletionList& names, size_t row) {
        return DetailOf(names, row, m_object, m.commands, m_facts->outline, m.templates.Known());
      },
      view.Font(), WordOnScreen(view));
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
  const std::optional<CompletionEntry> entry = IsOpen() ? m_list->Selected() : std::nullopt;
  return entry ? std::optional(entry->name) : std::nullopt;
}

QRect CompletionControl::Place() const {
  return IsOpen() ? m_list->geometry() : QRect();
}

bool CompletionControl::IsBelowCaret() const {
  return IsOpen() && View() != nullptr && Place().y() >= WordOnScreen(*View()).bottom();
}

// While it is open

void CompletionControl::OnCaretMoved() {
  const TextPosition caret = View()->CaretPos();
  if (caret.line != m_sentAway.line || caret.character <= m_sentAway.character) m_sentAway = kNoWord;
  if (!IsOpen()) return;
  const auto request = RequestAtCaret(*View(), m_facts->outline);
  if (!request || caret.line != m_wordStart.line || request->start != m_wordStart.character ||
      View()->Model().HasSelection()) {
    Close();
    return;
  }
  m_list->Narrow(request->begun);
  const std::optional<CompletionEntry> entry = m_list->OnlyEntry();
  const bool addsNothing = entry && (m_cause != Cause::kAsked || !WritesMore(*entry, m.commands));
  const bool isWritten = addsNothing && cp1252::EqualNoCase(entry->name, request->begun);
  if (isWritten || (m_cause == Cause::kLetters && !m_list->HasBeginnings())) {
    Close();
  } else if (IsOpen()) {
    m_list->MoveTo(WordOnScreen(*View()));
  }
}

bool CompletionControl::IsIdle(CompletionKey key) {
  if (key == CompletionKey::kTab && m.templates.IsBeingFilled(*View())) return true;
  const std::optional<CompletionEntry> entry = m_list->Selected();
  const TextPosition caret = View()->CaretPos();
  return entry && !WritesMore(*entry, m.commands) &&
         IdentifierAt(View()->Buffer()->Line(caret.line), caret.character)
                 .In(View()->Buffer()->Line(caret.line)) == entry->name;
}

bool CompletionControl::OnKey(const QKeyEvent& event) {
  if (!IsOpen() || IsModifierKey(event.key())) return false;
  const CompletionKey key = KeyOf(event);
  switch (m_keys.On(key, IsIdle(key))) {
    case CompletionStep::kConfirm:
      m_list->SetChosen(true);
      return true;
    case CompletionStep::kMove:
      m_list->MoveSelection(MoveOf(event.key()));
      m_list->SetChosen(true);
      return true;
    case CompletionStep::kTake:
      Take();
      return true;
    case CompletionStep::kClose:
      if (View()->CaretPos() != m_wordStart) m_sentAway = m_wordStart;
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
  const std::optional<CompletionEntry> entry = IsOpen() ? m_list->Selected() : std::nullopt;
  Close();
  if (!entry || View() == nullptr) return;
  const auto request = RequestAtCaret(*View(), m_facts->outline);
  if (!request) return;
  const int32_t line = View()->CaretPos().line;
  const TextRange word{{line, request->start}, {line, request->end}};
  if (entry->kind == CompletionKind::kTemplate) {
    View()->SetSelection(word.start, word.end);
    m.templates.Insert(*View(), entry->name);
  } else if (WritesMore(*entry, m.commands)) {
    const CallForm form = FormOfCall(m.commands.GetCommandParameters(entry->command));
    auto written = edit::CallWritten::kRefused;
    View()->Edit([&](EditTarget& target) {
      written = edit::WriteCall(target, word, entry->name, form);
      return written != edit::CallWritten::kRefused;
    });
    if (written == edit::CallWritten::kDoneAndClosed) View()->ExpectCloser(View()->CaretPos());
    Q_EMIT CommandWritten();
  } else {
    View()->SetSelection(word.start, word.end);
    View()->ReplaceSelectedText(entry->name);
  }
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
