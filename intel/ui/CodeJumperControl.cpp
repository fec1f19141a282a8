#include "intel/ui/CodeJumperControl.h"

#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QMouseEvent>

#include "base/InputFile.h"
#include "intel/ui/ActiveScript.h"
#include "intel/ui/CodeJumperTree.h"
#include "intel/ui/OutlineList.h"
#include "settings/Settings.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/DockBars.h"
#include "shell/ui/ViewHandlers.h"
#include "shell/ui/ViewSettingsControl.h"

namespace quill {
namespace {

constexpr int kSaveLayoutDelay = 300;  ///< milliseconds

}  // namespace

CodeJumperControl::CodeJumperControl(const ShellParts& parts, CodeJumperPane& pane, QObject* parent)
    : QObject(parent), m_parts(parts), m_pane(pane), m_jumps(parts, this) {
  connect(&parts.script, &ActiveScript::Refreshed, this, &CodeJumperControl::Show);
  connect(&parts.workspace, &Workspace::ActiveFrameChanged, this, &CodeJumperControl::Follow);
  connect(&parts.viewSettings, &ViewSettingsControl::Applied, this, [this] { m_pane.SetOrder(Order()); });
  connect(&pane, &CodeJumperPane::Jump, this, [this](const OutlineItem& item, OutlineRoot root) {
    m_jumps.Go(item.file, PlaceNow(item, root, m_parts.script.Latest()->outline), *m_parts.script.Shown());
  });
  connect(&pane, &CodeJumperPane::RefreshRequested, &parts.script, &ActiveScript::Refresh);
  connect(&pane, &CodeJumperPane::FileChosen, this, &CodeJumperControl::OnFileChosen);
  connect(&pane, &CodeJumperPane::BackToText, this, [this] {
    CQuillView* view = m_parts.workspace.ActiveView();
    if (view == nullptr) return;
    view->activateWindow();  // the bar may float
    view->setFocus();
  });
  KeepLayout();
}

void CodeJumperControl::KeepLayout() {
  AppProfile profile = m_parts.services.Profile();
  if (const auto layout = ReadBinary(profile, profile::kCodeJumperPanes)) {
    m_pane.RestoreLayout(QByteArray::fromStdString(*layout));
  }
  m_saveLayout.setSingleShot(true);
  m_saveLayout.setInterval(kSaveLayoutDelay);
  // Dragging a border changes it with every pixel.
  connect(&m_pane, &CodeJumperPane::LayoutChanged, &m_saveLayout, qOverload<>(&QTimer::start));
  connect(&m_saveLayout, &QTimer::timeout, this, [this, profile]() mutable {
    WriteBinary(profile, profile::kCodeJumperPanes, m_pane.SaveLayout().toStdString());
  });
}

RowOrder CodeJumperControl::Order() const {
  return ReadFlag(m_parts.services.settings, settings::kSortCodeJumper) ? RowOrder::kAlphabetical
                                                                        : RowOrder::kOfText;
}

void CodeJumperControl::Follow(CChildFrame* frame) {
  disconnect(m_caretMoved);
  if (frame == nullptr) return;
  CQuillView& view = frame->View();
  view.viewport()->removeEventFilter(this);
  view.viewport()->installEventFilter(this);
  m_caretMoved = connect(&view, &CCrystalTextView::CaretMoved, this, &CodeJumperControl::MarkFunction);
}

void CodeJumperControl::MarkFunction() {
  const CQuillView* view = m_parts.workspace.ActiveView();
  if (view == nullptr || !view->Model().HasText()) return;
  m_pane.Tree().Mark(m_parts.script.Shown()->functions.Around(*view->Buffer(), view->CaretPos().line));
}

void CodeJumperControl::Show() {
  const CChildFrame* frame = m_parts.workspace.ActiveFrame();
  const bool isSameScript = frame == m_shownFrame;
  m_shownFrame = frame;
  m_pane.Show(m_parts.script.Shown(), Order(), isSameScript);
  MarkFunction();
}

// Jumps

void CodeJumperControl::OnFileChosen(const NamedFile& file, bool open) {
  const std::shared_ptr<const ScriptFacts> facts = m_parts.script.Latest();
  const CQuillView* view = m_parts.workspace.ActiveView();
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

bool CodeJumperControl::GoToDefinition() {
  CQuillView* view = m_parts.workspace.ActiveView();
  if (view == nullptr || !view->Model().HasText()) return false;
  const TextPosition caret = view->CaretPos();
  const std::string_view line = view->Buffer()->Line(caret.line);
  const Identifier name = IdentifierAt(line, caret.character);
  const std::shared_ptr<const ScriptFacts> facts = m_parts.script.Latest();
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

bool CodeJumperControl::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) {
    const auto* mouse = static_cast<QMouseEvent*>(event);
    CQuillView* view = m_parts.workspace.ActiveView();
    if (view != nullptr && watched == view->viewport() && mouse->button() == Qt::LeftButton &&
        mouse->modifiers() == Qt::ControlModifier && !view->Model().HasSelection()) {
      view->SetCaretPos(view->PositionAt(mouse->position().toPoint()));
      GoToDefinition();
      return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

void RegisterOutlineCommands(const ShellParts& parts) {
  DockBar* bar = parts.bars.Bar(CommandId::kViewCodeJumper);
  auto* pane = new CodeJumperPane(bar);
  bar->SetContents(pane);
  auto* control = new CodeJumperControl(parts, *pane, &parts.window);
  OnView(parts, CommandId::kIntelRefreshCodeJumper, [&parts](CQuillView&) { parts.script.Refresh(); });
  OnView(parts, CommandId::kIntelGoToDefinition, [control](CQuillView&) { control->GoToDefinition(); });
  parts.router.Register(CommandId::kIntelFindName, [bar, pane] {
    bar->show();
    bar->raise();
    bar->activateWindow();  // it may float
    pane->Filter().setFocus();
    pane->Filter().selectAll();
  });
  ScriptJumps& jumps = control->Jumps();
  parts.router.Register(
      CommandId::kIntelGoBack, [&jumps] { jumps.GoBack(); },
      [&jumps] { return CommandState::EnabledIf(jumps.CanGoBack(), StringId::kNowhereToGoBack); });
}

}  // namespace quill
