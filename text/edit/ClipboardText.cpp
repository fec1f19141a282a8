#include "text/edit/ClipboardText.h"

#include "text/edit/ColumnBlock.h"
#include "text/edit/UndoStep.h"

namespace quill::edit {
namespace {

/// Length of the line end that a text begins with, 0 for none.
size_t LineEndLength(std::string_view text) {
  if (text.starts_with("\r\n")) return 2;
  // In "\n\r\n" the CR belongs to the LF behind it.
  if (text.starts_with("\n\r") && !text.starts_with("\n\r\n")) return 2;
  return text.starts_with('\r') || text.starts_with('\n') ? 1 : 0;
}

}  // namespace

std::string WithCrLf(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 16);
  while (true) {
    const size_t end = text.find_first_of("\r\n");
    out += text.substr(0, end);
    if (end == std::string_view::npos) return out;
    out += "\r\n";
    text.remove_prefix(end);
    text.remove_prefix(LineEndLength(text));
  }
}

std::string CopySelection(const EditTarget& target) {
  if (target.IsColumnSelection()) return BlockOf(target).Width() > 0 ? CopyBlock(target) : std::string();
  std::string text;
  target.Buffer().CopyRange(target.Selection(), text);
  return text;
}

bool Cut(EditTarget& target, std::string& text) {
  if (target.Buffer().IsReadOnly()) return false;
  text = CopySelection(target);
  if (target.IsColumnSelection()) return TypeIntoBlock(target, {}, action::kCut);
  UndoStep step(target, action::kCut);
  step.DeleteSelection();
  return true;
}

bool Paste(EditTarget& target, std::string_view text, bool asBlock) {
  if (target.Buffer().IsReadOnly()) return false;
  if (text.empty()) return true;
  const std::string lines = WithCrLf(text);
  const bool oneLine = lines.find('\r') == std::string::npos;
  if (asBlock || (target.IsColumnSelection() && oneLine)) return PasteBlock(target, lines);
  UndoStep step(target, action::kPaste);
  step.DeleteSelection();
  target.PlaceCaret(step.Insert(target.Caret(), lines));
  return true;
}

}  // namespace quill::edit
