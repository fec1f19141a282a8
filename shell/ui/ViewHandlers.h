#pragma once
#include <functional>

#include "shell/ui/ActiveView.h"
#include "shell/ui/CommandRouter.h"

namespace quill {

/// Disabled while the text is read-only.
inline CommandState NeedsWriting(const CQuillView& view) {
  return CommandState::EnabledIf(view.CanEdit(), StringId::kDocumentIsReadOnly);
}

/// Registers commands that work on the active view; they are disabled while there is none.
class ViewHandlers {
 public:
  using Run = std::function<void(CQuillView&)>;
  using StateOf = std::function<CommandState(const CQuillView&)>;

  /// Both outlive the commands.
  ViewHandlers(CommandRouter& router, ActiveView& active) : m_router(router), m_active(active) {}

  void Add(CommandId id, const Run& run, const StateOf& state = {}) const {
    m_router.Register(
        id, [&active = m_active, run] { run(*active.View()); },
        [&active = m_active, state] {
          const CQuillView* view = active.View();
          if (view == nullptr) return CommandState::Disabled(StringId::kNoDocumentOpen);
          return state ? state(*view) : CommandState();
        });
  }

  /// An editing operation, disabled also while the text is read-only.
  void AddEdit(CommandId id, const CQuillView::Operation& operation) const {
    Add(
        id, [operation](CQuillView& view) { view.Edit(operation); }, NeedsWriting);
  }

 private:
  CommandRouter& m_router;
  ActiveView& m_active;
};

}  // namespace quill
