#pragma once

namespace quill {

class CommandRouter;
class DockBars;

/// A part of the program with commands, bars or windows of its own. What it works with is handed to its
/// constructor and outlives it; features know one another only as far as one is handed to the other. The
/// main window owns them in a list, and tells all of them what happens to it.
class Feature {
 public:
  Feature() = default;
  Feature(const Feature&) = delete;
  Feature& operator=(const Feature&) = delete;
  virtual ~Feature() = default;

  /// While the window is built: docking bars, with their contents.
  virtual void AddBars(DockBars&) {}
  /// Before the first document opens; the databases are there.
  virtual void RegisterCommands(CommandRouter&) {}
  /// What can wait until the window has been on the screen for a second.
  virtual void Started() {}
  /// Another view is the active one, or none.
  virtual void ActiveViewChanged() {}
  /// The user has confirmed the options.
  virtual void SettingsApplied() {}
  /// The user wants to close the window, and may still change his mind when asked about documents. The
  /// last feature of the list is told first.
  virtual void AboutToClose() {}
  /// Whether the window may close at all; asks the user when something would be lost by it. Called before
  /// anything else is done for closing.
  virtual bool MayClose() { return true; }
  /// Something of it runs on that cannot be stopped: the process ends at once, without asking.
  virtual bool CannotBeStopped() const { return false; }
};

}  // namespace quill
