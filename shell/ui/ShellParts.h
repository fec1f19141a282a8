#pragma once

class QMainWindow;

namespace quill {

class ActiveScript;
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

/// The objects that the main window is made of, for those who carry out commands.
struct ShellParts {
  AppServices& services;
  QMainWindow& window;
  CommandRouter& router;
  Workspace& workspace;
  Documents& documents;
  FileOperations& files;
  ViewSettingsControl& viewSettings;
  DockBars& bars;
  RecentFiles& recentFiles;
  StatusBar& statusBar;
  TimerService& timers;
  ActiveScript& script;
  const CommandDatabase& commands;  ///< filled before the first document opens
};

/// A group of commands registers its handlers. The parts outlive the router's actions.
using RegisterCommands = void (*)(const ShellParts& parts);

void RegisterFileCommands(const ShellParts& parts);
void RegisterEditCommands(const ShellParts& parts);
void RegisterLineCommands(const ShellParts& parts);
void RegisterFindCommands(const ShellParts& parts);
void RegisterViewCommands(const ShellParts& parts);
void RegisterPrintCommands(const ShellParts& parts);
void RegisterBookmarkCommands(const ShellParts& parts);
void RegisterWindowCommands(const ShellParts& parts);
void RegisterHelpCommands(const ShellParts& parts);
void RegisterOutlineCommands(const ShellParts& parts);
void RegisterCommandHelp(const ShellParts& parts);
void RegisterScriptTools(const ShellParts& parts);
void RegisterTemplates(const ShellParts& parts);
/// After the command help, whose link to the manual it answers.
void RegisterManual(const ShellParts& parts);
void RegisterWritingCommands(const ShellParts& parts);

}  // namespace quill
