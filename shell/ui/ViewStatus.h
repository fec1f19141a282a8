#pragma once
#include <QObject>
#include <QPointer>

namespace quill {

class CChildFrame;
class StatusBar;
class CommandRouter;
class Workspace;

/// Keeps the status bar's panes, and the commands' usability, in step with the active view.
class ViewStatus : public QObject {
  Q_OBJECT

 public:
  ViewStatus(Workspace& workspace, StatusBar& bar, CommandRouter& router, QObject* parent);

  void Update();

 private:
  void Follow(CChildFrame* frame);

  Workspace& m_workspace;
  StatusBar& m_bar;
  CommandRouter& m_router;
  QPointer<QObject> m_connections;  ///< context of the connections to the active view
};

}  // namespace quill
