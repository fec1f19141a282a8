#pragma once

class QMainWindow;

namespace quill {

class ActiveView;
class StatusBar;
class CommandDatabase;
class CommandRouter;
class Documents;
class DockBars;
class FileOperations;
class RecentFiles;
class TimerService;
class ViewSettingsControl;
class Workspace;
struct AppServices;

/// The objects that the main window is made of, for who hands them to the features.
struct ShellParts {
  AppServices& services;
  QMainWindow& window;
  CommandRouter& router;
  Workspace& workspace;
  ActiveView& active;
  Documents& documents;
  FileOperations& files;
  ViewSettingsControl& viewSettings;
  DockBars& bars;
  RecentFiles& recentFiles;
  StatusBar& statusBar;
  TimerService& timers;
  const CommandDatabase& commands;  ///< filled before the first document opens
};

}  // namespace quill
