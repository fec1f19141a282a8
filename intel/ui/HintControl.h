#pragma once
#include <QPointer>
#include <string>

#include "intel/ui/HintTipWindow.h"
#include "intel/writing/Hints.h"
#include "shell/ui/ActiveViewWatch.h"
#include "shell/ui/ShellParts.h"

class QKeyEvent;

namespace quill {

class CompletionControl;

/// Shows the parameters of the command whose arguments are being written in a tip beside the caret.
class HintControl : public ActiveViewWatch {
  Q_OBJECT

 public:
  HintControl(const ShellParts& parts, CompletionControl& completion, QObject* parent);

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

 Q_SIGNALS:
  /// `UpdateHintText` found this command: its position in the database.
  void CommandFound(int index);

 protected:
  void OnLeave() override { HideTip(); }
  void OnEnter(CQuillView& view) override;
  bool OnViewEvent(QEvent& event) override;
  void OnWindowMoved() override { HideTip(); }

 private:
  void OnKeyPress(const QKeyEvent& event);
  void OnKeyRelease();
  void SetTipText(const std::string& text);
  void PlaceTip();
  void HideTip();
  /// Moves the tip off the caret line and the completion list.
  void KeepOffText();

  const ShellParts& m_parts;
  CompletionControl& m_completion;
  HintText m_hint;
  HintTip m_tip;
  QPointer<HintTipWindow> m_tipWindow;  ///< made when first needed
  bool m_onCommand = false;             ///< shown on command: keys that are released leave it alone
  std::string m_dismissed;              ///< closed with Esc; stays away while the hint is this one
};

}  // namespace quill
