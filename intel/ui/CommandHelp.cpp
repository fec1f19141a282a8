#include "intel/ui/CommandHelp.h"

#include "intel/ui/ActiveScript.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "res/ui/UiText.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/DockBars.h"

namespace quill {

CommandHelp::CommandHelp(ActiveView& active, ActiveScript& script, const CommandDatabase& commands)
    : m_active(active), m_script(script), m_commands(commands) {
  connect(&active, &ActiveView::CaretMoved, this, &CommandHelp::ShowCommandAtCaret);
}

void CommandHelp::AddBars(DockBars& bars) {
  DockBar& bar = bars.AddBar(CommandId::kViewCommandHelp, StringId::kBarCommandHelp,
                             StringId::kEmptyCommandHelp, Qt::BottomDockWidgetArea);
  m_pane = new CHTMLCtrl(m_commands, &bar);
  m_pane->setAccessibleName(UiText(StringId::kBarCommandHelp));
  bar.SetContents(m_pane);
  connect(m_pane, &CHTMLCtrl::ManualWanted, this, &CommandHelp::ManualWanted);
}

void CommandHelp::Show(int32_t command, TextPart argument) {
  if (m_pane->isVisible()) m_pane->ShowCommand(command, argument);
}

std::optional<int32_t> CommandHelp::CommandInFocus() const {
  if (!m_pane->hasFocus() || m_pane->ShownCommand() < 0) return std::nullopt;
  return m_pane->ShownCommand();
}

void CommandHelp::ShowCommandAtCaret() {
  const CQuillView* view = m_active.ViewWithText();
  if (view == nullptr || !m_pane->isVisible()) return;
  m_atCaret.Update(*view->Buffer(), view->CaretPos(), std::nullopt, m_commands, m_script.Shown()->outline);
  m_pane->ShowCommand(m_atCaret.Command(), m_atCaret.Argument());
}

}  // namespace quill
