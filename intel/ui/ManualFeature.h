#pragma once
#include <QObject>
#include <memory>
#include <string>

#include "shell/ui/Feature.h"

namespace quill {

class ActiveScript;
class ActiveView;
class CommandDatabase;
class CommandHelp;
class ManualWindow;
struct AppServices;

/// Opens the manual: its files are read when it is wanted for the first time, and there is one window.
class ManualFeature : public QObject, public Feature {
  Q_OBJECT

 public:
  struct Needs {
    AppServices& services;
    ActiveView& active;
    ActiveScript& script;
    const CommandDatabase& commands;
    CommandHelp& help;
  };
  explicit ManualFeature(const Needs& needs);
  ~ManualFeature() override;

  void RegisterCommands(CommandRouter& router) override;

  /// At what the keyboard works on: the command in the help bar, or the word at the caret.
  void OpenAtCaret();
  /// At a word of the index, in lower case; at the start page when there is no such word.
  void OpenTopic(const std::string& topic);

 private:
  ManualWindow* Window();
  std::string TopicAtCaret();

  Needs m;
  std::unique_ptr<ManualWindow> m_window;
};

}  // namespace quill
