#pragma once
#include "shell/ui/Feature.h"
#include "shell/ui/WindowSwitcher.h"

namespace quill {

class FileOperations;
class Prompts;
class Workspace;

/// The menu Window, and the box about the program.
class WindowCommands : public Feature {
 public:
  WindowCommands(Workspace& workspace, FileOperations& files, Prompts& prompts)
      : m_workspace(workspace), m_files(files), m_prompts(prompts), m_switcher(workspace) {}

  void RegisterCommands(CommandRouter& router) override;

 private:
  void RegisterArranging(CommandRouter& router);

  Workspace& m_workspace;
  FileOperations& m_files;
  Prompts& m_prompts;
  WindowSwitcher m_switcher;
};

}  // namespace quill
