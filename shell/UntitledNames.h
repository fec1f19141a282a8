#pragma once
#include <string>

#include "res/Strings.h"

namespace quill {

/// Titles for documents without a file: "Untitled1" and so on, none twice in a run.
class UntitledNames {
 public:
  std::string Next() { return FormatText(StringId::kUntitled, {std::to_string(++m_last)}); }

 private:
  int m_last = 0;
};

}  // namespace quill
