#pragma once
#include <cstddef>
#include <optional>
#include <vector>

#include "intel/writing/CodeTemplates.h"
#include "text/buffer/BufferObserver.h"
#include "text/buffer/TextPosition.h"

namespace quill {

class CCrystalTextBuffer;

/// Leads the caret from field to field of an inserted template while the text changes, and knows where what
/// was written into the fields is.
class TemplateSession {
 public:
  struct Place {
    TextRange range;      ///< what was written there
    size_t field = 0;     ///< in the order of Tab
    bool isLast = false;  ///< where Tab ends
  };

  TemplateSession() = default;
  /// `place` is where the template's text begins.
  TemplateSession(TextPosition place, const TemplateText& inserted);

  bool IsActive() const { return m_next < m_fields; }
  /// The next stop; throws std::invalid_argument when there is none.
  TextPosition Next();
  /// Ends the session when nothing of the template is left, as after an undo.
  void OnTextChange(const TextChange& change);
  /// Ends the session when the caret has left the template's lines.
  void OnCaretMoved(TextPosition caret);
  void End();

  /// The template's text and what was written into it.
  TextRange Range() const { return m_range; }
  /// In the order of the text.
  const std::vector<Place>& Places() const { return m_places; }
  /// The one that holds the caret or ends there; where two touch, the one that is being written.
  std::optional<size_t> PlaceAt(TextPosition caret) const;
  /// Whether a place and another one of its field hold different texts.
  bool HasUnequal(const CCrystalTextBuffer& buffer, size_t place) const;
  /// What is inserted from now on where places touch belongs to this one.
  void BeginWriting(size_t place) { m_written = place; }

 private:
  TextRange m_range;
  std::vector<Place> m_places;
  size_t m_fields = 0;
  size_t m_next = 0;     ///< the field that Tab goes to
  size_t m_written = 0;  ///< the place that is being written
};

}  // namespace quill
