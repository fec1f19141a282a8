#include "shell/FrameTitle.h"

#include "res/Strings.h"

namespace quill {

std::string FrameTitle(const std::string& projectName, const std::string& documentPath, bool showFullPath) {
  std::string title = projectName.empty() ? std::string(Text(StringId::kProgramTitle))
                                          : FormatText(StringId::kTitleWithProject, {projectName});
  if (showFullPath && !documentPath.empty()) title += FormatText(StringId::kTitlePathSuffix, {documentPath});
  return title;
}

}  // namespace quill
