#include "text/edit/IndentAll.h"

#include <algorithm>
#include <string>

#include "text/edit/CodeShape.h"
#include "text/edit/Indentation.h"
#include "text/edit/UndoStep.h"
#include "text/view/VisualColumns.h"

namespace quill::edit {
namespace {

/// Lines whose meaning depends on column 0, or that are set there by custom.
bool BelongsToColumnZero(std::string_view line, int32_t blanks) {
  if (line.substr(static_cast<size_t>(blanks)).starts_with('#')) return true;
  return line.starts_with("ifdef") || line.starts_with("ifndef") || line.starts_with("ifelse") ||
         line.starts_with("endif");
}

/// The lines of code below comments, each looked for once.
class CodeBelow {
 public:
  explicit CodeBelow(const CCrystalTextBuffer& buffer) : m_buffer(buffer) {}

  /// The first line below one of comments and blanks that is neither, without its indentation; empty for
  /// none.
  std::string_view After(int32_t line) {
    if (line >= m_found) Find(line);
    return m_found < m_buffer.LineCount() ? TextOf(m_found) : std::string_view();
  }

 private:
  std::string_view TextOf(int32_t line) const {
    const std::string_view text = m_buffer.Line(line);
    return text.substr(static_cast<size_t>(LeadingWhiteSpace(text)));
  }
  void Find(int32_t line) {
    bool inComment = false;
    for (m_found = line; m_found < m_buffer.LineCount(); ++m_found) {
      const std::string_view text = TextOf(m_found);
      inComment = inComment || text.starts_with("/*");
      if (!inComment && !text.empty() && !text.starts_with("//")) return;
      inComment = inComment && text.find("*/") == std::string_view::npos;
    }
  }

  const CCrystalTextBuffer& m_buffer;
  int32_t m_found = 0;
};

/// Gives lines their indentation and keeps caret and anchor on their characters.
class Indenter {
 public:
  Indenter(EditTarget& target, UndoStep& step)
      : m_target(target), m_step(step), m_anchor(target.Anchor()), m_caret(target.Caret()) {}

  void SetIndent(int32_t line, const std::string& indent) {
    const std::string_view text = m_target.Buffer().Line(line);
    const int32_t old = LeadingWhiteSpace(text);
    if (text.substr(0, static_cast<size_t>(old)) == indent) return;
    m_step.ReplaceInLine({{line, 0}, {line, old}}, indent);
    const auto fresh = static_cast<int32_t>(indent.size());
    for (TextPosition* end : {&m_anchor, &m_caret}) {
      if (end->line != line) continue;
      end->character = end->character < old ? std::min(end->character, fresh) : end->character - old + fresh;
    }
  }
  void PlaceSelection() { m_target.Select(m_anchor, m_caret); }

 private:
  EditTarget& m_target;
  UndoStep& m_step;
  TextPosition m_anchor;
  TextPosition m_caret;
};

}  // namespace

bool IndentAll(EditTarget& target) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  if (buffer.IsReadOnly()) return false;
  const EditSettings settings = target.Settings();
  UndoStep step(target, action::kIndent);
  Indenter indenter(target, step);
  CodeShape shape(settings.tabSize);
  CodeBelow below(buffer);
  std::string before;
  int32_t shift = 0;  // by how many columns the last line that began in code moved
  for (int32_t line = 0; line < buffer.LineCount(); ++line) {
    const CodeShape::State state = shape.AtLineStart();
    before = buffer.Line(line);
    const std::string_view text = before;
    const int32_t blanks = LeadingWhiteSpace(text);
    const bool isBlank = blanks == static_cast<int32_t>(text.size());
    const int32_t column = ColumnOf(text, blanks, settings.tabSize);
    if (state == CodeShape::State::kCode && !isBlank) {
      const std::string_view rest = text.substr(static_cast<size_t>(blanks));
      const std::string_view next = rest.starts_with('/') ? below.After(line) : std::string_view();
      const int32_t wanted = BelongsToColumnZero(text, blanks) ? 0 : shape.WantedColumn(rest, column, next);
      shift = wanted - column;
      indenter.SetIndent(line, IndentOfWidth(wanted, settings));
    } else if (state != CodeShape::State::kString) {
      indenter.SetIndent(line, isBlank ? "" : IndentOfWidth(std::max(0, column + shift), settings));
    }
    shape.Walk(before, buffer.Line(line));
  }
  indenter.PlaceSelection();
  return true;
}

}  // namespace quill::edit
