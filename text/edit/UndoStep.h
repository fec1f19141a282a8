#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "text/edit/EditTarget.h"

namespace quill {

/// The edits of one user action, undone as one step, all under one action code. The buffer must not be
/// read-only. Caret and selection are left to the caller.
class UndoStep {
 public:
  /// With `merge` the edits join the step before.
  UndoStep(EditTarget& target, int32_t actionCode, bool merge = false);
  UndoStep(const UndoStep&) = delete;
  UndoStep& operator=(const UndoStep&) = delete;
  /// Closes the step without calling the view's hook.
  ~UndoStep();
  /// Closes the step; the view's hook is called when there was an edit. Put the caret in place before.
  void CloseWithHook();

  /// Returns the place after the text. Line ends split the line.
  TextPosition Insert(TextPosition at, std::string_view text);
  /// The same with pieces of lines, whose characters are all kept.
  TextPosition InsertPieces(TextPosition at, const std::vector<std::string_view>& pieces,
                            FlagsFollow follow = FlagsFollow::kLine);
  /// Replaces the text of a stretch of one line.
  void ReplaceInLine(TextRange range, std::string_view text);
  /// An empty range is no edit.
  void Delete(TextRange range, FlagsFollow follow = FlagsFollow::kLine);
  /// Deletes what is selected, lines or block; the caret goes to its start.
  void DeleteSelection();

  /// Inserts whole lines in front of a line, or behind the last one when `before` is the line count. The
  /// flag words of other lines stay with their text.
  void InsertLines(int32_t before, const std::vector<std::string_view>& lines);
  /// Removes whole lines, both included, with their line ends.
  void RemoveLines(int32_t first, int32_t last);

 private:
  EditTarget& m_target;
  CCrystalTextBuffer& m_buffer;
  int32_t m_action;
  bool m_open = true;
  bool m_edited = false;
};

/// The pieces of lines in a range, for `InsertPieces`.
std::vector<std::string> CopyPieces(const CCrystalTextBuffer& buffer, TextRange range);
std::vector<std::string_view> ViewsOf(const std::vector<std::string>& pieces);

namespace edit {

/// The caret goes where the change was. False when there is nothing to undo or redo, or the text is
/// read-only.
bool Undo(EditTarget& target);
bool Redo(EditTarget& target);

}  // namespace edit
}  // namespace quill
