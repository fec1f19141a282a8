#pragma once
#include <string>

#include "base/IoResult.h"

namespace quill {

class CCrystalTextBuffer;

/// Whether a file's bytes are what the buffer would save in its own line-end style.
bool FileHoldsText(const std::string& path, const CCrystalTextBuffer& buffer);

/// Makes a file without contents, in a folder that is there; one that came in between is replaced.
IoResult CreateEmptyFile(const std::string& path);

}  // namespace quill
