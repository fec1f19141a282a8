#pragma once
#include <QMetaObject>
#include <QObject>
#include <QTimer>
#include <string>
#include <vector>

#include "intel/Definitions.h"
#include "intel/EnclosingFunction.h"
#include "intel/ui/CodeJumperPane.h"
#include "shell/ui/ShellParts.h"

namespace quill {

class CChildFrame;
class CQuillView;

/// Keeps the Code Jumper in step with the active view, gives the view the names that its script defines,
/// and jumps to definitions and back.
class CodeJumperControl : public QObject {
  Q_OBJECT

 public:
  /// The parts and the pane outlive it.
  CodeJumperControl(const ShellParts& parts, CodeJumperPane& pane, QObject* parent);

  /// Reads the active view's script anew; without a view everything stays as it is.
  void Refresh();
  /// To the definition of the name at the caret; false when there is none.
  bool GoToDefinition();
  void GoBack();
  bool CanGoBack() const { return !m_history.IsEmpty(); }

 protected:
  /// Ctrl and the left button on a name go to its definition.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Follow(CChildFrame* frame);
  void OnCaretMoved();
  void JumpTo(int file, TextPosition at);
  void RememberPlace();

  const ShellParts& m_parts;
  CodeJumperPane& m_pane;
  QTimer m_autoRefresh;
  QMetaObject::Connection m_caretMoved;
  std::vector<std::string> m_includedPaths;
  Definitions m_definitions;
  EnclosingFunction m_functions;
  JumpHistory m_history;
};

}  // namespace quill
