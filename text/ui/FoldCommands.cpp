#include "text/ui/FoldCommands.h"

#include <QApplication>

#include "text/parse/Folding.h"
#include "text/ui/CrystalTextView.h"

namespace quill::fold_command {
namespace {

bool Toggle(CCrystalTextView& view, LineRange block) {
  if (!ToggleFold(*view.Buffer(), block.first, block.last)) return false;
  if (view.Model().Folds().IsCollapsedHead(block.first)) {
    view.SetCaretPos({block.first, 0});
  } else {
    view.AfterCaretMove(false);
  }
  return true;
}

}  // namespace

void ToggleBlock(CCrystalTextView& view) {
  if (!view.Model().HasText()) return;
  const auto block = FindBlock(*view.Buffer(), view.CaretPos().line, &view.Model().States());
  if (!block || !Toggle(view, *block)) QApplication::beep();
}

void ToggleBlockAt(CCrystalTextView& view, int32_t line) {
  if (!view.Model().HasText()) return;
  const auto block = FindBlock(*view.Buffer(), line, &view.Model().States());
  if (block && block->first == line) {
    Toggle(view, *block);
  } else {
    QApplication::beep();
  }
}

void ExpandAll(CCrystalTextView& view) {
  if (view.Model().HasText() && quill::ExpandAll(*view.Buffer())) view.AfterCaretMove();
}

void CollapseAll(CCrystalTextView& view) {
  if (!view.Model().HasText() || !quill::CollapseAll(*view.Buffer(), view.Model().States())) return;
  view.SetCaretPos({view.Model().Folds().ShownLine(view.CaretPos().line), 0});
}

}  // namespace quill::fold_command
