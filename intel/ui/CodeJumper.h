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

  /// To the definition of the name at the caret; false when there is none.
  bool GoToDefinition();

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
  RowOrder Order() const;

  Needs m;
  ScriptJumps m_jumps;
  QPointer<DockBar> m_bar;
  QPointer<CodeJumperPane> m_pane;  ///< in the bar
  QTimer m_saveLayout;
  const CChildFrame* m_shownFrame = nullptr;  ///< only compared
};

}  // namespace quill
