#pragma once
#include <QObject>
#include <QPointer>
#include <cstdint>
#include <optional>
#include <string>

#include "intel/ui/HTMLCtrl.h"
#include "intel/writing/Hints.h"
#include "shell/ui/Feature.h"

namespace quill {

class ActiveScript;
class ActiveView;

/// The docking bar "Command Help": follows the command at the caret of the active view, or the one whose
/// arguments are written there.
class CommandHelp : public QObject, public Feature {
  Q_OBJECT

 public:
  CommandHelp(ActiveView& active, ActiveScript& script, const CommandDatabase& commands);

  void AddBars(DockBars& bars) override;

  /// Shows a command, named by its position in the database, while the bar is seen; `argument` is the part of
  /// its parameters that is being written.
  void Show(int32_t command, TextPart argument);
  /// The command that the bar shows, while the bar has the keyboard.
  std::optional<int32_t> CommandInFocus() const;

 Q_SIGNALS:
  /// The user wants to read on about a command.
  void ManualWanted(const std::string& command);

 private:
  void ShowCommandAtCaret();

  ActiveView& m_active;
  ActiveScript& m_script;
  const CommandDatabase& m_commands;
  HintText m_atCaret;
  QPointer<CHTMLCtrl> m_pane;
};

}  // namespace quill
