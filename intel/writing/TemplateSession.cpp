#include "intel/writing/TemplateSession.h"

#include <algorithm>
#include <stdexcept>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

bool Touches(TextRange range, TextPosition place) {
  return range.start <= place && place <= range.end;
}

}  // namespace

TemplateSession::TemplateSession(TextPosition place, const TemplateText& inserted)
    : m_fields(inserted.fields.size()) {
  const auto inText = [place](TextPosition at) {
    return TextPosition{place.line + at.line, at.line == 0 ? place.character + at.character : at.character};
  };
  const auto lines = static_cast<int32_t>(std::count(inserted.text.begin(), inserted.text.end(), '\n'));
  const size_t lastLine = inserted.text.rfind('\n') + 1;  // 0 when there is one line
  m_range = {place, inText({lines, static_cast<int32_t>(inserted.text.size() - lastLine)})};
  for (size_t field = 0; field < m_fields; ++field) {
    for (const TextPosition at : inserted.fields[field]) {
      m_places.push_back({{inText(at), inText(at)}, field, field + 1 == m_fields});
    }
  }
  std::stable_sort(m_places.begin(), m_places.end(),
                   [](const Place& a, const Place& b) { return a.range.start < b.range.start; });
}

void TemplateSession::End() {
  m_places.clear();
  m_fields = 0;
}

TextPosition TemplateSession::Next() {
  if (!IsActive()) throw std::invalid_argument("the template has no further stop");
  const auto first = std::find_if(m_places.begin(), m_places.end(),
                                  [this](const Place& place) { return place.field == m_next; });
  ++m_next;
  m_written = static_cast<size_t>(first - m_places.begin());
  return first->range.end;
}

std::optional<size_t> TemplateSession::PlaceAt(TextPosition caret) const {
  if (m_written < m_places.size() && Touches(m_places[m_written].range, caret)) return m_written;
  for (size_t i = 0; i < m_places.size(); ++i) {
    if (Touches(m_places[i].range, caret)) return i;
  }
  return std::nullopt;
}

bool TemplateSession::HasUnequal(const CCrystalTextBuffer& buffer, size_t place) const {
  const auto text = [&buffer](TextRange range) { return buffer.PieceOf(range, range.start.line); };
  const Place& written = m_places[place];
  return std::any_of(m_places.begin(), m_places.end(), [&](const Place& other) {
    return other.field == written.field && text(other.range) != text(written.range);
  });
}

void TemplateSession::OnTextChange(const TextChange& change) {
  if (change.inserted) {
    // A place grows by what is written at its edges; those behind it move on.
    const std::optional<size_t> grown = PlaceAt(change.range.start);
    for (size_t i = 0; i < m_places.size(); ++i) {
      TextRange& range = m_places[i].range;
      if (grown && i < *grown) continue;
      if (i != grown) range.start = PositionAfterInsert(range.start, change.range);
      range.end = PositionAfterInsert(range.end, change.range);
    }
    m_range.start = PositionAfterInsert(m_range.start, change.range);
    m_range.end = PositionAfterInsert(m_range.end, change.range);
    return;
  }
  for (Place& place : m_places) {
    place.range.start = PositionAfterDelete(place.range.start, change.range);
    place.range.end = PositionAfterDelete(place.range.end, change.range);
  }
  m_range.start = PositionAfterDelete(m_range.start, change.range);
  m_range.end = PositionAfterDelete(m_range.end, change.range);
  if (m_range.IsEmpty()) End();
}

void TemplateSession::OnCaretMoved(TextPosition caret) {
  if (caret.line < m_range.start.line || caret.line > m_range.end.line) End();
}

}  // namespace quill
