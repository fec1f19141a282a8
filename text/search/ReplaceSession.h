#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "text/buffer/EditSource.h"
#include "text/buffer/TextPosition.h"
#include "text/search/Search.h"

namespace quill {

class CCrystalTextBuffer;

/// What a replace session needs of the view it acts on.
class ReplaceTarget {
 public:
  virtual ~ReplaceTarget() = default;
  virtual CCrystalTextBuffer& Buffer() = 0;
  /// The source of its edits.
  virtual EditSource Source() = 0;
  virtual TextRange Selection() const = 0;
  virtual void SelectFound(TextPosition at, int32_t length) = 0;
  /// Puts the caret behind the inserted text. False when the buffer is read-only.
  virtual bool ReplaceSelectedText(std::string_view text) = 0;
  /// Drops the selection.
  virtual void PlaceCaret(TextPosition at) = 0;
};

/// What the controls of a replace dialog say when one of its buttons is pressed.
struct ReplaceRequest {
  std::string what;
  std::string with;
  uint32_t flags = 0;    ///< `search_flag`; replacing always searches downwards
  bool inBlock = false;  ///< only in the session's block
};

/// The work of a replace dialog while it is open: where the next search starts, the current match and
/// the block. A search that starts nowhere in particular starts where its scope does: at the start of the
/// text, or of the block. The scope may change from one request to the next; a match outside of it is none.
/// Searches do not wrap. The dialog shows "not found" when an operation returns false, but for
/// `ReplaceAll`.
class ReplaceSession {
 public:
  /// `start` is where the first search starts; `block` is the selection that limits it when asked.
  explicit ReplaceSession(ReplaceTarget& target, std::optional<TextPosition> start = {},
                          TextRange block = {});

  /// Forgets the match: the next search starts here.
  void StartFrom(std::optional<TextPosition> start);

  /// Selects the next match: the first time from the start position, then from one character after the
  /// current match. False when there is none; the next search then starts with its scope.
  bool FindNext(const ReplaceRequest& request);
  /// Replaces the current match and selects the next one. Without a match, or when the selection is not
  /// the match any more, only selects the next one. False when no further match is found; a read-only
  /// text keeps its match.
  bool Replace(const ReplaceRequest& request);
  /// Replaces the current match and all that follow, as one undo step; without a match, all from the start
  /// position on. Returns their number.
  int64_t ReplaceAll(const ReplaceRequest& request);

  /// Keeps the places valid when somebody else edits the text meanwhile.
  void OnTextChanged(const TextChange& change);

  bool HasMatch() const { return m_match.has_value(); }
  /// The target still selects the current match.
  bool IsMatchSelected() const { return m_match && m_target.Selection() == RangeOf(*m_match); }
  /// Moved along with the replacements in it.
  TextRange Block() const { return m_block; }

 private:
  struct Match {
    TextPosition at;
    std::string what;
    uint32_t flags;
  };

  static TextRange RangeOf(const Match& match);
  static uint32_t FlagsOf(const ReplaceRequest& request) { return request.flags & ~search_flag::kUpwards; }
  /// Ends a match of another search, and one outside of the block that the request is limited to.
  void ForgetMatchOfOtherRequest(const ReplaceRequest& request);
  /// Ends a match that the selection does not cover; the next search finds it again if it is still there.
  void ForgetMatchUnlessSelected();
  bool FindFrom(std::optional<TextPosition> start, const ReplaceRequest& request);
  /// Without a selection.
  bool SearchFrom(std::optional<TextPosition> start, const ReplaceRequest& request);
  TextRange ScopeOf(const ReplaceRequest& request) const;
  /// A block end on the match's line moves with the text behind the match.
  void MoveBlock(TextRange match, TextPosition end);

  ReplaceTarget& m_target;
  std::optional<TextPosition> m_start;  ///< nothing: where the scope starts
  TextRange m_block;
  std::optional<Match> m_match;
  bool m_movesBlockItself = false;
};

}  // namespace quill
