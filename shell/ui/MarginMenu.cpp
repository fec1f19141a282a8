#include "shell/ui/MarginMenu.h"

#include <QMenu>

#include "res/ui/UiText.h"
#include "shell/ui/QuillView.h"
#include "text/view/Bookmarks.h"

namespace quill {
namespace {

constexpr int kNumbers = 10;

void AddNumbers(QMenu& menu, CCrystalTextBuffer& buffer, int32_t line) {
  const uint32_t flags = buffer.LineFlags(line);
  for (int n = 0; n < kNumbers; ++n) {
    if ((flags & line_flag::NumberedBookmark(n)) == 0) continue;
    menu.addAction(UiText(StringId::kRemoveNumber, {QString::number(n)}),
                   [&buffer, n] { bookmarks::RemoveNumbered(buffer, n); });
  }
  QMenu* numbers = menu.addMenu(UiText(StringId::kSetNumber));
  for (int n = 0; n < kNumbers; ++n) {
    if ((flags & line_flag::NumberedBookmark(n)) != 0) continue;
    numbers->addAction(u'&' + QString::number(n),
                       [&buffer, line, n] { bookmarks::SetNumbered(buffer, line, n); });
  }
}

}  // namespace

void ShowMarginMenu(CQuillView& view, int32_t line, QPoint place) {
  CCrystalTextBuffer& buffer = *view.Buffer();
  const uint32_t flags = buffer.LineFlags(line);
  const bool marked = (flags & line_flag::kBookmark) != 0;
  const bool stops = (flags & line_flag::kBreakpoint) != 0;
  QMenu menu(&view);
  menu.addAction(UiText(marked ? StringId::kRemoveBookmark : StringId::kSetBookmark),
                 [&buffer, line] { bookmarks::Toggle(buffer, line); });
  AddNumbers(menu, buffer, line);
  menu.addSeparator();
  menu.addAction(UiText(stops ? StringId::kRemoveBreakpoint : StringId::kSetBreakpoint),
                 [&buffer, line] { bookmarks::ToggleBreakpoint(buffer, line); });
  menu.exec(place);
}

}  // namespace quill
