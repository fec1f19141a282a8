#pragma once
#include <string>

namespace quill {

/// The main window's title. `projectName` is empty when no project is open; `documentPath` is that of the
/// active document, empty when there is none or it has no file, and is shown only with `showFullPath`.
std::string FrameTitle(const std::string& projectName, const std::string& documentPath, bool showFullPath);

}  // namespace quill
