#include "shell/ui/ActiveViewWatch.h"

#include <QMainWindow>

#include "shell/ui/ChildFrame.h"
#include "shell/ui/ShellParts.h"
#include "shell/ui/Workspace.h"

namespace quill {

ActiveViewWatch::ActiveViewWatch(const ShellParts& parts, QObject* parent)
    : QObject(parent), m_window(&parts.window) {
  connect(&parts.workspace, &Workspace::ActiveFrameChanged, this, &ActiveViewWatch::Follow);
  m_window->installEventFilter(this);
}

void ActiveViewWatch::Follow(CChildFrame* frame) {
  OnLeave();
  if (m_view != nullptr) {
    disconnect(m_view, nullptr, this, nullptr);
    m_view->removeEventFilter(this);
    m_view->viewport()->removeEventFilter(this);
  }
  m_view = frame == nullptr ? nullptr : &frame->View();
  if (m_view == nullptr) return;
  m_view->installEventFilter(this);
  m_view->viewport()->installEventFilter(this);
  OnEnter(*m_view);
}

bool ActiveViewWatch::eventFilter(QObject* watched, QEvent* event) {
  if (watched != m_window) return OnViewEvent(*event);
  if (event->type() == QEvent::Move || event->type() == QEvent::Resize) OnWindowMoved();
  return false;
}

}  // namespace quill
