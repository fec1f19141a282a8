#pragma once
#include <cstdint>
#include <string>

#include "text/parse/ColourTable.h"

namespace quill {

/// How views show and edit text: the preferences, read when a view is created and when the options
/// change.
struct ViewSettings {
  std::string fontName = "Courier";
  int32_t fontSize = 12;  ///< points
  int32_t tabSize = 3;    ///< columns
  bool showLineNumbers = true;
  bool showFolding = true;
  bool braceMatch = true;
  bool highlightLine = true;
  bool indentationGuide = true;
  bool autoIndent = true;
  bool autoBrackets = true;
  bool keepSpaces = false;  ///< indent with blanks
  ColourTable colours;
};

}  // namespace quill
