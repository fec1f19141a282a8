#pragma once
#include <functional>
#include <string>
#include <vector>

#include "settings/AppProfile.h"
#include "settings/SettingsStore.h"
#include "shell/Clock.h"
#include "shell/RunLog.h"

namespace quill {

class CChildFrame;
class LineFlagStore;
class Prompts;

/// What the parts of the program that live elsewhere do when the main window starts, works and ends.
/// An empty function does nothing; a missing answer is false or empty.
struct ShellHooks {
  /// Hands the command line to a running copy; true when there is one and this copy is to end.
  std::function<bool(const std::vector<std::string>& arguments)> handOverToRunningCopy;
  std::function<void()> startDebugger;
  std::function<void()> openPreviousProject;
  std::function<void()> loadPlugins;

  std::function<void()> refreshWatches;
  std::function<void()> rebuildPluginMenu;
  /// The outline of the window, null for none, is to be read again.
  std::function<void(CChildFrame*)> activeViewChanged;
  std::function<void()> settingsApplied;
  /// Of the open project; empty when there is none.
  std::function<std::string()> projectName;

  std::function<void()> saveProjectName;
  std::function<void()> stopEngine;
  std::function<bool()> engineRuns;
  /// Ends the process at once with a status.
  std::function<void(int)> endProcess;
};

/// What the windows work with and do not own.
struct AppServices {
  std::string programFolder;
  std::string recoveryFolder;
  std::string commandLine;  ///< of the process, the program's name included
  std::string language;     ///< read at start; nothing depends on it yet
  SettingsStore& settings;
  LineFlagStore& marks;
  RunLog& log;
  Prompts& prompts;
  Clock clock = SystemTime;
  ShellHooks hooks;

  AppProfile Profile() const { return AppProfile(settings); }
};

}  // namespace quill
