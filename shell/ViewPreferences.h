#pragma once
#include "shell/SettingsStore.h"
#include "text/ColourTable.h"
#include "text/ViewSettings.h"

namespace quill {

/// How views are to show and edit text, read anew from the settings.
ViewSettings ReadViewSettings(SettingsStore& store, const SystemColours& system);

}  // namespace quill
