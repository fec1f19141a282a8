#pragma once
#include "settings/Colours.h"
#include "settings/SettingsStore.h"
#include "text/view/ViewSettings.h"

namespace quill {

/// How views are to show and edit text, read anew from the settings.
ViewSettings ReadViewSettings(SettingsStore& store, const DesktopColours& desktop);

}  // namespace quill
