#pragma once
#include <QPoint>
#include <cstdint>

namespace quill {

class CQuillView;

/// The menu of the right mouse button in a view's margin: sets and removes the marks of that line, wherever
/// the caret is. `place` is on the screen.
void ShowMarginMenu(CQuillView& view, int32_t line, QPoint place);

}  // namespace quill
