#pragma once
#include <functional>
#include <utility>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {

/// The buffer of a document: says when the text becomes modified or ceases to be.
class ScriptBuffer final : public CCrystalTextBuffer {
 public:
  using CCrystalTextBuffer::CCrystalTextBuffer;

  void SetModified(bool modified) override {
    const bool changed = modified != IsModified();
    CCrystalTextBuffer::SetModified(modified);
    if (changed && m_modifiedChanged) m_modifiedChanged(modified);
  }
  void OnModifiedChanged(std::function<void(bool)> callback) { m_modifiedChanged = std::move(callback); }

 private:
  std::function<void(bool)> m_modifiedChanged;
};

}  // namespace quill
