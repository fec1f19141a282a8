#pragma once
#include <QTextBrowser>
#include <cstdint>
#include <string>

#include "intel/writing/ArgumentList.h"

namespace quill {

class CommandDatabase;

/// The command-help pane: shows a command's help text; links in it lead to other commands.
class CHTMLCtrl : public QTextBrowser {
  Q_OBJECT

 public:
  /// The database outlives the pane.
  explicit CHTMLCtrl(const CommandDatabase& commands, QWidget* parent = nullptr);

  /// `argument` is the part of the command's parameters that is bold in the heading. Nothing else happens
  /// when the command is shown already; `index` of -1 leaves the pane as it is.
  void ShowCommand(int32_t index, TextPart argument = {});
  /// Position of the command in the database; -1 while none is shown.
  int32_t ShownCommand() const { return m_shown; }
  /// A few lines: the text above it is what the window is for.
  QSize sizeHint() const override { return {400, 120}; }

 Q_SIGNALS:
  /// The user wants to read on about a command.
  void ManualWanted(const std::string& command);

 private:
  void Follow(const std::string& link);
  void ShowHelp(int32_t index);
  void MarkInHeading(TextPart argument);

  const CommandDatabase& m_commands;
  int32_t m_shown = -1;
  TextPart m_argument;
};

}  // namespace quill
