#pragma once
#include "shell/ui/Feature.h"

class QMainWindow;

namespace quill {

class ActiveView;
class Prompts;
class StatusBar;
class ViewSettingsControl;

/// How texts are shown, folding, bookmarks and going to a line.
class ViewCommands : public Feature {
 public:
  struct Needs {
    QMainWindow& window;
    ActiveView& active;
    ViewSettingsControl& viewSettings;
    StatusBar& statusBar;
    Prompts& prompts;
  };
  explicit ViewCommands(const Needs& needs) : m(needs) {}

  void RegisterCommands(CommandRouter& router) override;

 private:
  void RegisterSwitches(CommandRouter& router);
  void RegisterWindowParts(CommandRouter& router);

  Needs m;
};

}  // namespace quill
