#pragma once
#include <QIcon>
#include <string_view>

namespace quill {

/// An icon of res/icons by its base name. Drawn from the SVG at whatever size and device pixel ratio is
/// asked for, and for dark or light surroundings by the application's palette at that moment; disabled
/// icons are faded. A null icon for an empty or unknown name.
QIcon LoadIcon(std::string_view name);

/// A mark for the editor's margin ("mark-bookmark", "mark-number-0", ...), in the light colours whatever
/// the palette, since the margin's colour is the user's. `size` is in device-independent pixels.
QPixmap LoadMark(std::string_view name, int size, qreal devicePixelRatio);

/// The program's own icon, with the sizes that window managers ask for.
QIcon ProgramIcon();

}  // namespace quill
