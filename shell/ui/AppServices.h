#pragma once
#include <functional>
#include <string>
#include <vector>

#include "settings/AppProfile.h"
#include "settings/SettingsStore.h"
#include "shell/Clock.h"
#include "shell/RunLog.h"

namespace quill {

class LineFlagStore;
class Prompts;

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
  /// Hands the files of the command line to a running copy; true when there is one and this copy is to end.
  /// Empty: there is none.
  std::function<bool(const std::vector<std::string>& files)> handOver;
  /// Ends the process at once with a status.
  std::function<void(int)> endProcess;
  /// Shows a folder as the desktop does; false when it cannot.
  std::function<bool(const std::string& folder)> showFolder;

  AppProfile Profile() const { return AppProfile(settings); }
};

}  // namespace quill
