#pragma once
#include <QObject>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "text/buffer/BufferObserver.h"
#include "text/view/OffsetIndex.h"

namespace quill {

class CCrystalTextBuffer;
class CCrystalTextView;

/// Tells assistive technology what happens to a view's text, caret and selection, once an edit is whole and
/// in the order in which it was done. While none is active that costs a question an edit.
class TextAnnouncer : public QObject, private BufferObserver {
 public:
  /// Lives as long as the view.
  explicit TextAnnouncer(CCrystalTextView& view);
  ~TextAnnouncer() override;

  /// Of the view's text, which is there; made when it is first asked for.
  OffsetIndex& Offsets();
  /// The same for the interfaces, which count in `int`: places further on are at its end.
  int OffsetOf(TextPosition position);

 private:
  /// Text that came or went.
  struct Change {
    bool inserted;
    int offset;
    std::string text;  ///< lines parted by "\n"
  };

  void Follow(CCrystalTextBuffer* buffer);
  void OnDeleting(TextRange range) override;
  void OnBufferUpdate(const BufferObserver* source, const TextChange* change, uint32_t hints,
                      int32_t line) override;
  void Add(bool inserted, TextRange range);
  /// The text is another one, or too much of it changed to be told piece by piece.
  void TellAsAWhole();
  void TellSoon();
  /// Nobody listens: what was gathered goes.
  void Forget();
  void Tell();
  void TellChanges();
  void TellCaret();
  void TellSelection();

  CCrystalTextView& m_view;
  CCrystalTextBuffer* m_buffer = nullptr;
  std::unique_ptr<OffsetIndex> m_offsets;
  std::vector<Change> m_changes;
  size_t m_characters = 0;  ///< in these changes
  bool m_allChanged = false;
  bool m_willTell = false;
  int m_caret = 0;  ///< as told
  /// As told; an empty one for none.
  TextRange m_selection;
  bool m_columns = false;
};

}  // namespace quill
