#include "text/view/OffsetIndex.h"

#include <algorithm>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {

OffsetIndex::OffsetIndex(const CCrystalTextBuffer& buffer, int32_t stride)
    : m_buffer(buffer), m_stride(std::max(stride, 1)) {
  InsertBlocks(0, 0, buffer.LineCount());
}

int64_t OffsetIndex::SizeOf(int32_t line) const {
  return int64_t{m_buffer.LineLength(line)} + 1;
}

void OffsetIndex::InsertBlocks(size_t at, int32_t first, int32_t lines) {
  std::vector<Block> blocks;
  for (const int32_t end = first + lines; first < end;) {
    Block block{std::min(m_stride, end - first), 0};
    for (int32_t i = 0; i < block.lines; ++i) block.characters += SizeOf(first + i);
    first += block.lines;
    blocks.push_back(block);
  }
  m_blocks.insert(m_blocks.begin() + static_cast<std::ptrdiff_t>(at), blocks.begin(), blocks.end());
}

OffsetIndex::Place OffsetIndex::Find(int32_t line) const {
  Place place{0, 0, 0};
  while (place.block + 1 < m_blocks.size() && place.firstLine + m_blocks[place.block].lines <= line) {
    place.firstLine += m_blocks[place.block].lines;
    place.offset += m_blocks[place.block].characters;
    ++place.block;
  }
  return place;
}

void OffsetIndex::OnTextChange(const TextChange& change) {
  const TextRange& range = change.range;
  const int32_t lines = range.end.line - range.start.line;
  const Place first = Find(range.start.line);
  if (lines == 0) {
    const int32_t characters = range.end.character - range.start.character;
    m_blocks[first.block].characters += change.inserted ? characters : -characters;
    return;
  }
  // Blocks that the change touches are measured anew.
  const size_t last = change.inserted ? first.block : Find(range.end.line).block;
  int32_t touched = change.inserted ? lines : -lines;
  for (size_t i = first.block; i <= last; ++i) touched += m_blocks[i].lines;
  const auto begin = m_blocks.begin() + static_cast<std::ptrdiff_t>(first.block);
  m_blocks.erase(begin, begin + static_cast<std::ptrdiff_t>(last - first.block + 1));
  InsertBlocks(first.block, first.firstLine, touched);
}

int64_t OffsetIndex::Length() const {
  int64_t characters = 0;
  for (const Block& block : m_blocks) characters += block.characters;
  return std::max<int64_t>(characters - 1, 0);
}

int64_t OffsetIndex::OffsetOf(TextPosition position) const {
  Place place = Find(position.line);
  for (; place.firstLine < position.line; ++place.firstLine) place.offset += SizeOf(place.firstLine);
  return place.offset + position.character;
}

TextPosition OffsetIndex::PositionAt(int64_t offset) const {
  if (offset <= 0 || m_blocks.empty()) return {};
  int32_t line = 0;
  for (const Block& block : m_blocks) {
    if (offset < block.characters) {
      for (; offset >= SizeOf(line); ++line) offset -= SizeOf(line);
      return {line, static_cast<int32_t>(offset)};
    }
    offset -= block.characters;
    line += block.lines;
  }
  return m_buffer.EndOfText();
}

}  // namespace quill
