#include "shell/ui/ViewContextMenu.h"

#include <QGuiApplication>
#include <QMenu>

#include "shell/ui/CommandRouter.h"
#include "shell/ui/MarginMenu.h"
#include "shell/ui/QuillView.h"

namespace quill {
namespace {

using enum CommandId;

/// kNone stands for a separator.
constexpr CommandId kCommands[] = {kEditUndo,
                                   kEditRedo,
                                   kNone,
                                   kEditCut,
                                   kEditCopy,
                                   kEditPaste,
                                   kEditDelete,
                                   kNone,
                                   kEditSelectAll,
                                   kNone,
                                   kIntelGoToDefinition,
                                   kEditFindSelectedWord,
                                   kHelpManual,
                                   kNone,
                                   kEditCommentLine,
                                   kEditUncommentLine,
                                   kNone,
                                   kBookmarkToggle,
                                   kOutlineToggleBlock};

void PlaceCaretFor(CQuillView& view, QPoint point) {
  const TextPosition place = view.PositionAt(point);
  const TextRange range = view.Selection();
  if (place < range.start || place >= range.end) view.SetCaretPos(place);
}

}  // namespace

void AttachContextMenu(CQuillView& view, CommandRouter& router) {
  view.setContextMenuPolicy(Qt::CustomContextMenu);
  QObject::connect(&view, &QWidget::customContextMenuRequested, &router, [&view, &router](QPoint point) {
    // A scrolling view is told places of its viewport. The menu key opens the menu at the caret.
    const bool byMouse = (QGuiApplication::mouseButtons() & Qt::RightButton) != 0;
    if (byMouse) {
      if (view.IsInMargin(point) && view.Model().HasText()) {
        ShowMarginMenu(view, view.PositionAt(point).line, view.viewport()->mapToGlobal(point));
        return;
      }
      PlaceCaretFor(view, point);
    } else {
      point = view.CaretRect().bottomLeft();
    }
    QMenu menu(&view);
    for (const CommandId id : kCommands) {
      if (id == kNone) {
        menu.addSeparator();
        continue;
      }
      router.Refresh(id);
      router.EnsureIcon(id);
      menu.addAction(router.Action(id));
    }
    menu.exec(view.viewport()->mapToGlobal(point));
  });
}

}  // namespace quill
