#include "shell/ui/DockBars.h"

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QToolBar>

#include "res/Menus.h"
#include "res/ui/UiText.h"
#include "shell/ui/CommandRouter.h"

namespace quill {
namespace {

constexpr int kToolIconSize = 16;
constexpr int kEmptyTextMargin = 12;
/// Of the form that `SaveLayout` gives; another one is not restored.
constexpr int kLayoutVersion = 1;

}  // namespace

DockBar::DockBar(StringId title, StringId emptyText, QWidget* parent) : QDockWidget(UiText(title), parent) {
  setObjectName(UiText(title));
  setAllowedAreas(Qt::AllDockWidgetAreas);
  auto* label = new QLabel(UiText(emptyText), this);
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  label->setMargin(kEmptyTextMargin);
  QPalette faint = label->palette();
  QColor text = faint.color(QPalette::WindowText);
  text.setAlphaF(0.65F);
  faint.setColor(QPalette::WindowText, text);
  label->setPalette(faint);
  label->setBackgroundRole(QPalette::Base);
  label->setAutoFillBackground(true);
  setWidget(label);
}

DockBars::DockBars(QMainWindow& window, CommandRouter& router) : m_window(window), m_router(router) {
  window.setDockOptions(QMainWindow::AnimatedDocks | QMainWindow::AllowTabbedDocks |
                        QMainWindow::AllowNestedDocks);
}

void DockBars::AddToolBars() {
  for (const ToolBar& table : ToolBars()) {
    auto* bar = new QToolBar(UiText(table.title), &m_window);
    bar->setObjectName("ToolBar" + UiText(table.title));
    bar->setAllowedAreas(Qt::AllToolBarAreas);
    bar->setIconSize(QSize(kToolIconSize, kToolIconSize));
    for (CommandId id : table.buttons) {
      if (id == CommandId::kNone) {
        bar->addSeparator();
        continue;
      }
      m_router.EnsureIcon(id);
      bar->addAction(m_router.Action(id));
    }
    m_window.addToolBar(bar);
    RegisterToggle(CommandId::kViewToolBarFile + static_cast<int>(m_toolBars.size()), *bar);
    m_toolBars.push_back(bar);
  }
}

DockBar& DockBars::AddBar(CommandId toggle, StringId title, StringId emptyText, Qt::DockWidgetArea area) {
  auto* bar = new DockBar(title, emptyText, &m_window);
  m_window.addDockWidget(area, bar);
  RegisterToggle(toggle, *bar);
  m_bars.emplace(toggle, bar);
  return *bar;
}

void DockBars::RegisterToggle(CommandId toggle, QWidget& bar) {
  m_router.Register(
      toggle, [&bar] { bar.setVisible(bar.isHidden()); },
      [&bar] { return CommandState::Checked(!bar.isHidden()); });
}

DockBar* DockBars::Bar(CommandId toggle) const {
  const auto found = m_bars.find(toggle);
  return found == m_bars.end() ? nullptr : found->second;
}

QByteArray DockBars::SaveLayout() const {
  return m_window.saveState(kLayoutVersion);
}

void DockBars::RestoreLayout(const QByteArray& layout) {
  m_window.restoreState(layout, kLayoutVersion);
}

}  // namespace quill
