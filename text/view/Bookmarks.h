#pragma once
#include <cstdint>
#include <optional>

namespace quill {

class CCrystalTextBuffer;

/// Commands on the bookmarks that lines carry as flags. All of them tell the views through the buffer.
namespace bookmarks {

void Toggle(CCrystalTextBuffer& buffer, int32_t line);
void ToggleBreakpoint(CCrystalTextBuffer& buffer, int32_t line);
/// The nearest bookmarked line after or before `line`; there is no wrapping round the ends.
std::optional<int32_t> Next(const CCrystalTextBuffer& buffer, int32_t line);
std::optional<int32_t> Previous(const CCrystalTextBuffer& buffer, int32_t line);
/// Puts numbered bookmark `n` (0 to 9) on `line`, taking it from the line that had it. False for
/// another number.
bool SetNumbered(CCrystalTextBuffer& buffer, int32_t line, int n);
std::optional<int32_t> FindNumbered(const CCrystalTextBuffer& buffer, int n);
/// Takes numbered bookmark `n` from the line that has it.
void RemoveNumbered(CCrystalTextBuffer& buffer, int n);
/// Takes all numbered bookmarks from a line, or from the whole text.
void RemoveNumbersOf(CCrystalTextBuffer& buffer, int32_t line);
void ClearNumbered(CCrystalTextBuffer& buffer);
/// Takes the plain bookmarks from all lines.
void ClearAll(CCrystalTextBuffer& buffer);

}  // namespace bookmarks
}  // namespace quill
