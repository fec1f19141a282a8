#pragma once
#include <QMetaObject>
#include <QObject>

#include "intel/Definitions.h"
#include "intel/ScriptFacts.h"
#include "intel/ui/CodeJumperPane.h"
#include "shell/ui/ShellParts.h"

namespace quill {

class CChildFrame;
class CQuillView;

/// Shows the active script in the Code Jumper, marks the function around the caret, and jumps to
/// definitions and back.
class CodeJumperControl : public QObject {
  Q_OBJECT

 public:
  /// The parts and the pane outlive it.
  CodeJumperControl(const ShellParts& parts, CodeJumperPane& pane, QObject* parent);

  /// To the definition of the name at the caret; false when there is none.
  bool GoToDefinition();
  void GoBack();
  bool CanGoBack() const { return !m_history.IsEmpty(); }

 protected:
  /// Ctrl and the left button on a name go to its definition.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Follow(CChildFrame* frame);
  void Show();
  void MarkFunction();
  void JumpTo(int32_t file, TextPosition at, const ScriptFacts& facts);
  void RememberPlace();

  const ShellParts& m_parts;
  CodeJumperPane& m_pane;
  QMetaObject::Connection m_caretMoved;
  JumpHistory m_history;
};

}  // namespace quill
