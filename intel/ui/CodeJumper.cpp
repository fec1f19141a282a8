#include "intel/ui/CodeJumper.h"

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>

#include "base/InputFile.h"
#include "intel/ui/ActiveScript.h"
#include "intel/ui/CodeJumperTree.h"
#include "intel/ui/OutlineList.h"
#include "res/ui/UiText.h"
#include "settings/SealedValue.h"
#include "settings/Settings.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/DockBars.h"
#include "shell/ui/ViewHandlers.h"
#include "shell/ui/ViewSettingsControl.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

constexpr int kSaveLayoutDelay = 300;  ///< milliseconds

void TellNothing(CQuillView& view, const QString& sentence) {
  QApplication::beep();
  Q_EMIT view.Hint(sentence);
}

}  // namespace

CodeJumper::CodeJumper(const Needs& needs) : m(needs), m_jumps(m.active, m.workspace, m.files) {
  connect(&m.script, &ActiveScript::Refreshed, this, &CodeJumper::Show);
  connect(&m.active, &ActiveView::CaretMoved, this, &CodeJumper::MarkFunction);
  m.active.AddTaker(InputTurn::kLink, *this);
}

CodeJumper::~CodeJumper() {
  m.active.RemoveTaker(*this);
}

void CodeJumper::AddBars(DockBars& bars) {
  m_bar = &bars.AddBar(CommandId::kViewCodeJumper, StringId::kBarCodeJumper, StringId::kEmptyCodeJumper,
                       Qt::LeftDockWidgetArea);
  m_pane = new CodeJumperPane(m_bar);
  m_bar->SetContents(m_pane);
  connect(&m.viewSettings, &ViewSettingsControl::Applied, this, [this] { m_pane->SetOrder(Order()); });
  connect(m_pane, &CodeJumperPane::Jump, this, [this](const OutlineItem& item, OutlineRoot root) {
    m_jumps.Go(item.file, PlaceNow(item, root, m.script.Latest()->outline), *m.script.Shown());
  });
  connect(m_pane, &CodeJumperPane::RefreshRequested, &m.script, &ActiveScript::Refresh);
  connect(m_pane, &CodeJumperPane::FileChosen, this, &CodeJumper::OnFileChosen);
  connect(m_pane, &CodeJumperPane::BackToText, this, &CodeJumper::BackToText);
  connect(m_pane, &CodeJumperPane::RowsShown, this, &CodeJumper::MarkFunction);
  connect(&m.script, &ActiveScript::ReadingChanged, m_pane,
          [this] { m_pane->SetReading(m.script.IsReading()); });
  KeepLayout();
}

void CodeJumper::RegisterCommands(CommandRouter& router) {
  const ViewHandlers views(router, m.active);
  views.Add(CommandId::kIntelRefreshCodeJumper, [this](CQuillView&) { m.script.Refresh(); });
  views.Add(CommandId::kIntelGoToDefinition, [this](CQuillView&) { GoToDefinition(); });
  router.Register(CommandId::kIntelFindName, [this] { FindName(); });
  router.Register(
      CommandId::kIntelGoBack, [this] { m_jumps.GoBack(); },
      [this] {
        // With a view the key is heard, and the status bar says that there is nothing.
        return CommandState::EnabledIf(m.active.View() != nullptr || m_jumps.CanGoBack(),
                                       StringId::kNowhereToGoBack);
      });
}

void CodeJumper::FindName() {
  m_bar->show();
  m_bar->raise();
  m_bar->activateWindow();  // it may float
  m_pane->Filter().setFocus();
  m_pane->Filter().selectAll();
}

void CodeJumper::BackToText() {
  CQuillView* view = m.active.View();
  if (view == nullptr) return;
  view->activateWindow();  // the bar may float
  view->setFocus();
}

void CodeJumper::KeepLayout() {
  const std::string stored = ReadBinary(m.profile, profile::kCodeJumperPanes).value_or(std::string());
  if (const auto layout = sealed_value::Open(stored)) {
    m_pane->RestoreLayout(QByteArray::fromStdString(*layout));
  }
  m_saveLayout.setSingleShot(true);
  m_saveLayout.setInterval(kSaveLayoutDelay);
  // Dragging a border changes it with every pixel.
  connect(m_pane, &CodeJumperPane::LayoutChanged, &m_saveLayout, qOverload<>(&QTimer::start));
  connect(&m_saveLayout, &QTimer::timeout, this, [this] {
    WriteBinary(m.profile, profile::kCodeJumperPanes, sealed_value::Seal(m_pane->SaveLayout().toStdString()));
  });
}

RowOrder CodeJumper::Order() const {
  return m.viewSettings.IsOn(settings::kSortCodeJumper) ? RowOrder::kAlphabetical : RowOrder::kOfText;
}

void CodeJumper::MarkFunction() {
  const CQuillView* view = m.active.ViewWithText();
  // A large script's rows come later than what is known of it.
  if (view == nullptr || m_pane->Tree().Facts() != m.script.Shown()) return;
  m_pane->Tree().Mark(m.script.Shown()->functions.Around(*view->Buffer(), view->CaretPos().line));
}

void CodeJumper::Show() {
  const CChildFrame* frame = m.active.Frame();
  const bool isSameScript = frame == m_shownFrame;
  m_shownFrame = frame;
  m_pane->Show(m.script.Shown(), Order(), isSameScript);
}

// Jumps

std::string CodeJumper::FindFile(const NamedFile& file, const Outline& outline) const {
  std::string found;
  const std::string& path = m.active.View()->FilePath();
  VisitPlacesOfFile(file.name, path, path, outline.Paths(), [&found](const std::string& place) {
    if (PathExists(place)) found = place;
    return !found.empty();
  });
  return found;
}

void CodeJumper::OnFileChosen(const NamedFile& file, bool open) {
  const std::shared_ptr<const ScriptFacts> facts = m.script.Latest();
  if (m.active.View() == nullptr) return;
  const std::string found = open && IsScriptName(file.name) ? FindFile(file, facts->outline) : std::string();
  if (found.empty()) {
    m_jumps.Go(0, PlaceNow(file, facts->outline), *facts);
  } else {
    m_jumps.GoToFile(found);
  }
}

void CodeJumper::GoToIncluded(const NamedFile& file, const Outline& outline) {
  const std::string found = FindFile(file, outline);
  if (!found.empty()) {
    m_jumps.GoToFile(found);
  } else {
    TellNothing(*m.active.View(), UiText(StringId::kIncludeNotFound, {FromCodePage(file.name)}));
  }
}

void CodeJumper::GoToDefinition() {
  CQuillView* view = m.active.ViewWithText();
  if (view == nullptr) return;
  const TextPosition caret = view->CaretPos();
  const std::shared_ptr<const ScriptFacts> facts = m.script.LatestWithIncluded();
  for (const NamedFile& include : facts->outline.Includes()) {
    if (include.at.line == caret.line) return GoToIncluded(include, facts->outline);
  }
  const std::string_view line = view->Buffer()->Line(caret.line);
  const std::string_view name = IdentifierAt(line, caret.character).In(line);
  if (name.empty()) return TellNothing(*view, UiText(StringId::kNoNameHere));
  const auto function = facts->functions.Around(*view->Buffer(), caret.line);
  const auto place = Definitions(facts->outline).Find(name, caret.line, function ? function->at.line : -1);
  if (!place) {
    const StringId why = facts->isWhole ? StringId::kNotDefined : StringId::kNotYetDefined;
    return TellNothing(*view, UiText(why, {FromCodePage(name)}));
  }
  m_jumps.Go(place->file, place->at, *facts);
}

bool CodeJumper::TakeInput(QEvent& event) {
  if (event.type() != QEvent::MouseButtonPress) return false;
  const auto& mouse = static_cast<const QMouseEvent&>(event);
  CQuillView* view = m.active.ViewWithText();
  if (view == nullptr || mouse.button() != Qt::LeftButton || mouse.modifiers() != Qt::ControlModifier ||
      view->Model().HasSelection()) {
    return false;
  }
  view->SetCaretPos(view->PositionAt(mouse.position().toPoint()));
  GoToDefinition();
  return true;
}

}  // namespace quill
