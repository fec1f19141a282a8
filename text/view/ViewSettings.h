#pragma once
#include <cstdint>
#include <string>

#include "settings/SettingsTable.h"
#include "text/parse/ColourTable.h"

namespace quill {

/// How views show and edit text: the preferences, read when a view is created and when the options
/// change.
struct ViewSettings {
  std::string fontName{settings::kFontName.fallback};
  int32_t fontSize = settings::kFontSize.fallback;  ///< points
  int32_t tabSize = settings::kTabSize.fallback;    ///< columns
  bool showLineNumbers = settings::kShowLineNumbers.fallback;
  bool showFolding = settings::kShowFolding.fallback;
  bool braceMatch = settings::kBraceMatch.fallback;
  bool highlightLine = settings::kHighlightLine.fallback;
  bool indentationGuide = settings::kIndentionGuide.fallback;
  bool autoIndent = settings::kAutoIndent.fallback;
  bool autoBrackets = settings::kAutoBrackets.fallback;
  bool typeOverClosers = settings::kTypeOverClosers.fallback;
  bool keepSpaces = settings::kKeepSpaces.fallback;  ///< indent with blanks
  ColourTable colours;
};

}  // namespace quill
