#pragma once
#include <functional>

#include "shell/ui/CommandRouter.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/ShellParts.h"
#include "shell/ui/Workspace.h"

namespace quill {

using ViewHandler = std::function<void(CQuillView&)>;
using ViewStateOf = std::function<CommandState(const CQuillView&)>;

/// Registers a command on the active view, disabled while there is none.
inline void OnView(const ShellParts& parts, CommandId id, const ViewHandler& run,
                   const ViewStateOf& state = {}) {
  parts.router.Register(
      id, [&workspace = parts.workspace, run] { run(*workspace.ActiveView()); },
      [&workspace = parts.workspace, state] {
        const CQuillView* view = workspace.ActiveView();
        if (view == nullptr) return CommandState::Disabled(StringId::kNoDocumentOpen);
        return state ? state(*view) : CommandState();
      });
}

/// Disabled while the text is read-only.
inline CommandState NeedsWriting(const CQuillView& view) {
  return CommandState::EnabledIf(view.CanEdit(), StringId::kDocumentIsReadOnly);
}

/// Registers an editing operation, disabled also while the text is read-only.
inline void OnWritableView(const ShellParts& parts, CommandId id, const CQuillView::Operation& operation) {
  OnView(
      parts, id, [operation](CQuillView& view) { view.Edit(operation); }, NeedsWriting);
}

}  // namespace quill
