#pragma once

namespace quill {

class CQuillView;
class CommandRouter;

/// Gives a view the menu of its right mouse button: the edit commands for what is under the pointer. A
/// press outside the selection first places the caret there. Both outlive the menu.
void AttachContextMenu(CQuillView& view, CommandRouter& router);

}  // namespace quill
