#include "find/ui/FindWindows.h"
#include "shell/ui/ViewHandlers.h"

namespace quill {

using enum CommandId;

void RegisterFindCommands(const ShellParts& parts) {
  auto* windows = new FindWindows(parts);
  OnView(parts, kEditFind, [windows](CQuillView&) { windows->OpenFind(); });
  OnView(parts, kEditFindNext, [windows](CQuillView& view) { windows->Repeat(view, false); });
  OnView(parts, kEditFindPrevious, [windows](CQuillView& view) { windows->Repeat(view, true); });
  OnView(parts, kEditFindSelectedWord, [windows](CQuillView& view) { windows->FindSelectedWord(view); });
  OnView(parts, kEditReplace, [windows](CQuillView&) { windows->OpenReplace(); });
  parts.router.Register(kEditFindInFiles, [windows] { windows->OpenFindInFiles(); });
}

}  // namespace quill
