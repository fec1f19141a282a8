#include "shell/ui/TabStrip.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QPainter>
#include <QStyleOptionToolButton>
#include <QTabBar>
#include <QToolButton>
#include <QToolTip>
#include <algorithm>

#include "res/ui/UiText.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/Workspace.h"

namespace quill {
namespace {

using enum CommandId;

constexpr int kButtonWidth = 26;
/// kNone stands for a separator.
constexpr CommandId kTabCommands[] = {
    kFileClose, kWindowCloseOthers, kWindowCloseToRight, kNone, kFileSave, kWindowNew,
    kNone,      kFileCopyPath,      kFileOpenFolder,
};

/// A flat button with a stroke that points down.
class ListButton : public QToolButton {
 public:
  using QToolButton::QToolButton;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    if (option.state.testFlag(QStyle::State_MouseOver) || isDown() || hasFocus()) {
      QColor behind = palette().color(QPalette::WindowText);
      behind.setAlpha(isDown() ? 60 : 30);
      painter.fillRect(rect().adjusted(1, 1, -1, -1), behind);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText), 1.6,
             Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF middle = QRectF(rect()).center();
    const QPointF stroke[] = {middle + QPointF(-4, -2), middle + QPointF(0, 2), middle + QPointF(4, -2)};
    painter.drawPolyline(stroke, 3);
  }
};

}  // namespace

TabStrip::TabStrip(Workspace& workspace, CommandRouter& router)
    : QObject(&workspace), m_workspace(workspace), m_router(router), m_button(new ListButton(&workspace)) {
  m_button->setObjectName("TabList");
  m_button->setToolTip(UiText(StringId::kOpenDocuments));
  m_button->setAccessibleName(UiText(StringId::kOpenDocuments));
  m_button->setFocusPolicy(Qt::TabFocus);
  connect(m_button, &QToolButton::clicked, this, &TabStrip::ShowList);
  connect(&workspace, &Workspace::TabbedChanged, this, &TabStrip::Attach);
  connect(&workspace, &Workspace::WindowAdded, this, [this](CChildFrame* frame) {
    connect(frame, &CChildFrame::TitleUpdated, this, &TabStrip::NameTabs);
    NameTabs();
  });
  Attach();
}

void TabStrip::Attach() {
  m_tabs = m_workspace.TabBar();
  if (m_tabs != nullptr) {
    m_tabs->installEventFilter(this);
    connect(m_tabs, &QObject::destroyed, this, [this] { m_tabs = nullptr; });
  }
  PlaceButton();
  NameTabs();
}

void TabStrip::NameTabs() {
  if (m_tabs == nullptr) return;
  const std::vector<CChildFrame*> frames = m_workspace.Frames();
  const int count = std::min(m_tabs->count(), static_cast<int>(frames.size()));
  for (int i = 0; i < count; ++i) {
    const CChildFrame& frame = *frames[static_cast<size_t>(i)];
    const QString name = frame.View().accessibleName();
    m_tabs->setAccessibleTabName(i, frame.isWindowModified() ? UiText(StringId::kModifiedTab, {name}) : name);
  }
}

/// At the end of the tabs, which get so much less room.
void TabStrip::PlaceButton() {
  if (m_button == nullptr) return;
  const bool shown = m_tabs != nullptr && m_tabs->isVisible() && m_tabs->count() > 0;
  m_button->setVisible(shown);
  if (!shown) return;
  const int width = m_workspace.width() - kButtonWidth;
  if (m_tabs->width() != width) m_tabs->resize(width, m_tabs->height());
  m_button->setGeometry(width, m_tabs->y(), kButtonWidth, m_tabs->height());
  m_button->raise();
}

bool TabStrip::eventFilter(QObject* watched, QEvent* event) {
  if (watched != m_tabs) return false;
  switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::Show:
    case QEvent::Hide:
      PlaceButton();
      return false;
    case QEvent::ToolTip: {
      const auto& help = static_cast<const QHelpEvent&>(*event);
      const int index = m_tabs->tabAt(help.pos());
      const CChildFrame* frame = FrameOf(index);
      QToolTip::showText(help.globalPos(), frame == nullptr ? QString() : frame->toolTip(), m_tabs,
                         m_tabs->tabRect(index));
      return true;
    }
    case QEvent::ContextMenu: {
      const auto& menu = static_cast<const QContextMenuEvent&>(*event);
      ShowContextMenu(menu.pos(), menu.reason() == QContextMenuEvent::Mouse);
      return true;
    }
    default:
      return false;
  }
}

CChildFrame* TabStrip::FrameOf(int index) const {
  const std::vector<CChildFrame*> frames = m_workspace.Frames();
  return index < 0 || static_cast<size_t>(index) >= frames.size() ? nullptr
                                                                  : frames[static_cast<size_t>(index)];
}

void TabStrip::ShowList() {
  QMenu menu(m_button);
  for (int i = 0; i <= kWindowListLast - kWindowListFirst; ++i) {
    m_router.Refresh(kWindowListFirst + i);
    menu.addAction(m_router.Action(kWindowListFirst + i));
  }
  menu.exec(m_button->mapToGlobal(QPoint(m_button->width() - menu.sizeHint().width(), m_button->height())));
}

/// The tab under the pointer becomes the active one: the commands are for it.
void TabStrip::ShowContextMenu(QPoint place, bool byMouse) {
  const int index = byMouse ? m_tabs->tabAt(place) : m_tabs->currentIndex();
  CChildFrame* frame = FrameOf(index);
  if (frame == nullptr) return;
  m_workspace.Activate(*frame);
  if (!byMouse) place = m_tabs->tabRect(index).bottomLeft();
  QMenu menu(m_tabs);
  for (const CommandId id : kTabCommands) {
    if (id == kNone) {
      menu.addSeparator();
      continue;
    }
    m_router.Refresh(id);
    m_router.EnsureIcon(id);
    menu.addAction(m_router.Action(id));
  }
  menu.exec(m_tabs->mapToGlobal(place));
}

}  // namespace quill
