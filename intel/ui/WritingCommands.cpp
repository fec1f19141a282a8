// What helps while writing: the completion list and the tip with a command's parameters.
#include <QMainWindow>

#include "intel/ui/CompletionControl.h"
#include "intel/ui/HTMLCtrl.h"
#include "intel/ui/HintControl.h"
#include "shell/ui/ViewHandlers.h"

namespace quill {

void RegisterWritingCommands(const ShellParts& parts) {
  auto* completion = new CompletionControl(parts, &parts.window);
  auto* hints = new HintControl(parts, *completion, &parts.window);
  if (auto* help = parts.window.findChild<CHTMLCtrl*>()) {
    QObject::connect(hints, &HintControl::CommandFound, help, [help](int index) {
      if (help->isVisible()) help->ShowCommand(index);
    });
  }
  OnView(
      parts, CommandId::kIntelCompleteWord, [completion](CQuillView&) { completion->Open(); },
      [](const CQuillView& view) {
        return CommandState::EnabledIf(view.CanEdit(), StringId::kDocumentIsReadOnly);
      });
  OnView(parts, CommandId::kIntelShowHint, [hints](CQuillView&) { hints->ShowOnCommand(); });
}

}  // namespace quill
