#include "shell/ui/Workspace.h"

#include <QTabBar>

#include "shell/ui/ChildFrame.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"

namespace quill {

Workspace::Workspace(ViewFactory makeView, AppProfile profile, QWidget* parent)
    : QMdiArea(parent), m_makeView(std::move(makeView)), m_profile(profile) {
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setFrameShape(QFrame::NoFrame);
  setTabsClosable(true);
  setTabsMovable(true);
  setDocumentMode(true);
  setBackground(palette().brush(QPalette::Mid));
  connect(this, &QMdiArea::subWindowActivated, this, [this] { OnActivated(); });
  SetTabbed(true);
}

Workspace::~Workspace() {
  // The windows go while this can still be asked about them: views that lose their text tell their followers.
  disconnect(this, &QMdiArea::subWindowActivated, this, nullptr);
  m_active = nullptr;
  Q_EMIT ActiveFrameChanged(nullptr);
  qDeleteAll(subWindowList());
}

CChildFrame& Workspace::AddWindow(CQuillDoc& document) {
  auto* frame = new CChildFrame(document, m_makeView());
  frame->SetCloseGuard([this, frame] { return !m_mayClose || m_mayClose(*frame); });
  // Not to a slot of this object: the base class cuts all of those off when the window closes.
  connect(frame, &CChildFrame::Closed, frame, [this](CChildFrame* closed) { OnClosed(closed); });
  const bool first = subWindowList().isEmpty();
  addSubWindow(frame);
  for (CChildFrame* other : Frames()) {
    if (&other->Document() == &document) other->UpdateTitle();
  }
  if (!IsTabbed()) {
    frame->RestorePlacement(m_profile);
    if (first) frame->setWindowState(Qt::WindowMaximized);
  }
  Q_EMIT WindowAdded(frame);
  if (IsTabbed()) {
    frame->showMaximized();
  } else {
    frame->show();
  }
  Activate(*frame);
  return *frame;
}

void Workspace::Activate(CChildFrame& frame) {
  setActiveSubWindow(&frame);
  frame.View().setFocus();
  OnActivated();
}

bool Workspace::ActivateDocument(const CQuillDoc& document) {
  for (CChildFrame* frame : Frames()) {
    if (&frame->Document() != &document) continue;
    Activate(*frame);
    return true;
  }
  return false;
}

CChildFrame* Workspace::ActiveFrame() const {
  return m_active;
}

CQuillView* Workspace::ActiveView() const {
  return m_active == nullptr ? nullptr : &m_active->View();
}

CQuillDoc* Workspace::ActiveDocument() const {
  return m_active == nullptr ? nullptr : &m_active->Document();
}

std::vector<CChildFrame*> Workspace::Frames() const {
  std::vector<CChildFrame*> frames;
  for (QMdiSubWindow* window : subWindowList()) {
    auto* frame = qobject_cast<CChildFrame*>(window);
    if (frame != nullptr && !frame->IsClosed()) frames.push_back(frame);
  }
  return frames;
}

void Workspace::OnActivated() {
  auto* frame = qobject_cast<CChildFrame*>(currentSubWindow());
  if (frame != nullptr && frame->IsClosed()) frame = nullptr;
  if (frame == m_active) return;
  m_active = frame;
  Q_EMIT ActiveFrameChanged(frame);
}

void Workspace::OnClosed(CChildFrame* frame) {
  if (!IsTabbed()) frame->SavePlacement(m_profile);
  if (m_active == frame) {
    m_active = nullptr;
    Q_EMIT ActiveFrameChanged(nullptr);
  }
  for (CChildFrame* other : Frames()) {
    if (&other->Document() == &frame->Document()) other->UpdateTitle();
  }
  Q_EMIT WindowClosed(frame);
}

void Workspace::SetTabbed(bool tabbed) {
  setViewMode(tabbed ? TabbedView : SubWindowView);
  if (tabbed) {
    SetUpTabs();
    return;
  }
  for (CChildFrame* frame : Frames()) frame->showNormal();
  cascadeSubWindows();
}

/// The tab bar comes and goes with the mode.
void Workspace::SetUpTabs() {
  auto* tabs = findChild<QTabBar*>();
  if (tabs == nullptr) return;
  tabs->setExpanding(false);
  tabs->setElideMode(Qt::ElideMiddle);
  tabs->setUsesScrollButtons(true);
}

void Workspace::Tile(Qt::Orientation direction) {
  const std::vector<CChildFrame*> frames = Frames();
  if (IsTabbed() || frames.empty()) return;
  const int count = static_cast<int>(frames.size());
  const QSize area = viewport()->size();
  for (int i = 0; i < count; ++i) {
    CChildFrame* frame = frames[static_cast<size_t>(i)];
    frame->showNormal();
    const auto share = [i, count](int length) {
      return std::pair(length * i / count, length * (i + 1) / count);
    };
    if (direction == Qt::Horizontal) {
      const auto [top, bottom] = share(area.height());
      frame->setGeometry(0, top, area.width(), bottom - top);
    } else {
      const auto [left, right] = share(area.width());
      frame->setGeometry(left, 0, right - left, area.height());
    }
  }
}

}  // namespace quill
