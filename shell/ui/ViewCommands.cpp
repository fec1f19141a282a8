#include <QMainWindow>
#include <QMenuBar>

#include "shell/Settings.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/ShellParts.h"
#include "shell/ui/StatusPanes.h"
#include "shell/ui/ViewSettingsControl.h"
#include "shell/ui/Workspace.h"
#include "text/ui/CrystalTextView.h"

namespace quill {
namespace {

using enum CommandId;

constexpr int kZoomStep = 10;  ///< percent
constexpr int kNormalZoom = 100;
constexpr int kBookmarks = 10;

/// Registers a command on the active view, disabled while there is none.
void OnView(const ShellParts& parts, CommandId id, const std::function<void(CCrystalTextView&)>& run,
            const std::function<CommandState(const CCrystalTextView&)>& state = {}) {
  parts.router.Register(
      id, [&workspace = parts.workspace, run] { run(*workspace.ActiveView()); },
      [&workspace = parts.workspace, state] {
        const CCrystalTextView* view = workspace.ActiveView();
        if (view == nullptr) return CommandState::Disabled(StringId::kNoDocumentOpen);
        return state ? state(*view) : CommandState();
      });
}

void RegisterZoom(const ShellParts& parts) {
  OnView(
      parts, kViewZoomIn, [](CCrystalTextView& view) { view.SetZoom(view.Zoom() + kZoomStep); },
      [](const CCrystalTextView& view) {
        return CommandState::EnabledIf(view.Zoom() < CCrystalTextView::kLargestZoom, StringId::kZoomAtLimit);
      });
  OnView(
      parts, kViewZoomOut, [](CCrystalTextView& view) { view.SetZoom(view.Zoom() - kZoomStep); },
      [](const CCrystalTextView& view) {
        return CommandState::EnabledIf(view.Zoom() > CCrystalTextView::kSmallestZoom, StringId::kZoomAtLimit);
      });
  OnView(parts, kViewZoomReset, [](CCrystalTextView& view) { view.SetZoom(kNormalZoom); });
}

void RegisterSwitches(const ShellParts& parts) {
  struct Switch {
    CommandId id;
    const FlagSetting& setting;
  };
  const Switch switches[] = {
      {kOptionsHighlightLine, settings::kHighlightLine},
      {kOptionsIndentGuide, settings::kIndentionGuide},
      {kOptionsLineNumbers, settings::kShowLineNumbers},
      {kOptionsFolding, settings::kShowFolding},
  };
  for (const Switch& s : switches) {
    parts.router.Register(
        s.id, [&control = parts.viewSettings, &setting = s.setting] { control.Toggle(setting); },
        [&control = parts.viewSettings, &setting = s.setting] {
          return CommandState::Checked(control.IsOn(setting));
        });
  }
}

}  // namespace

void RegisterViewCommands(const ShellParts& parts) {
  RegisterZoom(parts);
  RegisterSwitches(parts);
  parts.router.Register(
      kViewStatusBar, [&bar = parts.statusBar] { bar.setVisible(bar.isHidden()); },
      [&bar = parts.statusBar] { return CommandState::Checked(!bar.isHidden()); });
  parts.router.Register(
      kViewFullScreen,
      [&window = parts.window] { window.setWindowState(window.windowState() ^ Qt::WindowFullScreen); },
      [&window = parts.window] { return CommandState::Checked(window.isFullScreen()); });
  OnView(parts, kEditGoToLine, [&prompts = parts.services.prompts](CCrystalTextView& view) {
    const auto line = prompts.ChooseLine(view.CaretPos().line + 1, view.Buffer()->LineCount());
    if (line) view.GotoLine(*line - 1);
  });
  OnView(parts, kOutlineToggleBlock, [](CCrystalTextView& view) { view.ToggleBlock(); });
  OnView(parts, kOutlineExpandAll, [](CCrystalTextView& view) { view.ExpandAll(); });
  OnView(parts, kOutlineCollapseAll, [](CCrystalTextView& view) { view.CollapseAll(); });
}

void RegisterBookmarkCommands(const ShellParts& parts) {
  OnView(parts, kBookmarkToggle, [](CCrystalTextView& view) { view.ToggleBookmark(); });
  OnView(parts, kBookmarkNext, [](CCrystalTextView& view) { view.NextBookmark(); });
  OnView(parts, kBookmarkPrevious, [](CCrystalTextView& view) { view.PreviousBookmark(); });
  OnView(parts, kBookmarkClear, [](CCrystalTextView& view) { view.ClearBookmarks(); });
  OnView(parts, kDebugToggleBreakpoint, [](CCrystalTextView& view) { view.ToggleBreakpointFlag(); });
  for (int i = 0; i < kBookmarks; ++i) {
    OnView(parts, kBookmarkSet0 + i, [i](CCrystalTextView& view) { view.SetNumberedBookmark(i); });
    OnView(parts, kBookmarkGo0 + i, [i](CCrystalTextView& view) { view.GotoNumberedBookmark(i); });
  }
}

}  // namespace quill
