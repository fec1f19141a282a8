#pragma once
#include <QObject>
#include <functional>

#include "text/buffer/BufferObserver.h"

namespace quill {

class CCrystalTextBuffer;
class CCrystalTextView;

/// Tells of every change of the text that a view shows, and of the view's getting another text.
class TextWatch : public QObject, private BufferObserver {
 public:
  struct Callbacks {
    /// Arguments as in `BufferObserver::OnBufferUpdate`.
    std::function<void(const TextChange* change, uint32_t hints, int32_t line)> changed;
    std::function<void()> replaced;
  };

  TextWatch(CCrystalTextView& view, Callbacks callbacks);
  ~TextWatch() override;

 private:
  void Follow(CCrystalTextBuffer* buffer);
  void OnBufferUpdate(const BufferObserver* source, const TextChange* change, uint32_t hints,
                      int32_t line) override;

  Callbacks m_callbacks;
  CCrystalTextBuffer* m_buffer = nullptr;
};

}  // namespace quill
