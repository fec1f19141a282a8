#pragma once
#include <QSize>
#include <string>

class QWidget;

namespace quill {

/// A window's place on the screen as the 44 bytes that the profile keeps.
namespace frame_geometry {

std::string Save(const QWidget& window);
/// Gives a window that is not yet shown its kept place. A record that is none, or a place on no screen,
/// gives it its usual size in the middle of the screen. True when the window is to be maximised.
bool Restore(QWidget& window, const std::string& bytes, QSize usualSize = {1100, 760});

}  // namespace frame_geometry
}  // namespace quill
