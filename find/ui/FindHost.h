#pragma once
#include <QString>
#include <functional>

#include "settings/AppProfile.h"

namespace quill {

class CCrystalEditView;
class ViewMarks;

/// What the find and replace dialogs need of the program around them.
struct FindHost {
  /// The view that the dialogs act on; null while no text is open.
  std::function<CCrystalEditView*()> activeView;
  /// Shows a message and waits until the user has read it.
  std::function<void(const QString&)> tell;
  AppProfile profile;
  ViewMarks& marks;
};

}  // namespace quill
