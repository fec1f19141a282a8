#pragma once
#include <QMetaObject>
#include <QObject>
#include <QTimer>

#include "intel/ui/CodeJumperPane.h"
#include "intel/ui/ScriptJumps.h"
#include "shell/ui/ShellParts.h"

namespace quill {

class CChildFrame;

/// Shows the active script in the Code Jumper, marks the function around the caret, and jumps to what is
/// chosen there and to the definition of a name in the text.
class CodeJumperControl : public QObject {
  Q_OBJECT

 public:
  /// The parts and the pane outlive it.
  CodeJumperControl(const ShellParts& parts, CodeJumperPane& pane, QObject* parent);

  /// To the definition of the name at the caret; false when there is none.
  bool GoToDefinition();
  ScriptJumps& Jumps() { return m_jumps; }

 protected:
  /// Ctrl and the left button on a name go to its definition.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Follow(CChildFrame* frame);
  void Show();
  /// How the bar is divided comes from the profile and goes there.
  void KeepLayout();
  void MarkFunction();
  void OnFileChosen(const NamedFile& file, bool open);
  RowOrder Order() const;

  const ShellParts& m_parts;
  CodeJumperPane& m_pane;
  ScriptJumps m_jumps;
  QTimer m_saveLayout;
  QMetaObject::Connection m_caretMoved;
  const CChildFrame* m_shownFrame = nullptr;  ///< only compared
};

}  // namespace quill
