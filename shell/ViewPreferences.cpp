#include "shell/ViewPreferences.h"

#include "settings/Settings.h"
#include "settings/SettingsKey.h"

namespace quill {

ViewSettings ReadViewSettings(SettingsStore& store, const SystemColours& system) {
  ViewSettings view;
  view.fontName = ReadText(store, settings::kFontName);
  view.fontSize = ReadInt(store, settings::kFontSize);
  view.tabSize = ReadInt(store, settings::kTabSize);
  view.showLineNumbers = ReadFlag(store, settings::kShowLineNumbers);
  view.showFolding = ReadFlag(store, settings::kShowFolding);
  view.braceMatch = ReadFlag(store, settings::kBraceMatch);
  view.highlightLine = ReadFlag(store, settings::kHighlightLine);
  view.indentationGuide = ReadFlag(store, settings::kIndentionGuide);
  view.autoIndent = ReadFlag(store, settings::kAutoIndent);
  view.autoBrackets = ReadFlag(store, settings::kAutoBrackets);
  view.keepSpaces = ReadFlag(store, settings::kKeepSpaces);

  SettingsKey key(store);
  key.SetKey(settings::kKeyPath, true);
  view.colours.Load({[&key](const char* name, uint32_t fallback) { return key.ReadColour(name, fallback); },
                     [&key](const char* name) { return key.ReadFlag(name, false); }},
                    system);
  return view;
}

}  // namespace quill
