#pragma once
#include <Qt>

namespace quill {

/// Shift, Ctrl and the like, which are pressed on the way to another key.
inline bool IsModifierKey(int key) {
  return (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) || key == Qt::Key_AltGr;
}

}  // namespace quill
