#pragma once
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {

/// Makes the text of `buffer` that of `wanted` by replacing the lines between the first and the last
/// one that differ, as one undo step. False when nothing differed or the buffer is read-only.
bool ReplaceDifference(CCrystalTextBuffer& buffer, const CCrystalTextBuffer& wanted);

}  // namespace quill
