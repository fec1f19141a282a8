#pragma once
#include <QObject>
#include <QPoint>
#include <QPointer>

class QTabBar;
class QToolButton;

namespace quill {

class CChildFrame;
class CommandRouter;
class Workspace;

/// What surrounds the workspace's tabs: the button that lists all of them, and their context menu.
class TabStrip : public QObject {
  Q_OBJECT

 public:
  /// Both outlive this, or the workspace takes it with it.
  TabStrip(Workspace& workspace, CommandRouter& router);

 protected:
  /// Of the tabs.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Attach();
  void PlaceButton();
  /// Tells screen readers which tabs are modified: the star is for the eye.
  void NameTabs();
  /// Null for an index without a tab.
  CChildFrame* FrameOf(int index) const;
  void ShowList();
  void ShowContextMenu(QPoint place, bool byMouse);

  Workspace& m_workspace;
  CommandRouter& m_router;
  QTabBar* m_tabs = nullptr;  ///< null without tabs
  QPointer<QToolButton> m_button;
};

}  // namespace quill
