#include "intel/ui/WritingHelp.h"

#include "intel/ui/CommandHelp.h"
#include "shell/ui/ViewHandlers.h"

namespace quill {

WritingHelp::WritingHelp(const CompletionControl::Needs& needs, CommandHelp& help)
    : m_active(needs.active),
      m_completion(needs),
      m_hints({needs.window, needs.active, needs.script, needs.commands, needs.settings, m_completion}),
      m_hover(needs.active, needs.script, needs.commands) {
  QObject::connect(&m_completion, &CompletionControl::CommandWritten, &m_hints, &HintControl::ShowForCaret);
  QObject::connect(&m_hints, &HintControl::CommandFound, &help, &CommandHelp::Show);
}

void WritingHelp::RegisterCommands(CommandRouter& router) {
  const ViewHandlers views(router, m_active);
  views.Add(
      CommandId::kIntelCompleteWord, [this](CQuillView&) { m_completion.Open(); }, NeedsWriting);
  views.Add(CommandId::kIntelShowHint, [this](CQuillView&) { m_hints.ShowOnCommand(); });
}

}  // namespace quill
