#pragma once
#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>

#include "text/buffer/BufferObserver.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "text/parse/LongLine.h"
#include "text/parse/ParsedText.h"
#include "text/view/ColumnMetrics.h"
#include "text/view/VisualColumns.h"
#include "text/view/WidthIndex.h"

namespace quill {

/// What a view must repaint, in lines.
struct ViewDamage {
  int32_t first = std::numeric_limits<int32_t>::max();
  int32_t last = -1;
  bool everything = false;
  bool layout = false;  ///< the number of rows or the text's width may have changed

  bool IsEmpty() const { return !everything && !layout && first > last; }
  void Add(int32_t from, int32_t to) {
    first = std::min(first, from);
    last = std::max(last, to);
  }
  void AddDownFrom(int32_t line) { Add(line, std::numeric_limits<int32_t>::max()); }
};

/// Everything about a view of a text that needs no window: caret and selection, rows and places, and what
/// must be repainted after a change. What was parsed it shares with the other views of the text.
class TextViewModel : public BufferObserver, public EditHook, private ParseListener {
 public:
  TextViewModel() = default;
  TextViewModel(const TextViewModel&) = delete;
  TextViewModel& operator=(const TextViewModel&) = delete;
  ~TextViewModel() override;

  /// Null detaches.
  void SetBuffer(CCrystalTextBuffer* buffer);
  CCrystalTextBuffer* Buffer() const { return m_buffer; }
  /// True when there are lines to show.
  bool HasText() const { return m_parts != nullptr && m_buffer->LineCount() > 0; }
  void SetMetrics(const ColumnMetrics::Advances& advances, int32_t tabSize);
  const ColumnMetrics& Metrics() const { return m_metrics; }
  int32_t TabSize() const { return m_tabSize; }

  /// Called when damage begins to gather after `TakeDamage`.
  void SetDamageCallback(std::function<void()> callback) { m_onDamage = std::move(callback); }
  /// Called when a group of this view's edits was closed: action code and text of its last record.
  using GroupCallback = std::function<void(int32_t action, std::string_view text)>;
  void SetGroupCallback(GroupCallback callback) { m_onGroup = std::move(callback); }
  ViewDamage TakeDamage();
  void DamageLines(int32_t first, int32_t last);
  void DamageEverything();

  // Rows: lines that no collapsed block hides. All ask for a text.
  const FoldMap& Folds() const { return m_parts->parsed->Folds(); }
  int32_t RowCount() const { return HasText() ? Folds().RowCount() : 0; }

  // Places within a line, 1/64 pixel.
  int64_t XOf(TextPosition position);
  int32_t CharacterAt(int32_t line, int64_t x, bool nearest);
  int64_t XOfCorner(BlockCorner corner);
  BlockCorner CornerAt(int32_t line, int64_t x);
  WidthIndex& Widths() { return m_parts->widths; }

  LineStateCache& States() { return m_parts->parsed->States(); }
  BraceIndex& Braces() { return m_parts->parsed->Braces(); }
  LongLine& LongLines() { return m_parts->longLines; }
  /// Brings states and block marks up to date down to a line; what changed becomes damage in all views.
  void ParseThrough(int32_t line);
  /// Open blocks before a line.
  int32_t DepthBefore(int32_t line) { return m_parts->parsed->Depths().DepthBefore(line); }

  TextPosition Caret() const { return m_caret; }
  TextPosition Anchor() const { return m_anchor; }
  TextRange Selection() const { return TextRange::Between(m_anchor, m_caret); }
  bool HasSelection() const { return m_anchor != m_caret; }
  /// Places outside the text are moved to the nearest one in it.
  void SetSelection(TextPosition anchor, TextPosition caret);
  void SetCaret(TextPosition caret, bool extend) { SetSelection(extend ? m_anchor : caret, caret); }
  TextPosition Clamp(TextPosition position) const;
  /// The selection is a block of columns between the corners anchor and caret.
  bool IsColumnSelection() const { return m_columnMode; }
  void SetColumnSelection(bool columns);
  /// Makes a column selection; columns behind the ends of their lines stay as they are until these lines
  /// change.
  void SetBlock(BlockCorner anchor, BlockCorner caret);
  BlockCorner AnchorCorner() const { return CornerOf(m_anchor, m_anchorColumn); }
  BlockCorner CaretCorner() const { return CornerOf(m_caret, m_caretColumn); }

  // Of BufferObserver and EditHook
  void OnBufferUpdate(const BufferObserver* source, const TextChange* change, uint32_t hints,
                      int32_t line) override;
  void OnUndoGroupClosed(int32_t action, std::string_view text) override;

 private:
  /// What follows from the buffer's lines.
  struct Parts {
    Parts(CCrystalTextBuffer& buffer, const ColumnMetrics& metrics, ParseListener& view);
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;
    ~Parts();
    ParseListener& listener;
    std::shared_ptr<ParsedText> parsed;
    LongLine longLines;
    WidthIndex widths;
  };

  void Reset();
  void OnReparsed(std::optional<LineRange> changed, bool marksChanged) override;
  void OnTextChange(const TextChange& change);
  void DamageForFlags(uint32_t hints, int32_t line);
  void Wake();
  BlockCorner CornerOf(TextPosition place, int32_t column) const;
  TextPosition PlaceOf(BlockCorner corner) const;

  CCrystalTextBuffer* m_buffer = nullptr;
  std::function<void()> m_onDamage;
  GroupCallback m_onGroup;
  ColumnMetrics m_metrics;
  LongLinePlaces m_places{m_metrics};
  std::unique_ptr<Parts> m_parts;
  ViewDamage m_damage;
  TextPosition m_caret;
  TextPosition m_anchor;
  int32_t m_anchorColumn = -1;  ///< of a column selection, -1 for that of the place
  int32_t m_caretColumn = -1;
  int32_t m_tabSize = 3;
  bool m_columnMode = false;
};

}  // namespace quill
