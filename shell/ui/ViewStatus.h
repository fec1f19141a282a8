#pragma once
#include <QObject>

namespace quill {

class ActiveView;
class StatusBar;
class CommandRouter;

/// Keeps the status bar's panes, and the commands' usability, in step with the active view.
class ViewStatus : public QObject {
  Q_OBJECT

 public:
  ViewStatus(ActiveView& active, StatusBar& bar, CommandRouter& router, QObject* parent);

  void Update();

 private:
  /// A click on a pane changes what it shows, by a command or a menu of commands.
  void MakePanesAnswer();
  ActiveView& m_active;
  StatusBar& m_bar;
  CommandRouter& m_router;
};

}  // namespace quill
