#include "text/edit/CodeShape.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/CodePage1252.h"
#include "text/edit/Indentation.h"
#include "text/view/VisualColumns.h"

namespace quill::edit {
namespace {

std::string FirstWord(std::string_view text) {
  const auto* end = std::find_if_not(text.begin(), text.end(), [](char c) { return cp1252::IsWordChar(c); });
  return cp1252::ToLower({text.begin(), end});
}

bool IsLabel(std::string_view word) {
  return word == "case" || word == "default";
}

bool IsComment(std::string_view text) {
  return text.starts_with("//") || text.starts_with("/*");
}

/// Behind one of these, or in front of one, a statement is not at its end.
bool Joins(char c) {
  constexpr std::string_view kJoining = "+-*/%=&|^?";
  return kJoining.find(c) != std::string_view::npos;
}

}  // namespace

// What a line is to look like

int32_t CodeShape::WantedColumn(std::string_view rest, int32_t column, std::string_view next) const {
  if (!m_parentheses.empty() && !rest.starts_with('}')) return ColumnInParentheses(rest, column);
  if (Continues(rest)) {
    const int32_t further = column - m_statementBefore;
    return m_statementColumn + (further > 0 ? further : m_tabSize);
  }
  if (IsComment(rest) && (next.starts_with('{') || IsLabel(FirstWord(next)) || FirstWord(next) == "else")) {
    rest = next;
  }
  return StepsOf(rest) * m_tabSize;
}

int32_t CodeShape::ColumnInParentheses(std::string_view rest, int32_t column) const {
  for (auto open = m_parentheses.rbegin(); open != m_parentheses.rend(); ++open) {
    if (open->alignBefore >= 0 && column == open->alignBefore) return open->align;
  }
  const Parenthesis& innermost = m_parentheses.back();
  const bool closes = rest.starts_with(')') || rest.starts_with(']');
  if (closes && innermost.alignBefore >= 0 && column == innermost.alignBefore - 1) return innermost.align - 1;
  return closes ? innermost.indent : innermost.indent + m_tabSize;
}

bool CodeShape::Continues(std::string_view rest) const {
  if (m_statementStart || m_inLabel || rest.starts_with('{') || rest.starts_with('}')) return false;
  if (!m_braces.empty() && m_braces.back().isList) return false;
  return Joins(m_lastToken) || m_lastToken == ',' || (Joins(rest.front()) && !IsComment(rest));
}

int32_t CodeShape::Level() const {
  if (m_braces.empty()) return 0;
  return m_braces.back().level + 1 + (m_braces.back().inCase ? 1 : 0);
}

int32_t CodeShape::StepsOf(std::string_view rest) const {
  const size_t closing = std::min(rest.find_first_not_of('}'), rest.size());
  if (closing > 0) return closing > m_braces.size() ? 0 : m_braces[m_braces.size() - closing].level;
  const auto controls = static_cast<int32_t>(m_controls.size());
  if (rest.starts_with('{')) {
    return Level() + controls - (m_afterLabel || (m_statementStart && AwaitsStatement()) ? 1 : 0);
  }
  const std::string word = FirstWord(rest);
  if (IsLabel(word) && controls == 0 && !m_braces.empty() && m_braces.back().isSwitch) {
    return m_braces.back().level + 1;
  }
  if (word == "else") {
    for (size_t i = m_ended.size(); i-- > 0;) {
      if (m_ended[i].header == Header::kIf) return Level() + static_cast<int32_t>(i);
    }
  }
  return Level() + controls;
}

// Reading

void CodeShape::Walk(std::string_view before, std::string_view line) {
  const int32_t blanks = LeadingWhiteSpace(line);
  if (m_state == State::kCode && blanks < static_cast<int32_t>(line.size())) {
    BeginLine(line.substr(static_cast<size_t>(blanks)),
              ColumnOf(before, LeadingWhiteSpace(before), m_tabSize), ColumnOf(line, blanks, m_tabSize));
  }
  m_onlyBlanks = m_state != State::kString;
  for (size_t i = 0; i < line.size(); ++i) {
    if (m_state == State::kCode && line.substr(i).starts_with("//")) break;
    Step(line, i);
  }
  // Literals of one character and preprocessor lines end with their line.
  if (m_state == State::kCharLiteral || m_state == State::kPreprocessor) m_state = State::kCode;
  MeasureParentheses(before, line);
  for (Control& control : m_controls) control.onThisLine = false;
}

void CodeShape::BeginLine(std::string_view rest, int32_t columnBefore, int32_t column) {
  if (!m_parentheses.empty() || Continues(rest)) return;
  m_statementBefore = columnBefore;
  m_statementColumn = column;
  // What has no ";" at its end has ended all the same.
  if (!m_inLabel && (m_controls.empty() || AwaitsStatement())) m_statementStart = true;
}

void CodeShape::MeasureParentheses(std::string_view before, std::string_view line) {
  const int32_t moved = LeadingWhiteSpace(before) - LeadingWhiteSpace(line);
  for (Parenthesis& open : m_parentheses) {
    if (!std::exchange(open.onThisLine, false)) continue;
    open.indent = ColumnOf(line, LeadingWhiteSpace(line), m_tabSize);
    open.align = open.alignBefore = -1;
    const size_t next = line.find_first_not_of("\t ", static_cast<size_t>(open.place) + 1);
    if (next == std::string_view::npos || IsComment(line.substr(next))) continue;
    open.align = ColumnOf(line, static_cast<int32_t>(next), m_tabSize);
    open.alignBefore = ColumnOf(before, static_cast<int32_t>(next) + moved, m_tabSize);
  }
}

void CodeShape::Step(std::string_view line, size_t i) {
  const char before = i == 0 ? '\0' : line[i - 1];
  const char c = line[i];
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
      StepInCode(line, i);
  }
}

void CodeShape::StepInCode(std::string_view line, size_t i) {
  const char before = i == 0 ? '\0' : line[i - 1];
  const char c = line[i];
  if (c == '"') m_state = State::kString;
  if (c == '\'') m_state = State::kCharLiteral;
  if (before == '/' && c == '*') m_state = State::kBlockComment;
  if (c == '#' && m_onlyBlanks) m_state = State::kPreprocessor;
  m_onlyBlanks = m_onlyBlanks && cp1252::IsSpace(c);
  const bool opensComment = c == '/' && line.substr(i).starts_with("/*");
  if (cp1252::IsSpace(c) || opensComment || m_state == State::kBlockComment ||
      m_state == State::kPreprocessor) {
    return;
  }
  if (!cp1252::IsWordChar(c)) {
    OnSign(c, i);
  } else if (!cp1252::IsWordChar(before)) {
    OnWord(FirstWord(line.substr(i)));
  }
}

void CodeShape::OnWord(std::string_view word) {
  if (std::exchange(m_statementStart, false) && m_parentheses.empty()) OnStatementWord(word);
  m_afterLabel = false;
  m_lastToken = 'a';
}

void CodeShape::OnStatementWord(std::string_view word) {
  std::vector<Control> ended = std::exchange(m_ended, {});
  if (word == "else") {
    while (!ended.empty() && ended.back().header != Header::kIf) ended.pop_back();
    if (ended.empty()) return;
    m_controls = std::move(ended);
    m_controls.back() = {Header::kElse, true};
    m_statementStart = true;
  } else if (word == "if") {
    const bool elseIf =
        AwaitsStatement() && m_controls.back().header == Header::kElse && m_controls.back().onThisLine;
    if (elseIf) m_controls.pop_back();
    m_controls.push_back({Header::kIf});
  } else if (word == "while" || word == "for") {
    m_controls.push_back({Header::kLoop});
  } else if (word == "switch") {
    m_controls.push_back({Header::kSwitch});
  } else if (word == "do") {
    m_controls.push_back({Header::kLoop, true});
    m_statementStart = true;
  } else if (IsLabel(word) && m_controls.empty() && !m_braces.empty() && m_braces.back().isSwitch) {
    m_braces.back().inCase = true;
    m_inLabel = true;
  }
}

void CodeShape::OnSign(char c, size_t place) {
  const bool wasStart = m_statementStart;
  const bool wasAfterLabel = std::exchange(m_afterLabel, false);
  m_statementStart = false;
  if (wasStart && c != '}') m_ended.clear();
  switch (c) {
    case '(':
    case '[':
      m_parentheses.push_back({static_cast<int32_t>(place)});
      break;
    case ')':
    case ']':
      CloseParenthesis();
      break;
    case '{':
      m_statementStart = wasStart;
      m_afterLabel = wasAfterLabel;
      OpenBrace();
      break;
    case '}':
      CloseBrace();
      break;
    case ';':
      if (m_parentheses.empty()) EndStatement(std::exchange(m_controls, {}));
      break;
    case ':':
      if (!std::exchange(m_inLabel, false)) break;
      m_statementStart = m_afterLabel = true;
      break;
    default:
      break;
  }
  m_lastToken = c;
}

void CodeShape::CloseParenthesis() {
  if (!m_parentheses.empty()) m_parentheses.pop_back();
  if (!m_parentheses.empty() || m_controls.empty() || m_controls.back().complete) return;
  m_controls.back().complete = true;
  m_statementStart = true;
}

void CodeShape::OpenBrace() {
  Brace brace;
  const bool isBody = m_statementStart && AwaitsStatement();
  brace.level = Level() + static_cast<int32_t>(m_controls.size()) - (isBody || m_afterLabel ? 1 : 0);
  brace.isSwitch = isBody && m_controls.back().header == Header::kSwitch;
  brace.isList =
      m_lastToken == '=' || !m_parentheses.empty() || (!m_braces.empty() && m_braces.back().isList);
  brace.controls = std::exchange(m_controls, {});
  m_braces.push_back(std::move(brace));
  m_parentheses.clear();
  m_inLabel = m_afterLabel = false;
  m_statementStart = true;
}

void CodeShape::CloseBrace() {
  m_parentheses.clear();
  m_inLabel = false;
  if (m_braces.empty()) return EndStatement({});
  Brace brace = std::move(m_braces.back());
  m_braces.pop_back();
  if (brace.isList) {
    m_controls = std::move(brace.controls);
  } else {
    EndStatement(std::move(brace.controls));
  }
}

void CodeShape::EndStatement(std::vector<Control>&& controls) {
  m_ended = std::move(controls);
  m_controls.clear();
  m_statementStart = true;
}

}  // namespace quill::edit
