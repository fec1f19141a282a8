#include "shell/ui/WindowSwitcher.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListWidget>
#include <QScrollBar>
#include <algorithm>

#include "res/ui/UiText.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/Workspace.h"

namespace quill {
namespace {

constexpr Qt::KeyboardModifiers kHolding = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
constexpr int kRowPadding = 10;  ///< pixels, of each row's height
constexpr int kNarrowest = 280;
constexpr int kMostPercent = 80;  ///< of the workspace

Qt::KeyboardModifiers ModifierOf(int key) {
  switch (key) {
    case Qt::Key_Control:
      return Qt::ControlModifier;
    case Qt::Key_Alt:
      return Qt::AltModifier;
    case Qt::Key_Meta:
      return Qt::MetaModifier;
    default:
      return Qt::NoModifier;
  }
}

/// Never has the focus: the keys go to the text, or to whoever had it.
QListWidget* MakeList(Workspace& workspace) {
  auto* list = new QListWidget(workspace.window());
  list->setObjectName("WindowSwitcher");
  list->setAccessibleName(UiText(StringId::kOpenDocuments));
  list->setFocusPolicy(Qt::NoFocus);
  list->setFrameShape(QFrame::StyledPanel);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setTextElideMode(Qt::ElideMiddle);
  list->setUniformItemSizes(true);
  return list;
}

/// In the middle of the workspace, as large as its rows want it.
void Place(QListWidget& list, const Workspace& workspace) {
  const int frame = 2 * list.frameWidth();
  const QSize most = workspace.size() * kMostPercent / 100;
  const QSize wanted(std::max(kNarrowest, list.sizeHintForColumn(0) + frame + 2 * kRowPadding),
                     list.sizeHintForRow(0) * list.count() + frame);
  const QSize size = wanted.boundedTo(most);
  const QPoint middle = workspace.mapTo(workspace.window(), workspace.rect().center());
  list.setGeometry(QRect(middle - QPoint(size.width(), size.height()) / 2, size));
}

}  // namespace

WindowSwitcher::~WindowSwitcher() {
  delete m_list;
}

void WindowSwitcher::Step(int direction) {
  const Qt::KeyboardModifiers held = QGuiApplication::keyboardModifiers() & kHolding;
  if (!IsOpen()) Open();
  const auto count = static_cast<int>(m_frames.size());
  if (count > 0) m_list->setCurrentRow((m_list->currentRow() + direction + count) % count);
  m_held = held;
  if (held == Qt::NoModifier) {
    Close(true);
    return;
  }
  Place(*m_list, m_workspace);
  m_list->show();
  m_list->raise();
}

void WindowSwitcher::Open() {
  m_list = MakeList(m_workspace);
  m_frames.clear();
  for (CChildFrame* frame : m_workspace.FramesByUse()) {
    m_frames.emplace_back(frame);
    auto* row = new QListWidgetItem(frame->windowIcon(), frame->ShownTitle(), m_list);
    row->setSizeHint(QSize(m_list->fontMetrics().horizontalAdvance(row->text()) + 4 * kRowPadding,
                           m_list->fontMetrics().height() + kRowPadding));
  }
  m_list->setCurrentRow(0);
  connect(m_list, &QListWidget::itemPressed, this, [this](QListWidgetItem* row) {
    m_list->setCurrentItem(row);
    Close(true);
  });
  QApplication::instance()->installEventFilter(this);
}

void WindowSwitcher::Close(bool change) {
  QApplication::instance()->removeEventFilter(this);
  const int row = m_list->currentRow();
  m_list->hide();
  m_list->deleteLater();
  m_list = nullptr;
  const QPointer<CChildFrame> chosen = row < 0 ? nullptr : m_frames[static_cast<size_t>(row)];
  m_frames.clear();
  if (change && chosen != nullptr && !chosen->IsClosed()) m_workspace.Activate(*chosen);
}

bool WindowSwitcher::OnKey(QEvent& event) {
  const int key = static_cast<QKeyEvent&>(event).key();
  if (event.type() == QEvent::KeyRelease) {
    if ((ModifierOf(key) & m_held) != 0) Close(true);
    return false;
  }
  if (key != Qt::Key_Escape) return false;
  event.accept();
  if (event.type() == QEvent::KeyPress) Close(false);
  return true;
}

bool WindowSwitcher::eventFilter(QObject* watched, QEvent* event) {
  if (!IsOpen()) return false;
  switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return watched->isWidgetType() && OnKey(*event);
    case QEvent::WindowDeactivate:
      if (watched == m_workspace.window()) Close(false);
      return false;
    case QEvent::MouseButtonPress:
      if (watched->isWidgetType() && watched != m_list && watched != m_list->viewport() &&
          watched != m_list->verticalScrollBar()) {
        Close(false);
      }
      return false;
    default:
      return false;
  }
}

}  // namespace quill
