#pragma once
#include <QObject>

class QWidget;

namespace quill {

class CommandRouter;

/// Carries out the commands that are bound to keys of the number pad. The toolkit tells no such key from its
/// twin among the main keys once it looks for a shortcut, and would give both to the twin's command: these
/// keys are taken before it looks.
class KeypadKeys : public QObject {
 public:
  /// For keys pressed in `window` and in the bars that float before it. Both outlive this.
  KeypadKeys(QWidget& window, CommandRouter& router, QObject* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsOurs(const QObject* watched) const;

  QWidget& m_window;
  CommandRouter& m_router;
};

}  // namespace quill
