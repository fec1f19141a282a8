#pragma once
#include <string>

namespace quill {

class CCrystalTextBuffer;

/// Whether a file's bytes are what the buffer would save in its own line-end style.
bool FileHoldsText(const std::string& path, const CCrystalTextBuffer& buffer);

}  // namespace quill
