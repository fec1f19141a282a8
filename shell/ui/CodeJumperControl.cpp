#include "shell/ui/CodeJumperControl.h"

#include <QApplication>
#include <QMainWindow>
#include <QMouseEvent>

#include "intel/IncludeFollower.h"
#include "intel/OutlineScanner.h"
#include "intel/ui/CodeJumperTree.h"
#include "shell/Settings.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/DockBars.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/ViewHandlers.h"

namespace quill {
namespace {

constexpr int kAutoRefreshDelay = 300;  ///< milliseconds after the last key

}  // namespace

CodeJumperControl::CodeJumperControl(const ShellParts& parts, CodeJumperPane& pane, QObject* parent)
    : QObject(parent), m_parts(parts), m_pane(pane) {
  m_autoRefresh.setSingleShot(true);
  m_autoRefresh.setInterval(kAutoRefreshDelay);
  connect(&m_autoRefresh, &QTimer::timeout, this, &CodeJumperControl::Refresh);
  connect(&pane.Tree(), &CCodeJumperTree::Jump, this, [this](int file, TextPosition at) {
    RememberPlace();
    JumpTo(file, at);
  });
  connect(&parts.workspace, &Workspace::ActiveFrameChanged, this, &CodeJumperControl::Follow);
}

void CodeJumperControl::Follow(CChildFrame* frame) {
  disconnect(m_caretMoved);
  if (frame == nullptr) return;
  CQuillView& view = frame->View();
  view.viewport()->removeEventFilter(this);
  view.viewport()->installEventFilter(this);
  m_caretMoved = connect(&view, &CCrystalTextView::CaretMoved, this, &CodeJumperControl::OnCaretMoved);
  Refresh();
}

void CodeJumperControl::OnCaretMoved() {
  const CQuillView* view = m_parts.workspace.ActiveView();
  if (view == nullptr || !view->Model().HasText()) return;
  m_pane.Tree().Mark(m_functions.Around(*view->Buffer(), view->CaretPos().line));
  if (ReadFlag(m_parts.services.settings, settings::kAutoRefresh)) m_autoRefresh.start();
}

void CodeJumperControl::Refresh() {
  CQuillView* view = m_parts.workspace.ActiveView();
  if (view == nullptr || !view->Model().HasText()) return;
  m_autoRefresh.stop();
  SettingsStore& settings = m_parts.services.settings;
  Outline outline = ScanOutline(*view->Buffer(), ReadText(settings, settings::kOnlyElements));
  m_functions = EnclosingFunction(outline);
  m_includedPaths.clear();
  if (ReadFlag(settings, settings::kLoadIncluded)) {
    const IncludedFiles included = FollowIncludes(outline, view->FilePath(), ReadScriptFile);
    for (const IncludedFiles::File& file : included.files) m_includedPaths.push_back(file.path);
    MergeIncluded(outline, included);
  }
  m_definitions = Definitions(outline);
  view->Functions().Clear();
  view->Variables().Clear();
  CollectNames(outline, view->Functions(), view->Variables());
  view->VocabularyChanged();
  m_pane.Tree().Show(outline);
  m_pane.Tree().Mark(m_functions.Around(*view->Buffer(), view->CaretPos().line));
}

// Jumps

void CodeJumperControl::RememberPlace() {
  const CQuillView* view = m_parts.workspace.ActiveView();
  if (view != nullptr && !view->FilePath().empty()) m_history.Push({view->FilePath(), view->CaretPos()});
}

void CodeJumperControl::JumpTo(int file, TextPosition at) {
  if (file > 0) {
    const auto index = static_cast<size_t>(file) - 1;
    if (index >= m_includedPaths.size()) return;
    // A copy: opening a window reads the outline anew.
    const std::string path = m_includedPaths[index];
    if (m_parts.files.Open(path) == nullptr) return;
  }
  CQuillView* view = m_parts.workspace.ActiveView();
  if (view == nullptr) return;
  view->SetCaretPos(at);
  view->setFocus();
}

bool CodeJumperControl::GoToDefinition() {
  CQuillView* view = m_parts.workspace.ActiveView();
  if (view == nullptr || !view->Model().HasText()) return false;
  const TextPosition caret = view->CaretPos();
  const std::string_view line = view->Buffer()->Line(caret.line);
  const Identifier name = IdentifierAt(line, caret.character);
  const EnclosingFunction::Entry* function = m_functions.Around(*view->Buffer(), caret.line);
  const DefinitionPlace* place =
      m_definitions.Find(name.In(line), caret.line, function == nullptr ? -1 : function->at.line);
  if (place == nullptr) {
    QApplication::beep();
    return false;
  }
  RememberPlace();
  JumpTo(place->file, TextPosition(place->at));
  return true;
}

void CodeJumperControl::GoBack() {
  if (!CanGoBack()) return;
  const JumpPlace place = m_history.Pop();
  if (m_parts.files.Open(place.document) == nullptr) return;
  if (CQuillView* view = m_parts.workspace.ActiveView()) {
    view->SetCaretPos(place.at);
    view->setFocus();
  }
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
  CDockBar* bar = parts.bars.Bar(CommandId::kViewCodeJumper);
  auto* pane = new CodeJumperPane(bar);
  bar->SetContents(pane);
  auto* control = new CodeJumperControl(parts, *pane, &parts.window);
  OnView(parts, CommandId::kIntelRefreshCodeJumper, [control](CQuillView&) { control->Refresh(); });
  OnView(parts, CommandId::kIntelGoToDefinition, [control](CQuillView&) { control->GoToDefinition(); });
  parts.router.Register(
      CommandId::kIntelGoBack, [control] { control->GoBack(); },
      [control] { return CommandState::EnabledIf(control->CanGoBack(), StringId::kNowhereToGoBack); });
}

}  // namespace quill
