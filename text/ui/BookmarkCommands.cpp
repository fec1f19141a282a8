#include "text/ui/BookmarkCommands.h"

#include <optional>

#include "text/ui/CrystalTextView.h"
#include "text/view/Bookmarks.h"

namespace quill::bookmark_command {
namespace {

bool GoTo(CCrystalTextView& view, std::optional<int32_t> line) {
  if (line) view.GotoLine(*line);
  return line.has_value();
}

}  // namespace

void Toggle(CCrystalTextView& view) {
  if (view.Model().HasText()) bookmarks::Toggle(*view.Buffer(), view.CaretPos().line);
}

bool GoToNext(CCrystalTextView& view) {
  return view.Model().HasText() && GoTo(view, bookmarks::Next(*view.Buffer(), view.CaretPos().line));
}

bool GoToPrevious(CCrystalTextView& view) {
  return view.Model().HasText() && GoTo(view, bookmarks::Previous(*view.Buffer(), view.CaretPos().line));
}

void ClearAll(CCrystalTextView& view) {
  if (view.Model().HasText()) bookmarks::ClearAll(*view.Buffer());
}

void SetNumbered(CCrystalTextView& view, int number) {
  if (view.Model().HasText()) bookmarks::SetNumbered(*view.Buffer(), view.CaretPos().line, number);
}

void RemoveNumbers(CCrystalTextView& view) {
  if (view.Model().HasText()) bookmarks::RemoveNumbersOf(*view.Buffer(), view.CaretPos().line);
}

void ClearNumbered(CCrystalTextView& view) {
  if (view.Model().HasText()) bookmarks::ClearNumbered(*view.Buffer());
}

bool GoToNumbered(CCrystalTextView& view, int number) {
  return view.Model().HasText() && GoTo(view, bookmarks::FindNumbered(*view.Buffer(), number));
}

void ToggleBreakpoint(CCrystalTextView& view) {
  if (view.Model().HasText()) bookmarks::ToggleBreakpoint(*view.Buffer(), view.CaretPos().line);
}

}  // namespace quill::bookmark_command
