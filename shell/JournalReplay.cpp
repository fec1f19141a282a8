#include "shell/JournalReplay.h"

#include <stdexcept>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

/// Appends lines at the end of a text that is being built up.
void AppendLines(CCrystalTextBuffer& text, std::vector<std::string_view> lines, bool first) {
  if (lines.empty()) return;
  if (!first) lines.insert(lines.begin(), std::string_view());
  TextPosition end;
  text.InsertLinesAt(nullptr, text.EndOfText(), lines, end);
}

/// Collects what was typed when the text around it is not known: insertions that continue one another
/// become one run, a run a paragraph of lines; what was deleted off the end of a run leaves it.
class TypedRuns {
 public:
  explicit TypedRuns(CCrystalTextBuffer& text) : m_text(text) {}

  void Insert(const journal::Insertion& insertion) {
    if (m_anything && insertion.at == m_at) {
      m_text.InsertLinesAt(nullptr, m_text.EndOfText(), insertion.lines, m_end);
    } else {
      AppendLines(m_text, insertion.lines, !m_anything);
      m_start = insertion.at;
    }
    m_anything = true;
    const auto added = static_cast<int64_t>(insertion.lines.size()) - 1;
    const auto length = static_cast<int64_t>(insertion.lines.back().size());
    m_at = {static_cast<int32_t>(insertion.at.line + added),
            static_cast<int32_t>(added == 0 ? insertion.at.character + length : length)};
  }

  void Delete(TextRange range) {
    const bool offTheEnd =
        m_anything && range.end == m_at && range.start >= m_start && range.start.line == range.end.line;
    if (!offTheEnd) {
      m_at = {-1, -1};  // nothing continues here
      return;
    }
    const TextPosition end = m_text.EndOfText();
    const int32_t count = range.end.character - range.start.character;
    if (count > end.character) return;
    m_text.DeleteRange(nullptr, {{end.line, end.character - count}, end});
    m_at = range.start;
  }

  bool Anything() const { return m_anything; }

 private:
  CCrystalTextBuffer& m_text;
  TextPosition m_start;  ///< of the run, in the unknown text
  TextPosition m_at;     ///< its end there
  TextPosition m_end;
  bool m_anything = false;
};

class Replay {
 public:
  Replay(const BaseLoader& loadBase, CCrystalTextBuffer& text)
      : m_loadBase(loadBase), m_text(text), m_typed(text) {}

  /// False when the record cannot follow the ones before.
  bool Take(const journal::Record& record) {
    if (!m_header) return record.type == journal::RecordType::kHeader && Start(record.payload);
    switch (record.type) {
      case journal::RecordType::kLines:
        return TakeLines(record.payload);
      case journal::RecordType::kTextComplete:
        return !m_complete && journal::ReadNumber(record.payload) == LinesSoFar() && (m_complete = true);
      case journal::RecordType::kInsert:
        return m_complete && Insert(record.payload);
      case journal::RecordType::kDelete:
        return m_complete && Delete(record.payload);
      case journal::RecordType::kLineEndStyle:
        return m_complete && SetStyle(journal::ReadNumber(record.payload));
      default:
        return false;
    }
  }

  ReplayResult Result() const {
    if (!m_header) return {};
    RecoveredText kind = m_complete ? RecoveredText::kWhole : RecoveredText::kBeginning;
    if (m_typedOnly) kind = m_typed.Anything() ? RecoveredText::kTypedOnly : RecoveredText::kNothing;
    if (!m_complete && !m_anyLines) kind = RecoveredText::kNothing;
    return {kind, m_header, false};
  }

 private:
  bool Start(std::string_view payload) {
    m_header = journal::ReadHeader(payload);
    if (!m_header || !IsStyle(m_header->style)) {
      m_header.reset();
      return false;
    }
    m_text.NewBuffer(m_header->style);
    m_complete = m_header->base != journal::Base::kLines;
    if (m_header->base == journal::Base::kFile && !m_loadBase(*m_header, m_text)) {
      m_text.NewBuffer(m_header->style);
      m_typedOnly = true;
    }
    m_text.SetReadOnly(false);
    return true;
  }

  static bool IsStyle(int32_t style) { return style >= line_end::kCrLf && style <= line_end::kLf; }

  bool SetStyle(std::optional<int32_t> style) {
    if (!style || !IsStyle(*style)) return false;
    m_text.SetLineEndStyle(*style);
    return true;
  }

  int32_t LinesSoFar() const { return m_anyLines ? m_text.LineCount() : 0; }

  bool TakeLines(std::string_view payload) {
    const auto lines = journal::ReadLines(payload);
    if (m_complete || !lines || lines->empty()) return false;
    AppendLines(m_text, *lines, !m_anyLines);
    m_anyLines = true;
    return true;
  }

  bool Insert(std::string_view payload) {
    const auto insertion = journal::ReadInsert(payload);
    if (!insertion) return false;
    if (m_typedOnly) {
      m_typed.Insert(*insertion);
      return true;
    }
    TextPosition end;
    return m_text.InsertLinesAt(nullptr, insertion->at, insertion->lines, end);
  }

  bool Delete(std::string_view payload) {
    const auto range = journal::ReadDelete(payload);
    if (!range) return false;
    if (m_typedOnly) {
      m_typed.Delete(*range);
      return true;
    }
    return m_text.DeleteRange(nullptr, *range);
  }

  const BaseLoader& m_loadBase;
  CCrystalTextBuffer& m_text;
  TypedRuns m_typed;
  std::optional<journal::Header> m_header;
  bool m_complete = false;  ///< the text that the edits apply to is there
  bool m_anyLines = false;
  bool m_typedOnly = false;
};

}  // namespace

ReplayResult ReplayJournal(std::string_view bytes, const BaseLoader& loadBase, CCrystalTextBuffer& text) {
  text.NewBuffer();
  if (!bytes.starts_with(journal::kMagic)) return {RecoveredText::kNothing, {}, true};
  bytes.remove_prefix(journal::kMagic.size());
  Replay replay(loadBase, text);
  bool good = true;
  while (good) {
    const std::optional<journal::Record> record = journal::TakeRecord(bytes);
    if (!record) break;
    try {
      good = replay.Take(*record);
    } catch (const std::invalid_argument&) {
      good = false;  // a place outside the text
    }
  }
  ReplayResult result = replay.Result();
  result.cutShort = !good || !bytes.empty();
  return result;
}

}  // namespace quill
