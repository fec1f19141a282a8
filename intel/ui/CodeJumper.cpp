#include "intel/ui/CodeJumper.h"

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>

#include "base/InputFile.h"
#include "intel/ui/ActiveScript.h"
#include "intel/ui/CodeJumperTree.h"
#include "intel/ui/OutlineList.h"
#include "settings/Settings.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/DockBars.h"
#include "shell/ui/ViewHandlers.h"
#include "shell/ui/ViewSettingsControl.h"

namespace quill {
namespace {

constexpr int kSaveLayoutDelay = 300;  ///< milliseconds

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
  KeepLayout();
}

void CodeJumper::RegisterCommands(CommandRouter& router) {
  const ViewHandlers views(router, m.active);
  views.Add(CommandId::kIntelRefreshCodeJumper, [this](CQuillView&) { m.script.Refresh(); });
  views.Add(CommandId::kIntelGoToDefinition, [this](CQuillView&) { GoToDefinition(); });
  router.Register(CommandId::kIntelFindName, [this] { FindName(); });
  router.Register(
      CommandId::kIntelGoBack, [this] { m_jumps.GoBack(); },
      [this] { return CommandState::EnabledIf(m_jumps.CanGoBack(), StringId::kNowhereToGoBack); });
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
  if (const auto layout = ReadBinary(m.profile, profile::kCodeJumperPanes)) {
    m_pane->RestoreLayout(QByteArray::fromStdString(*layout));
  }
  m_saveLayout.setSingleShot(true);
  m_saveLayout.setInterval(kSaveLayoutDelay);
  // Dragging a border changes it with every pixel.
  connect(m_pane, &CodeJumperPane::LayoutChanged, &m_saveLayout, qOverload<>(&QTimer::start));
  connect(&m_saveLayout, &QTimer::timeout, this,
          [this] { WriteBinary(m.profile, profile::kCodeJumperPanes, m_pane->SaveLayout().toStdString()); });
}

RowOrder CodeJumper::Order() const {
  return m.viewSettings.IsOn(settings::kSortCodeJumper) ? RowOrder::kAlphabetical : RowOrder::kOfText;
}

void CodeJumper::MarkFunction() {
  const CQuillView* view = m.active.ViewWithText();
  if (view == nullptr) return;
  m_pane->Tree().Mark(m.script.Shown()->functions.Around(*view->Buffer(), view->CaretPos().line));
}

void CodeJumper::Show() {
  const CChildFrame* frame = m.active.Frame();
  const bool isSameScript = frame == m_shownFrame;
  m_shownFrame = frame;
  m_pane->Show(m.script.Shown(), Order(), isSameScript);
  MarkFunction();
}

// Jumps

void CodeJumper::OnFileChosen(const NamedFile& file, bool open) {
  const std::shared_ptr<const ScriptFacts> facts = m.script.Latest();
  const CQuillView* view = m.active.View();
  if (view == nullptr) return;
  std::string found;
  const auto isThere = [&found](const std::string& path) {
    if (PathExists(path)) found = path;
    return !found.empty();
  };
  const std::string& path = view->FilePath();
  if (open && IsScriptName(file.name) &&
      VisitPlacesOfFile(file.name, path, path, facts->outline.paths, isThere)) {
    m_jumps.GoToFile(found);
  } else {
    m_jumps.Go(0, PlaceNow(file, facts->outline), *facts);
  }
}

bool CodeJumper::GoToDefinition() {
  const CQuillView* view = m.active.ViewWithText();
  if (view == nullptr) return false;
  const TextPosition caret = view->CaretPos();
  const std::string_view line = view->Buffer()->Line(caret.line);
  const Identifier name = IdentifierAt(line, caret.character);
  const std::shared_ptr<const ScriptFacts> facts = m.script.Latest();
  const EnclosingFunction::Entry* function = facts->functions.Around(*view->Buffer(), caret.line);
  const Definitions definitions(facts->outline);
  const DefinitionPlace* place =
      definitions.Find(name.In(line), caret.line, function == nullptr ? -1 : function->at.line);
  if (place == nullptr) {
    QApplication::beep();
    return false;
  }
  m_jumps.Go(place->file, place->at, *facts);
  return true;
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
