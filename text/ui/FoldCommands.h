#pragma once
#include <cstdint>

namespace quill {

class CCrystalTextView;

/// The commands that fold what a view shows. Collapsing puts the caret at the start of the line that stands
/// for the block. Without a text they do nothing.
namespace fold_command {

/// Folds or unfolds the block around the caret; beeps when there is none.
void ToggleBlock(CCrystalTextView& view);
/// The same with the block that begins in a line.
void ToggleBlockAt(CCrystalTextView& view, int32_t line);
void ExpandAll(CCrystalTextView& view);
void CollapseAll(CCrystalTextView& view);

}  // namespace fold_command
}  // namespace quill
