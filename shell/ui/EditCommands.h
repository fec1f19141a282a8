#pragma once
#include "shell/Clock.h"
#include "shell/ui/Feature.h"
#include "shell/ui/ViewHandlers.h"

namespace quill {

/// Undo, clipboard, and what edits lines and words.
class EditCommands : public Feature {
 public:
  EditCommands(ActiveView& active, Clock clock) : m_active(active), m_clock(std::move(clock)) {}

  void RegisterCommands(CommandRouter& router) override;

 private:
  ActiveView& m_active;
  Clock m_clock;
};

}  // namespace quill
