#include "shell/ui/ViewCommands.h"

#include <QMainWindow>

#include "res/ui/UiText.h"
#include "settings/Settings.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/StatusPanes.h"
#include "shell/ui/ViewHandlers.h"
#include "shell/ui/ViewSettingsControl.h"
#include "text/ui/BookmarkCommands.h"
#include "text/ui/FoldCommands.h"

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
  views.Add(kBookmarkToggle, [](CQuillView& view) { bookmark_command::Toggle(view); });
  views.Add(kBookmarkNext, [](CQuillView& view) {
    if (!bookmark_command::GoToNext(view)) Q_EMIT view.Hint(UiText(StringId::kNoBookmarkBelow));
  });
  views.Add(kBookmarkPrevious, [](CQuillView& view) {
    if (!bookmark_command::GoToPrevious(view)) Q_EMIT view.Hint(UiText(StringId::kNoBookmarkAbove));
  });
  views.Add(kBookmarkClear, [](CQuillView& view) { bookmark_command::ClearAll(view); });
  views.Add(
      kBookmarkRemoveNumbers, [](CQuillView& view) { bookmark_command::RemoveNumbers(view); },
      [](const CQuillView& view) {
        const bool has = view.Model().HasText() && (view.Buffer()->LineFlags(view.CaretPos().line) &
                                                    line_flag::kNumberedBookmarks) != 0;
        return CommandState::EnabledIf(has, StringId::kNoNumberOnLine);
      });
  views.Add(kBookmarkClearNumbers, [](CQuillView& view) { bookmark_command::ClearNumbered(view); });
  views.Add(kDebugToggleBreakpoint, [](CQuillView& view) { bookmark_command::ToggleBreakpoint(view); });
  for (int i = 0; i < kBookmarks; ++i) {
    views.Add(kBookmarkSet0 + i, [i](CQuillView& view) { bookmark_command::SetNumbered(view, i); });
    views.Add(kBookmarkGo0 + i, [i](CQuillView& view) {
      if (!bookmark_command::GoToNumbered(view, i)) Q_EMIT view.Hint(UiText(StringId::kBookmarkNotSet));
    });
  }
}

void AddFolding(const ViewHandlers& views) {
  views.Add(kOutlineToggleBlock, [](CQuillView& view) { fold_command::ToggleBlock(view); });
  views.Add(kOutlineExpandAll, [](CQuillView& view) { fold_command::ExpandAll(view); });
  views.Add(kOutlineCollapseAll, [](CQuillView& view) { fold_command::CollapseAll(view); });
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
