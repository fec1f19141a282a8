#include "text/edit/AutoClosers.h"

#include <algorithm>
#include <utility>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {

void AutoClosers::Add(CCrystalTextBuffer& buffer, TextPosition place) {
  if (m_buffer != &buffer) {
    Clear();
    m_buffer = &buffer;
    buffer.AddView(this);
  }
  if (m_places.size() == kMost) m_places.erase(m_places.begin());
  m_places.push_back(place);
}

bool AutoClosers::Has(const CCrystalTextBuffer& buffer, TextPosition place) const {
  return m_buffer == &buffer && std::find(m_places.begin(), m_places.end(), place) != m_places.end();
}

void AutoClosers::Remove(TextPosition place) {
  std::erase(m_places, place);
}

void AutoClosers::Clear() {
  m_places.clear();
  if (m_buffer != nullptr) std::exchange(m_buffer, nullptr)->RemoveView(this);
}

void AutoClosers::OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t hints, int32_t) {
  if ((hints & hint::kReset) != 0) m_places.clear();
  if (change == nullptr) return;
  const TextRange range = change->range;
  if (!change->inserted) {
    std::erase_if(m_places, [&](TextPosition place) { return range.start <= place && place < range.end; });
  }
  for (TextPosition& place : m_places) {
    place = change->inserted ? PositionAfterInsert(place, range) : PositionAfterDelete(place, range);
  }
}

}  // namespace quill
