#include "text/view/TextViewModel.h"

#include <utility>

#include "base/UiThread.h"

namespace quill {

TextViewModel::Parts::Parts(CCrystalTextBuffer& buffer, const ColumnMetrics& metrics, ParseListener& view)
    : listener(view), parsed(ParsedText::Of(buffer)), longLines(buffer), widths(buffer, metrics) {
  parsed->States().AddListener(&listener);
}

TextViewModel::Parts::~Parts() {
  parsed->States().RemoveListener(&listener);
}

TextViewModel::~TextViewModel() {
  SetBuffer(nullptr);
}

void TextViewModel::SetBuffer(CCrystalTextBuffer* buffer) {
  AssertUiThread();
  if (m_buffer != nullptr) m_buffer->RemoveView(this);
  m_buffer = buffer;
  m_parts.reset();
  if (buffer != nullptr) buffer->AddView(this);
  Reset();
}

void TextViewModel::Reset() {
  m_places.Clear();
  m_caret = m_anchor = {};
  m_anchorColumn = m_caretColumn = -1;
  m_columnMode = false;
  m_parts.reset();
  if (m_buffer != nullptr && m_buffer->LineCount() > 0)
    m_parts = std::make_unique<Parts>(*m_buffer, m_metrics, static_cast<ParseListener&>(*this));
  DamageEverything();
}

void TextViewModel::SetMetrics(const ColumnMetrics::Advances& advances, int32_t tabSize) {
  AssertUiThread();
  m_tabSize = tabSize;
  m_metrics.Set(advances, tabSize);
  m_places.Clear();
  if (m_parts) m_parts->widths.Restart();
  DamageEverything();
}

// Damage

void TextViewModel::Wake() {
  AssertUiThread();
  if (m_damage.IsEmpty() && m_onDamage) m_onDamage();
}

ViewDamage TextViewModel::TakeDamage() {
  AssertUiThread();
  return std::exchange(m_damage, ViewDamage{});
}

void TextViewModel::DamageLines(int32_t first, int32_t last) {
  Wake();
  m_damage.Add(first, last);
}

void TextViewModel::DamageEverything() {
  Wake();
  m_damage.everything = m_damage.layout = true;
}

void TextViewModel::ParseThrough(int32_t line) {
  if (!HasText()) return;
  States().ParseThrough(std::min(line, m_buffer->LineCount() - 1));
}

void TextViewModel::OnReparsed(std::optional<LineRange> changed, bool marksChanged) {
  if (changed) DamageLines(changed->first, changed->last);
  if (marksChanged) DamageLines(0, m_buffer->LineCount() - 1);
}

// Places

int64_t TextViewModel::XOf(TextPosition position) {
  return m_places.XOf(position.line, m_buffer->Line(position.line), position.character);
}

int32_t TextViewModel::CharacterAt(int32_t line, int64_t x, bool nearest) {
  return m_places.CharacterAt(line, m_buffer->Line(line), x, nearest);
}

int64_t TextViewModel::XOfCorner(BlockCorner corner) {
  const TextPosition place = PlaceOf(corner);
  const int32_t beyond = corner.column - CornerOf(place, -1).column;
  return XOf(place) + std::max(beyond, 0) * int64_t{m_metrics.Advance(' ')};
}

BlockCorner TextViewModel::CornerAt(int32_t line, int64_t x) {
  const TextPosition end{line, m_buffer->LineLength(line)};
  const int64_t beyond = x - XOf(end);
  if (beyond <= 0) return CornerOf({line, CharacterAt(line, x, true)}, -1);
  const int64_t blank = std::max(m_metrics.Advance(' '), 1);
  return {line, CornerOf(end, -1).column + static_cast<int32_t>((beyond + blank / 2) / blank)};
}

BlockCorner TextViewModel::CornerOf(TextPosition place, int32_t column) const {
  if (!HasText()) return {};
  return {place.line,
          column >= 0 ? column : ColumnOf(m_buffer->Line(place.line), place.character, m_tabSize)};
}

TextPosition TextViewModel::PlaceOf(BlockCorner corner) const {
  const int32_t line = Clamp({corner.line, 0}).line;
  return {line, HasText() ? CharacterAtColumn(m_buffer->Line(line), corner.column, m_tabSize) : 0};
}

// Caret and selection

TextPosition TextViewModel::Clamp(TextPosition position) const {
  if (!HasText()) return {};
  if (position.line >= m_buffer->LineCount()) return m_buffer->EndOfText();
  if (position.line < 0) return {};
  return {position.line, std::clamp(position.character, 0, m_buffer->LineLength(position.line))};
}

void TextViewModel::SetSelection(TextPosition anchor, TextPosition caret) {
  AssertUiThread();
  const TextPosition oldAnchor = m_anchor;
  const TextPosition oldCaret = m_caret;
  const bool wasSelection = HasSelection();
  m_anchor = Clamp(anchor);
  m_caret = Clamp(caret);
  m_anchorColumn = m_caretColumn = -1;
  if (m_columnMode || oldAnchor != m_anchor) {
    DamageLines(std::min({oldAnchor.line, oldCaret.line, m_anchor.line, m_caret.line}),
                std::max({oldAnchor.line, oldCaret.line, m_anchor.line, m_caret.line}));
  }
  if (wasSelection || HasSelection()) {
    DamageLines(std::min(oldCaret.line, m_caret.line), std::max(oldCaret.line, m_caret.line));
  } else if (oldCaret.line != m_caret.line || oldCaret.character != m_caret.character) {
    DamageLines(oldCaret.line, oldCaret.line);
    // The two lines may be far apart; the view adds the new one by itself.
  }
}

void TextViewModel::SetColumnSelection(bool columns) {
  AssertUiThread();
  if (m_columnMode == columns) return;
  m_columnMode = columns;
  m_anchorColumn = m_caretColumn = -1;
  const TextRange range = Selection();
  DamageLines(range.start.line, range.end.line);
}

void TextViewModel::SetBlock(BlockCorner anchor, BlockCorner caret) {
  SetColumnSelection(true);
  SetSelection(PlaceOf(anchor), PlaceOf(caret));
  m_anchorColumn = anchor.column;
  m_caretColumn = caret.column;
}

// What the buffer tells

void TextViewModel::OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t hints,
                                   int32_t line) {
  if ((hints & hint::kReset) != 0 || m_parts == nullptr) {
    Reset();
    return;
  }
  m_parts->longLines.OnTextChange(change, hints, line);
  if (change != nullptr) {
    OnTextChange(*change);
  } else {
    DamageForFlags(hints, line);
  }
}

void TextViewModel::OnTextChange(const TextChange& change) {
  m_parts->widths.OnTextChange(change);
  const TextRange& range = change.range;
  const auto moved = [&](TextPosition p) {
    if (p < range.start) return p;
    return Clamp(change.inserted ? PositionAfterInsert(p, range) : PositionAfterDelete(p, range));
  };
  const auto touches = [&](TextPosition p) {
    return p.line >= range.start.line && p.line <= (change.inserted ? range.start.line : range.end.line);
  };
  if (touches(m_anchor) || touches(m_caret)) m_anchorColumn = m_caretColumn = -1;
  m_caret = moved(m_caret);
  m_anchor = moved(m_anchor);
  Wake();
  m_damage.layout = true;
  if (range.start.line == range.end.line) {
    m_places.OnLineChanged(range.start.line, range.start.character);
    m_damage.Add(range.start.line, range.start.line);
  } else {
    m_places.Clear();
    m_damage.AddDownFrom(range.start.line);
  }
}

void TextViewModel::DamageForFlags(uint32_t hints, int32_t line) {
  if ((hints & hint::kSingleLine) != 0) {
    DamageLines(line, line);
  } else {
    DamageEverything();
  }
}

void TextViewModel::OnUndoGroupClosed(int32_t action, std::string_view text) {
  if (m_onGroup) m_onGroup(action, text);
}

}  // namespace quill
