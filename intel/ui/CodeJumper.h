#pragma once
#include <QObject>
#include <QPointer>
#include <QTimer>

#include "intel/ui/CodeJumperPane.h"
#include "intel/ui/ScriptJumps.h"
#include "settings/AppProfile.h"
#include "shell/ui/Feature.h"
#include "text/ui/InputChain.h"

namespace quill {

class ActiveScript;
class CChildFrame;
class DockBar;
class ViewSettingsControl;

/// The docking bar "Code Jumper": shows the active script, marks the function around the caret, and jumps to
/// what is chosen there and to the definition of a name in the text.
class CodeJumper : public QObject, public Feature, private InputTaker {
  Q_OBJECT

 public:
  struct Needs {
    ActiveView& active;
    ActiveScript& script;
    Workspace& workspace;
    FileOperations& files;
    ViewSettingsControl& viewSettings;
    AppProfile profile;
  };
  explicit CodeJumper(const Needs& needs);
  ~CodeJumper() override;

  void AddBars(DockBars& bars) override;
  void RegisterCommands(CommandRouter& router) override;

  /// To the definition of the name at the caret, in the script or in a file that it includes, or to the file
  /// of the caret's `include` line. The status bar says when there is none.
  void GoToDefinition();

 private:
  /// Ctrl and the left button on a name go to its definition.
  bool TakeInput(QEvent& event) override;
  void Show();
  /// How the bar is divided comes from the profile and goes there.
  void KeepLayout();
  void MarkFunction();
  void FindName();
  void BackToText();
  void OnFileChosen(const NamedFile& file, bool open);
  /// Empty when a file that the active script names is not there.
  std::string FindFile(const NamedFile& file, const Outline& outline) const;
  void GoToIncluded(const NamedFile& file, const Outline& outline);
  RowOrder Order() const;

  Needs m;
  ScriptJumps m_jumps;
  QPointer<DockBar> m_bar;
  QPointer<CodeJumperPane> m_pane;  ///< in the bar
  QTimer m_saveLayout;
  const CChildFrame* m_shownFrame = nullptr;  ///< only compared
};

}  // namespace quill
