#include "intel/writing/DefinitionBody.h"

#include <string>

#include "base/CodePage1252.h"
#include "intel/outline/CodeWalk.h"
#include "intel/outline/OutlineScanner.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

/// How far above a place its definition may begin. Definitions are short.
constexpr int32_t kMostLines = 300;
constexpr int32_t kMostCharacters = 65536;

/// Walks from a place upwards through the code, a character at a time.
class BackwardWalk {
 public:
  BackwardWalk(const CCrystalTextBuffer& buffer, TextPosition place,
               const std::function<uint32_t(int32_t line)>& stateAt)
      : m_buffer(buffer), m_stateAt(stateAt), m_line(place.line) {
    Read(place.character);
  }

  /// The next character before; 0 at the top, and when it becomes too far.
  char Next() {
    while (m_left.empty()) {
      if (m_line == 0 || ++m_lines > kMostLines || m_characters > kMostCharacters) return '\0';
      --m_line;
      Read(m_buffer.LineLength(m_line));
    }
    const char c = m_left.back();
    m_left.pop_back();
    return c;
  }
  int32_t Line() const { return m_line; }

 private:
  void Read(int32_t end) {
    m_characters += end;
    if (m_characters > kMostCharacters) return;
    const std::string_view line = m_buffer.Line(m_line).substr(0, static_cast<size_t>(end));
    WalkCode(line, m_stateAt(m_line), [this, line](size_t column, char c) {
      const std::string_view two = line.substr(column, 2);
      if (!cp1252::IsSpace(c) && two != "//" && two != "/*") m_left += c;
    });
  }

  const CCrystalTextBuffer& m_buffer;
  const std::function<uint32_t(int32_t line)>& m_stateAt;
  int32_t m_line;
  int32_t m_lines = 0;
  int32_t m_characters = 0;
  std::string m_left;  ///< code of the line, without blanks, that was not visited yet
};

}  // namespace

const ObjectKind* DefinitionBodyAt(const CCrystalTextBuffer& buffer, TextPosition place,
                                   const std::function<uint32_t(int32_t line)>& stateAt) {
  BackwardWalk walk(buffer, place, stateAt);
  char c = walk.Next();
  if (c != '{' && c != ';') return nullptr;  // a value, or the rest of one
  // Definitions hold no blocks: a brace that closes one belongs to a function.
  while (c != '{') {
    if (c == '\0' || c == '}') return nullptr;
    c = walk.Next();
  }
  if (walk.Next() == '\0') return nullptr;
  // The line that has the name, or the brace's own.
  const std::optional<OutlineRoot> root = DefinedRoot(buffer.Line(walk.Line()));
  return root ? FindObjectKind(*root) : nullptr;
}

}  // namespace quill
