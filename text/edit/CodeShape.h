#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

namespace quill::edit {

/// Reads lines from the top and knows how far the next one is to be indented: by its braces, by the headers
/// whose statement has no braces, by the cases of a switch, and by what is still open in parentheses. Strings
/// and comments are told from code as the colouring does. Broken code shifts what follows up to the next
/// brace.
class CodeShape {
 public:
  enum class State : uint8_t { kCode, kString, kBlockComment, kCharLiteral, kPreprocessor };

  explicit CodeShape(int32_t tabSize) : m_tabSize(tabSize) {}

  State AtLineStart() const { return m_state; }
  /// The column for a line that begins in code, `rest`, and stands at `column` now. When it is a comment,
  /// `next` is the line of code below it, which it goes with.
  int32_t WantedColumn(std::string_view rest, int32_t column, std::string_view next) const;
  /// Reads a line as it was, and as it is now: the two differ in their leading white space only.
  void Walk(std::string_view before, std::string_view line);

 private:
  enum class Header : uint8_t { kIf, kElse, kLoop, kSwitch };
  struct Control {
    Header header;
    bool complete = false;  ///< its statement comes next
    bool onThisLine = true;
  };
  struct Brace {
    int32_t level = 0;  ///< steps of the line that it belongs to
    bool isSwitch = false;
    bool inCase = false;
    bool isList = false;  ///< of values
    std::vector<Control> controls;
  };
  struct Parenthesis {
    int32_t place = 0;        ///< in its line
    int32_t indent = 0;       ///< of its line, in columns
    int32_t alignBefore = 0;  ///< the column of what follows it, -1 for nothing; as it was
    int32_t align = 0;        ///< and as it is
    bool onThisLine = true;
  };

  void Step(std::string_view line, size_t i);
  void StepInCode(std::string_view line, size_t i);
  void OnWord(std::string_view word);
  void OnStatementWord(std::string_view word);
  void OnSign(char c, size_t place);
  void OpenBrace();
  void CloseBrace();
  void CloseParenthesis();
  void EndStatement(std::vector<Control>&& controls);
  void BeginLine(std::string_view rest, int32_t columnBefore, int32_t column);
  void MeasureParentheses(std::string_view before, std::string_view line);

  int32_t Level() const;
  int32_t StepsOf(std::string_view rest) const;
  int32_t ColumnInParentheses(std::string_view rest, int32_t column) const;
  bool AwaitsStatement() const { return !m_controls.empty() && m_controls.back().complete; }
  /// True when a line goes on with what the one before began.
  bool Continues(std::string_view rest) const;

  int32_t m_tabSize;
  State m_state = State::kCode;
  bool m_onlyBlanks = true;
  std::vector<Brace> m_braces;
  std::vector<Parenthesis> m_parentheses;
  std::vector<Control> m_controls;  ///< headers whose statement has not ended, the outermost first
  std::vector<Control> m_ended;     ///< those of the statement that just did: an "else" may follow
  bool m_statementStart = true;
  bool m_inLabel = false;
  bool m_afterLabel = false;
  char m_lastToken = ';';         ///< its last character
  int32_t m_statementBefore = 0;  ///< column of the line that the statement began in, as it was
  int32_t m_statementColumn = 0;  ///< and as it is
};

}  // namespace quill::edit
