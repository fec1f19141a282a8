#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "text/buffer/BufferObserver.h"
#include "text/buffer/TextPosition.h"

namespace quill {

class CCrystalTextBuffer;

/// Where the closing brackets stand that the editor has inserted by itself and that were not typed since.
/// They move with the text. Watches the text that they are in; `Clear` before that goes away.
class AutoClosers : public BufferObserver {
 public:
  AutoClosers() = default;
  AutoClosers(const AutoClosers&) = delete;
  AutoClosers& operator=(const AutoClosers&) = delete;
  ~AutoClosers() override { Clear(); }

  void Add(CCrystalTextBuffer& buffer, TextPosition place);
  bool Has(const CCrystalTextBuffer& buffer, TextPosition place) const;
  void Remove(TextPosition place);
  void Clear();

  // Of BufferObserver
  void OnBufferUpdate(const BufferObserver* source, const TextChange* change, uint32_t hints,
                      int32_t line) override;

 private:
  static constexpr size_t kMost = 256;  ///< each costs a little with every key

  CCrystalTextBuffer* m_buffer = nullptr;
  std::vector<TextPosition> m_places;
};

}  // namespace quill
