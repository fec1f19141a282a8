// The docking bar "Command Help": follows the command at the caret of the active view.
#include <QMainWindow>

#include "intel/outline/Definitions.h"
#include "intel/ui/HTMLCtrl.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/DockBars.h"
#include "shell/ui/ViewHandlers.h"

namespace quill {
namespace {

void ShowCommandAtCaret(CHTMLCtrl& pane, const CommandDatabase& commands, const CQuillView& view) {
  if (!pane.isVisible() || !view.Model().HasText()) return;
  const TextPosition caret = view.CaretPos();
  const std::string_view line = view.Buffer()->Line(caret.line);
  const Identifier word = IdentifierAt(line, caret.character);
  if (word.start < word.end) pane.ShowCommand(commands.FindCommandIndex(word.In(line)));
}

}  // namespace

void RegisterCommandHelp(const ShellParts& parts) {
  DockBar* bar = parts.bars.Bar(CommandId::kViewCommandHelp);
  auto* pane = new CHTMLCtrl(parts.commands, bar);
  bar->SetContents(pane);
  QObject::connect(&parts.workspace, &Workspace::WindowAdded, pane,
                   [pane, &commands = parts.commands](CChildFrame* frame) {
                     const CQuillView* view = &frame->View();
                     QObject::connect(view, &CCrystalTextView::CaretMoved, pane, [pane, &commands, view] {
                       ShowCommandAtCaret(*pane, commands, *view);
                     });
                   });
}

}  // namespace quill
