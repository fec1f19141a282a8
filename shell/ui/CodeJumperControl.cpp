#include "shell/ui/CodeJumperControl.h"

#include <QApplication>
#include <QMainWindow>
#include <QMouseEvent>

#include "intel/ui/CodeJumperTree.h"
#include "shell/ui/ActiveScript.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/DockBars.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/ViewHandlers.h"

namespace quill {
CodeJumperControl::CodeJumperControl(const ShellParts& parts, CodeJumperPane& pane, QObject* parent)
    : QObject(parent), m_parts(parts), m_pane(pane) {
  connect(&parts.script, &ActiveScript::Refreshed, this, &CodeJumperControl::Show);
  connect(&pane.Tree(), &CCodeJumperTree::Jump, this, [this](const OutlineItem& item, OutlineRoot root) {
    JumpTo(item.file, PlaceNow(item, root, m_parts.script.Latest()->outline), *m_parts.script.Shown());
  });
  connect(&parts.workspace, &Workspace::ActiveFrameChanged, this, &CodeJumperControl::Follow);
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
  const std::shared_ptr<const ScriptFacts>& facts = m_parts.script.Shown();
  m_pane.Tree().Show({facts, &facts->outline});
  MarkFunction();
}

// Jumps

void CodeJumperControl::RememberPlace() {
  const CQuillView* view = m_parts.workspace.ActiveView();
  if (view != nullptr && !view->FilePath().empty()) m_history.Push({view->FilePath(), view->CaretPos()});
}

void CodeJumperControl::JumpTo(int32_t file, TextPosition at, const ScriptFacts& facts) {
  RememberPlace();
  if (file > 0) {
    const auto index = static_cast<size_t>(file) - 1;
    if (index >= facts.includedPaths.size()) return;
    // A copy: opening a window reads the outline anew.
    const std::string path = facts.includedPaths[index];
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
  const std::shared_ptr<const ScriptFacts> facts = m_parts.script.Latest();
  const EnclosingFunction::Entry* function = facts->functions.Around(*view->Buffer(), caret.line);
  const Definitions definitions(facts->outline);
  const DefinitionPlace* place =
      definitions.Find(name.In(line), caret.line, function == nullptr ? -1 : function->at.line);
  if (place == nullptr) {
    QApplication::beep();
    return false;
  }
  JumpTo(place->file, place->at, *facts);
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
  OnView(parts, CommandId::kIntelRefreshCodeJumper, [&parts](CQuillView&) { parts.script.Refresh(); });
  OnView(parts, CommandId::kIntelGoToDefinition, [control](CQuillView&) { control->GoToDefinition(); });
  parts.router.Register(
      CommandId::kIntelGoBack, [control] { control->GoBack(); },
      [control] { return CommandState::EnabledIf(control->CanGoBack(), StringId::kNowhereToGoBack); });
}

}  // namespace quill
