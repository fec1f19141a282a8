#pragma once
#include "intel/ui/CompletionControl.h"
#include "intel/ui/HintControl.h"
#include "intel/ui/HoverTips.h"
#include "shell/ui/Feature.h"

namespace quill {

class CommandHelp;

/// What helps while writing: the completion list, the tip with a command's parameters, and the one that says
/// what the mouse rests on.
class WritingHelp : public Feature {
 public:
  /// `help` shows the command that the tip or the list is about.
  WritingHelp(const CompletionControl::Needs& needs, CommandHelp& help);

  void RegisterCommands(CommandRouter& router) override;

 private:
  ActiveView& m_active;
  CompletionControl m_completion;
  HintControl m_hints;
  HoverTips m_hover;
};

}  // namespace quill
