#include "shell/ui/WindowCommands.h"

#include <algorithm>

#include "shell/ui/ChildFrame.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/TabStrip.h"
#include "shell/ui/Workspace.h"
#include "widgets/PlainNames.h"

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
  state.text = (index < 9 ? QString(u'&') : QString()) + QString::number(index + 1) + u' ' +
               plain_names::ForMenu(frame->ShownTitle());
  state.checked = frame == workspace.ActiveFrame();
  return state;
}

std::vector<CChildFrame*> OtherFrames(const Workspace& workspace) {
  std::vector<CChildFrame*> frames = workspace.Frames();
  std::erase(frames, workspace.ActiveFrame());
  return frames;
}

std::vector<CChildFrame*> FramesToTheRight(const Workspace& workspace) {
  std::vector<CChildFrame*> frames = workspace.Frames();
  const auto active = std::ranges::find(frames, workspace.ActiveFrame());
  if (active == frames.end()) return {};
  frames.erase(frames.begin(), active + 1);
  return frames;
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
  new TabStrip(workspace, router);
  RegisterArranging(router);
  router.Register(
      kWindowNew, [&workspace] { workspace.AddWindow(*workspace.ActiveDocument()); }, anyWindow);
  router.Register(
      kWindowNext, [this] { m_switcher.Step(1); }, severalWindows);
  router.Register(
      kWindowPrevious, [this] { m_switcher.Step(-1); }, severalWindows);
  router.Register(
      kWindowCloseOthers, [this] { m_files.CloseWindows(OtherFrames(m_workspace)); }, severalWindows);
  router.Register(
      kWindowCloseToRight, [this] { m_files.CloseWindows(FramesToTheRight(m_workspace)); },
      [&workspace] {
        return CommandState::EnabledIf(!FramesToTheRight(workspace).empty(), StringId::kNothingToTheRight);
      });
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
      kWindowCascade, [&workspace] { workspace.Cascade(); }, withoutTabs);
  router.Register(
      kWindowTileHorizontally, [&workspace] { workspace.Tile(Qt::Horizontal); }, withoutTabs);
  router.Register(
      kWindowTileVertically, [&workspace] { workspace.Tile(Qt::Vertical); }, withoutTabs);
}

}  // namespace quill
