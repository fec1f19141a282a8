#include "shell/ViewPreferences.h"

#include "settings/Settings.h"

namespace quill {

ViewSettings ReadViewSettings(SettingsStore& store, const DesktopColours& desktop) {
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
  view.typeOverClosers = ReadFlag(store, settings::kTypeOverClosers);
  view.keepSpaces = ReadFlag(store, settings::kKeepSpaces);

  view.colours.Load({[&store](const ColourSetting& setting, const DesktopColours& colours) {
                       return ReadColour(store, setting, colours);
                     },
                     [&store](const FlagSetting& setting) { return ReadFlag(store, setting); }},
                    desktop);
  return view;
}

}  // namespace quill
