#include <QMainWindow>
#include <QMenuBar>

#include "settings/Settings.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/ShellParts.h"
#include "shell/ui/StatusPanes.h"
#include "shell/ui/ViewHandlers.h"
#include "shell/ui/ViewSettingsControl.h"
#include "shell/ui/Workspace.h"

namespace quill {
namespace {

using enum CommandId;

constexpr int kZoomStep = 10;  ///< percent
constexpr int kNormalZoom = 100;
constexpr int kBookmarks = 10;

void RegisterZoom(const ShellParts& parts) {
  OnView(
      parts, kViewZoomIn, [](CQuillView& view) { view.SetZoom(view.Zoom() + kZoomStep); },
      [](const CQuillView& view) {
        return CommandState::EnabledIf(view.Zoom() < CCrystalTextView::kLargestZoom, StringId::kZoomAtLimit);
      });
  OnView(
      parts, kViewZoomOut, [](CQuillView& view) { view.SetZoom(view.Zoom() - kZoomStep); },
      [](const CQuillView& view) {
        return CommandState::EnabledIf(view.Zoom() > CCrystalTextView::kSmallestZoom, StringId::kZoomAtLimit);
      });
  OnView(parts, kViewZoomReset, [](CQuillView& view) { view.SetZoom(kNormalZoom); });
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
  OnView(parts, kEditGoToLine, [&prompts = parts.services.prompts](CQuillView& view) {
    const auto line = prompts.ChooseLine(view.CaretPos().line + 1, view.Buffer()->LineCount());
    if (line) view.GotoLine(*line - 1);
  });
  OnView(parts, kOutlineToggleBlock, [](CQuillView& view) { view.ToggleBlock(); });
  OnView(parts, kOutlineExpandAll, [](CQuillView& view) { view.ExpandAll(); });
  OnView(parts, kOutlineCollapseAll, [](CQuillView& view) { view.CollapseAll(); });
}

void RegisterBookmarkCommands(const ShellParts& parts) {
  OnView(parts, kBookmarkToggle, [](CQuillView& view) { view.ToggleBookmark(); });
  OnView(parts, kBookmarkNext, [](CQuillView& view) { view.NextBookmark(); });
  OnView(parts, kBookmarkPrevious, [](CQuillView& view) { view.PreviousBookmark(); });
  OnView(parts, kBookmarkClear, [](CQuillView& view) { view.ClearBookmarks(); });
  OnView(parts, kDebugToggleBreakpoint, [](CQuillView& view) { view.ToggleBreakpointFlag(); });
  for (int i = 0; i < kBookmarks; ++i) {
    OnView(parts, kBookmarkSet0 + i, [i](CQuillView& view) { view.SetNumberedBookmark(i); });
    OnView(parts, kBookmarkGo0 + i, [i](CQuillView& view) { view.GotoNumberedBookmark(i); });
  }
}

}  // namespace quill
