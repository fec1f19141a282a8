#include "text/search/ReplaceSession.h"

#include <algorithm>

#include "text/buffer/CrystalTextBuffer.h"
#include "text/search/ReplaceAll.h"

namespace quill {

ReplaceSession::ReplaceSession(ReplaceTarget& target, std::optional<TextPosition> start, TextRange block)
    : m_target(target), m_start(start), m_block(block) {}

void ReplaceSession::StartFrom(std::optional<TextPosition> start) {
  m_match.reset();
  m_start = start;
}

bool ReplaceSession::FindNext(const ReplaceRequest& request) {
  ForgetMatchOfOtherRequest(request);
  if (!m_match) return FindFrom(m_start, request);
  return FindFrom(TextPosition{m_match->at.line, m_match->at.character + 1}, request);
}

bool ReplaceSession::Replace(const ReplaceRequest& request) {
  ForgetMatchOfOtherRequest(request);
  ForgetMatchUnlessSelected();
  if (!m_match) return FindFrom(m_start, request);
  CCrystalTextBuffer& buffer = m_target.Buffer();
  const TextRange match = RangeOf(*m_match);
  m_movesBlockItself = request.inBlock;
  buffer.OpenUndoGroup();
  const bool replaced = m_target.ReplaceSelectedText(request.with);
  buffer.CloseUndoGroup(m_target.Source().hook);
  m_movesBlockItself = false;
  if (!replaced) return true;
  const TextPosition end = buffer.LastChange();
  if (request.inBlock) MoveBlock(match, end);
  return FindFrom(end, request);
}

int64_t ReplaceSession::ReplaceAll(const ReplaceRequest& request) {
  CCrystalTextBuffer& buffer = m_target.Buffer();
  if (buffer.IsReadOnly()) return 0;
  const bool hadMatch = m_match.has_value();
  ForgetMatchOfOtherRequest(request);
  ForgetMatchUnlessSelected();
  if (hadMatch && !m_match) m_start.reset();
  if (!m_match && !SearchFrom(m_start, request)) return 0;
  m_movesBlockItself = request.inBlock;
  const ReplaceAllOutcome outcome =
      ReplaceAllFrom(buffer, m_target.Source(), TextSearch(request.what, FlagsOf(request)), request.with,
                     m_match->at, ScopeOf(request).end);
  m_movesBlockItself = false;
  if (request.inBlock) m_block.end = outcome.blockEnd;
  m_target.PlaceCaret(outcome.lastEnd);
  StartFrom({});
  return outcome.count;
}

void ReplaceSession::OnTextChanged(const TextChange& change) {
  const auto move = [&change](TextPosition& place) {
    place =
        change.inserted ? PositionAfterInsert(place, change.range) : PositionAfterDelete(place, change.range);
  };
  if (m_start) move(*m_start);
  if (m_match) move(m_match->at);
  if (m_movesBlockItself) return;
  if (!change.inserted || m_block.start != change.range.start) move(m_block.start);  // the block grows
  move(m_block.end);
}

TextRange ReplaceSession::RangeOf(const Match& match) {
  return {match.at, {match.at.line, match.at.character + static_cast<int32_t>(match.what.size())}};
}

void ReplaceSession::ForgetMatchOfOtherRequest(const ReplaceRequest& request) {
  if (m_match && (m_match->what != request.what || m_match->flags != FlagsOf(request))) {
    StartFrom(m_match->at);
  }
  const auto isOutside = [this](TextPosition at) { return at < m_block.start || at >= m_block.end; };
  if (request.inBlock && m_match && isOutside(m_match->at)) StartFrom({});
  if (request.inBlock && m_start && isOutside(*m_start)) m_start.reset();
}

void ReplaceSession::ForgetMatchUnlessSelected() {
  if (m_match && !IsMatchSelected()) StartFrom(m_match->at);
}

bool ReplaceSession::FindFrom(std::optional<TextPosition> start, const ReplaceRequest& request) {
  if (!SearchFrom(start, request)) return false;
  m_target.SelectFound(m_match->at, static_cast<int32_t>(request.what.size()));
  return true;
}

bool ReplaceSession::SearchFrom(std::optional<TextPosition> start, const ReplaceRequest& request) {
  TextPosition found;
  const TextSearch search(request.what, FlagsOf(request));
  const TextRange scope = ScopeOf(request);
  if (search.FindInRange(m_target.Buffer(), start.value_or(scope.start), scope, false, found)) {
    m_match = Match{found, request.what, FlagsOf(request)};
    return true;
  }
  StartFrom({});
  return false;
}

TextRange ReplaceSession::ScopeOf(const ReplaceRequest& request) const {
  return request.inBlock ? m_block : TextRange{{}, m_target.Buffer().EndOfText()};
}

void ReplaceSession::MoveBlock(TextRange match, TextPosition end) {
  for (TextPosition* place : {&m_block.start, &m_block.end}) {
    if (*place <= match.start) continue;
    if (place->line == match.start.line) {
      place->character = std::max(place->character - match.end.character + end.character, 0);
    }
    place->line += end.line - match.start.line;
  }
}

}  // namespace quill
