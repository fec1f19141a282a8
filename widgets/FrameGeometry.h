#pragma once
#include <QSize>
#include <optional>
#include <string>
#include <string_view>

#include "settings/AppProfile.h"

class QWidget;

namespace quill {

/// A window's place, on the screen or within another window, as the 44 bytes that the profile keeps.
namespace frame_geometry {

std::string Save(const QWidget& window);
/// Gives a window that is not yet shown its kept place. A record that is none, or a place on no screen,
/// gives it its usual size in the middle of the screen. True when the window is to be maximised.
bool Restore(QWidget& window, const std::string& bytes, QSize usualSize = {1100, 760});
/// The same for a window within another one, which can scroll to any place: a record that is none leaves
/// the window as it is.
bool RestoreWithin(QWidget& window, const std::string& bytes);

/// Keeps a window's place in a section of the profile: that of its title.
void Keep(AppProfile profile, std::string_view section, const QWidget& window);
/// The place kept there; nothing when there is none yet.
std::optional<std::string> Kept(const AppProfile& profile, std::string_view section);

}  // namespace frame_geometry
}  // namespace quill
