#pragma once
#include <QPointer>
#include <string>

#include "intel/ui/HintTipWindow.h"
#include "intel/writing/Hints.h"
#include "shell/ui/QuillView.h"
#include "text/ui/InputChain.h"

class QKeyEvent;

namespace quill {

class ActiveScript;
class ActiveView;
class CommandDatabase;
class CompletionControl;
class SettingsStore;

/// Shows the parameters of the command whose arguments are being written in a tip beside the caret.
class HintControl : public QObject, private InputTaker {
  Q_OBJECT

 public:
  struct Needs {
    QWidget& window;  ///< the tip lies above it
    ActiveView& active;
    ActiveScript& script;
    const CommandDatabase& commands;
    SettingsStore& settings;
    CompletionControl& completion;
  };
  explicit HintControl(const Needs& needs);
  ~HintControl() override;

  /// Chooses the hint text for the active view's caret, or for the selected entry of an open completion
  /// list.
  void UpdateHintText();
  /// Shows `text` as the tip while the caret is in an argument list, else hides the tip. Does nothing at
  /// all while "HintsWhileWriting" is off.
  void ShowHint(const std::string& text);
  bool IsCaretInArgumentList() const;
  /// Shows the hint of the command at the caret until the next key, wherever the caret is and whether or
  /// not hints come by themselves; without a command the status bar says so.
  void ShowOnCommand();
  /// Shows the hint of the call whose arguments are about to be written at the caret: as while writing, and
  /// where the test for argument lists does not see the call, until the next key.
  void ShowForCaret();

 Q_SIGNALS:
  /// `UpdateHintText` found this command: its position in the database, and the part of its parameters that
  /// is being written.
  void CommandFound(int index, quill::TextPart argument);

 protected:
  /// Of the window: the tip does not stay behind when it is moved, hidden or left.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool TakeInput(QEvent& event) override;
  CQuillView* View() const;
  void OnEntryChanged();
  /// True for the Escape that sends the tip away.
  bool OnKeyPress(const QKeyEvent& event);
  void OnKeyRelease();
  void SetTipText(const std::string& text);
  void PlaceTip();
  void HideTip();
  /// Moves the tip off the caret line and the completion list.
  void KeepOffText();

  Needs m;
  HintText m_hint;
  HintTip m_tip;
  QPointer<HintTipWindow> m_tipWindow;  ///< made when first needed
  bool m_onCommand = false;             ///< shown on command: keys that are released leave it alone
  std::string m_dismissed;              ///< closed with Esc; stays away while the hint is this one
};

}  // namespace quill
