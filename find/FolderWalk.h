#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/InputFile.h"

namespace quill {

/// Opens every regular file below a directory whose name `wanted` accepts and hands it, under its full
/// path, to `take`, which returns false when the file could not be read. Depth first, in the file
/// system's order. Symbolic links are followed, but a directory is entered only once, so that links that
/// loop end. Names may be any bytes. Returns the number of files and directories that could not be read;
/// what vanishes during the walk is not among them.
int64_t WalkFolder(const std::string& directory, const std::function<bool(std::string_view)>& wanted,
                   const std::function<bool(InputFile&)>& take);

}  // namespace quill
