#include "text/edit/IndentAll.h"

#include <algorithm>
#include <string>

#include "base/CodePage1252.h"
#include "text/edit/Indentation.h"
#include "text/edit/UndoStep.h"
#include "text/view/VisualColumns.h"

namespace quill::edit {
namespace {

/// Walks over lines as the colouring does and counts the braces that are code.
class BraceCounter {
 public:
  enum class State : uint8_t { kCode, kString, kBlockComment, kCharLiteral, kPreprocessor };

  State AtLineStart() const { return m_state; }
  int32_t Depth() const { return m_depth; }

  void Walk(std::string_view line) {
    m_onlyBlanks = m_state != State::kString;
    char before = 0;
    for (const char c : line) {
      if (m_state == State::kCode && before == '/' && c == '/') break;
      Step(before, c);
      before = c;
    }
    // Literals of one character and preprocessor lines end with their line.
    if (m_state == State::kCharLiteral || m_state == State::kPreprocessor) m_state = State::kCode;
  }

 private:
  void Step(char before, char c) {
    switch (m_state) {
      case State::kString:
        if (c == '"') m_state = State::kCode;
        break;
      case State::kCharLiteral:
        if (c == '\'' && before != '\\') m_state = State::kCode;
        break;
      case State::kBlockComment:
        if (before == '*' && c == '/') m_state = State::kCode;
        break;
      case State::kPreprocessor:
        if (before == '/' && c == '*') m_state = State::kBlockComment;
        break;
      case State::kCode:
        StepInCode(before, c);
    }
  }

  void StepInCode(char before, char c) {
    if (c == '{') ++m_depth;
    if (c == '}') m_depth = std::max(0, m_depth - 1);
    if (c == '"') m_state = State::kString;
    if (c == '\'') m_state = State::kCharLiteral;
    if (before == '/' && c == '*') m_state = State::kBlockComment;
    if (c == '#' && m_onlyBlanks) m_state = State::kPreprocessor;
    m_onlyBlanks = m_onlyBlanks && cp1252::IsSpace(c);
  }

  State m_state = State::kCode;
  int32_t m_depth = 0;
  bool m_onlyBlanks = true;
};

using State = BraceCounter::State;

/// Lines whose meaning depends on column 0, or that are set there by custom.
bool BelongsToColumnZero(std::string_view line, int32_t blanks) {
  if (line.substr(static_cast<size_t>(blanks)).starts_with('#')) return true;
  return line.starts_with("ifdef") || line.starts_with("ifndef") || line.starts_with("ifelse") ||
         line.starts_with("endif");
}

/// The column at which a line that begins in code should start.
int32_t WantedColumn(std::string_view line, int32_t blanks, int32_t depth, int32_t tabSize) {
  if (BelongsToColumnZero(line, blanks)) return 0;
  const std::string_view rest = line.substr(static_cast<size_t>(blanks));
  const auto closing = static_cast<int32_t>(std::min(rest.find_first_not_of('}'), rest.size()));
  return std::max(0, depth - closing) * tabSize;
}

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
  BraceCounter counter;
  int32_t shift = 0;  // by how many columns the last line that began in code moved
  for (int32_t line = 0; line < buffer.LineCount(); ++line) {
    const State state = counter.AtLineStart();
    const std::string_view text = buffer.Line(line);
    const int32_t blanks = LeadingWhiteSpace(text);
    const bool isBlank = blanks == static_cast<int32_t>(text.size());
    const int32_t column = ColumnOf(text, blanks, settings.tabSize);
    if (state == State::kCode && !isBlank) {
      const int32_t wanted = WantedColumn(text, blanks, counter.Depth(), settings.tabSize);
      shift = wanted - column;
      indenter.SetIndent(line, IndentOfWidth(wanted, settings));
    } else if (state != State::kString) {
      indenter.SetIndent(line, isBlank ? "" : IndentOfWidth(std::max(0, column + shift), settings));
    }
    counter.Walk(buffer.Line(line));
  }
  indenter.PlaceSelection();
  return true;
}

}  // namespace quill::edit
