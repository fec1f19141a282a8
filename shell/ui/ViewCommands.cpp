#include "shell/ui/ViewCommands.h"

#include <QMainWindow>

#include "settings/Settings.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/StatusPanes.h"
#include "shell/ui/ViewHandlers.h"
#include "shell/ui/ViewSettingsControl.h"

namespace quill {
namespace {

using enum CommandId;

constexpr int kZoomStep = 10;  ///< percent
constexpr int kNormalZoom = 100;
constexpr int kBookmarks = 10;

void AddZoom(const ViewHandlers& views) {
  views.Add(
      kViewZoomIn, [](CQuillView& view) { view.SetZoom(view.Zoom() + kZoomStep); },
      [](const CQuillView& view) {
        return CommandState::EnabledIf(view.Zoom() < CCrystalTextView::kLargestZoom, StringId::kZoomAtLimit);
      });
  views.Add(
      kViewZoomOut, [](CQuillView& view) { view.SetZoom(view.Zoom() - kZoomStep); },
      [](const CQuillView& view) {
        return CommandState::EnabledIf(view.Zoom() > CCrystalTextView::kSmallestZoom, StringId::kZoomAtLimit);
      });
  views.Add(kViewZoomReset, [](CQuillView& view) { view.SetZoom(kNormalZoom); });
}

void AddBookmarks(const ViewHandlers& views) {
  views.Add(kBookmarkToggle, [](CQuillView& view) { view.ToggleBookmark(); });
  views.Add(kBookmarkNext, [](CQuillView& view) { view.NextBookmark(); });
  views.Add(kBookmarkPrevious, [](CQuillView& view) { view.PreviousBookmark(); });
  views.Add(kBookmarkClear, [](CQuillView& view) { view.ClearBookmarks(); });
  views.Add(kDebugToggleBreakpoint, [](CQuillView& view) { view.ToggleBreakpointFlag(); });
  for (int i = 0; i < kBookmarks; ++i) {
    views.Add(kBookmarkSet0 + i, [i](CQuillView& view) { view.SetNumberedBookmark(i); });
    views.Add(kBookmarkGo0 + i, [i](CQuillView& view) { view.GotoNumberedBookmark(i); });
  }
}

void AddFolding(const ViewHandlers& views) {
  views.Add(kOutlineToggleBlock, [](CQuillView& view) { view.ToggleBlock(); });
  views.Add(kOutlineExpandAll, [](CQuillView& view) { view.ExpandAll(); });
  views.Add(kOutlineCollapseAll, [](CQuillView& view) { view.CollapseAll(); });
}

}  // namespace

void ViewCommands::RegisterCommands(CommandRouter& router) {
  const ViewHandlers views(router, m.active);
  AddZoom(views);
  AddFolding(views);
  AddBookmarks(views);
  views.Add(kEditGoToLine, [this](CQuillView& view) {
    const auto line = m.prompts.ChooseLine(view.CaretPos().line + 1, view.Buffer()->LineCount());
    if (line) view.GotoLine(*line - 1);
  });
  RegisterSwitches(router);
  RegisterWindowParts(router);
}

void ViewCommands::RegisterSwitches(CommandRouter& router) {
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
    router.Register(
        s.id, [&control = m.viewSettings, &setting = s.setting] { control.Toggle(setting); },
        [&control = m.viewSettings, &setting = s.setting] {
          return CommandState::Checked(control.IsOn(setting));
        });
  }
}

void ViewCommands::RegisterWindowParts(CommandRouter& router) {
  router.Register(
      kViewStatusBar, [this] { m.statusBar.setVisible(m.statusBar.isHidden()); },
      [this] { return CommandState::Checked(!m.statusBar.isHidden()); });
  router.Register(
      kViewFullScreen, [this] { m.window.setWindowState(m.window.windowState() ^ Qt::WindowFullScreen); },
      [this] { return CommandState::Checked(m.window.isFullScreen()); });
}

}  // namespace quill
