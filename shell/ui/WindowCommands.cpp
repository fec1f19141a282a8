#include "shell/ui/WindowCommands.h"

#include "shell/ui/ChildFrame.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/Workspace.h"

namespace quill {
namespace {

using enum CommandId;

/// The entry of a window, the first nine with a mnemonic.
CommandState WindowState(const Workspace& workspace, int index) {
  CommandState state;
  const std::vector<CChildFrame*> frames = workspace.Frames();
  state.visible = static_cast<size_t>(index) < frames.size();
  if (!state.visible) return state;
  const CChildFrame* frame = frames[static_cast<size_t>(index)];
  const QString title =
      frame->windowTitle().replace("[*]", frame->isWindowModified() ? "*" : "").replace(u'&', "&&");
  state.text = (index < 9 ? QString(u'&') : QString()) + QString::number(index + 1) + u' ' + title;
  state.checked = frame == workspace.ActiveFrame();
  return state;
}

}  // namespace

void WindowCommands::RegisterCommands(CommandRouter& router) {
  Workspace& workspace = m_workspace;
  const auto anyWindow = [&workspace] {
    return CommandState::EnabledIf(workspace.ActiveFrame() != nullptr, StringId::kNoDocumentOpen);
  };
  const auto severalWindows = [&workspace] {
    return CommandState::EnabledIf(workspace.Frames().size() > 1, StringId::kOnlyOneWindow);
  };
  RegisterArranging(router);
  router.Register(
      kWindowNew, [&workspace] { workspace.AddWindow(*workspace.ActiveDocument()); }, anyWindow);
  router.Register(
      kWindowNext, [&workspace] { workspace.activateNextSubWindow(); }, severalWindows);
  router.Register(
      kWindowPrevious, [&workspace] { workspace.activatePreviousSubWindow(); }, severalWindows);
  router.Register(
      kWindowCloseAll, [this] { m_files.CloseAll(); }, anyWindow);
  router.RegisterSeries(
      kWindowListFirst, kWindowListLast,
      [&workspace](int index) { workspace.Activate(*workspace.Frames().at(static_cast<size_t>(index))); },
      [&workspace](int index) { return WindowState(workspace, index); });
  router.Register(kHelpAbout, [this] { m_prompts.ShowAbout(); });
}

void WindowCommands::RegisterArranging(CommandRouter& router) {
  Workspace& workspace = m_workspace;
  const auto withoutTabs = [&workspace] {
    return CommandState::EnabledIf(!workspace.IsTabbed(), StringId::kOnlyWithoutTabs);
  };
  router.Register(
      kWindowTabbed, [&workspace] { workspace.SetTabbed(!workspace.IsTabbed()); },
      [&workspace] { return CommandState::Checked(workspace.IsTabbed()); });
  router.Register(
      kWindowCascade, [&workspace] { workspace.cascadeSubWindows(); }, withoutTabs);
  router.Register(
      kWindowTileHorizontally, [&workspace] { workspace.Tile(Qt::Horizontal); }, withoutTabs);
  router.Register(
      kWindowTileVertically, [&workspace] { workspace.Tile(Qt::Vertical); }, withoutTabs);
}

}  // namespace quill
