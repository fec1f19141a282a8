#pragma once
#include <QDockWidget>
#include <map>
#include <vector>

#include "res/CommandId.h"
#include "res/Strings.h"

class QMainWindow;
class QToolBar;

namespace quill {

class CommandRouter;

/// A bar that docks at any side of the main window, floats or hides. Until it is given contents it says
/// what it is for.
class DockBar : public QDockWidget {
 public:
  DockBar(StringId title, StringId emptyText, QWidget* parent);

  /// Takes the widget over.
  void SetContents(QWidget* contents) { setWidget(contents); }
};

/// The main window's toolbars and docking bars: builds them, shows and hides them by command, and keeps
/// their layout.
class DockBars {
 public:
  DockBars(QMainWindow& window, CommandRouter& router);

  /// The four toolbars of the table, side by side in one row.
  void AddToolBars();
  DockBar& AddBar(CommandId toggle, StringId title, StringId emptyText, Qt::DockWidgetArea area);
  /// Null for a command that shows no bar.
  DockBar* Bar(CommandId toggle) const;
  const std::vector<QToolBar*>& ToolBarWidgets() const { return m_toolBars; }

  QByteArray SaveLayout() const;
  /// A layout that does not fit leaves the bars as they are.
  void RestoreLayout(const QByteArray& layout);

 private:
  void RegisterToggle(CommandId toggle, QWidget& bar);

  QMainWindow& m_window;
  CommandRouter& m_router;
  std::vector<QToolBar*> m_toolBars;
  std::map<CommandId, DockBar*> m_bars;
};

}  // namespace quill
