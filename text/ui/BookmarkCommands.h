#pragma once

namespace quill {

class CCrystalTextView;

/// The commands on bookmarks, at the caret of a view. Without a text they do nothing.
namespace bookmark_command {

void Toggle(CCrystalTextView& view);
/// Go to the nearest bookmark below or above the caret; there is no wrapping round the ends. False when there
/// is none.
bool GoToNext(CCrystalTextView& view);
bool GoToPrevious(CCrystalTextView& view);
/// Takes the plain bookmarks from all lines, the numbered ones stay.
void ClearAll(CCrystalTextView& view);
/// `number` is 0 to 9.
void SetNumbered(CCrystalTextView& view, int number);
/// From the caret line; from the whole text.
void RemoveNumbers(CCrystalTextView& view);
void ClearNumbered(CCrystalTextView& view);
/// False when it is not set.
bool GoToNumbered(CCrystalTextView& view, int number);
void ToggleBreakpoint(CCrystalTextView& view);

}  // namespace bookmark_command
}  // namespace quill
