#pragma once
#include <cstdint>
#include <memory>

#include "text/buffer/BufferObserver.h"
#include "text/parse/BraceIndex.h"
#include "text/parse/FoldDepthIndex.h"
#include "text/parse/FoldMap.h"
#include "text/parse/FoldSettler.h"
#include "text/parse/LineStateCache.h"

namespace quill {

/// What follows from the lines of a text: parse states, folds, depths, braces. It is the text's and not a
/// view's: block marks and hidden flags lie in the buffer, and what has yet to be parsed must be known to
/// whoever parses. All views of a buffer share one, which the buffer tells of each change before the views.
class ParsedText : public BufferObserver {
 public:
  /// That of a buffer; it is made when there is none and goes with the last who keeps it. The buffer must
  /// live longer.
  static std::shared_ptr<ParsedText> Of(CCrystalTextBuffer& buffer);

  explicit ParsedText(CCrystalTextBuffer& buffer)
      : m_folds(buffer),
        m_settler(buffer, m_folds),
        m_states(buffer, m_settler),
        m_depths(buffer, m_states),
        m_braces(buffer) {}
  ParsedText(const ParsedText&) = delete;
  ParsedText& operator=(const ParsedText&) = delete;

  LineStateCache& States() { return m_states; }
  const FoldMap& Folds() const { return m_folds; }
  FoldDepthIndex& Depths() { return m_depths; }
  BraceIndex& Braces() { return m_braces; }

  // Of BufferObserver
  void OnBufferUpdate(const BufferObserver* source, const TextChange* change, uint32_t hints,
                      int32_t line) override;

 private:
  FoldMap m_folds;
  FoldSettler m_settler;
  LineStateCache m_states;
  FoldDepthIndex m_depths;
  BraceIndex m_braces;
};

}  // namespace quill
