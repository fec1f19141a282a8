#pragma once
#include <string>

namespace quill {

class CCrystalTextBuffer;
class LineFlagStore;

/// The flag words of a document's lines between runs. Saved under the file's full path, but restored
/// from the section named by the file name alone: the two meet only for a path without a folder. Marks
/// that are stored already lie in these sections and would be lost under other names.
namespace line_marks {

/// Makes the section hold the words of the buffer's lines, when the file exists. Writes only
/// what differs from the last time, so that it costs by the number of changed marks.
void Save(const CCrystalTextBuffer& buffer, const std::string& path, LineFlagStore& store);

/// Sets the flags of lines that have a word; the last line never does.
void Restore(CCrystalTextBuffer& buffer, const std::string& path, LineFlagStore& store);

}  // namespace line_marks
}  // namespace quill
