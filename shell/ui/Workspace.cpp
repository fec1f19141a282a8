#include "shell/ui/Workspace.h"

#include <QTabBar>
#include <algorithm>
#include <ranges>

#include "res/ui/UiText.h"
#include "shell/TellingFolders.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"

namespace quill {
namespace {

/// Of the area, for a window that has no place of its own yet.
constexpr int kUsualPercent = 70;

}  // namespace

Workspace::Workspace(ViewFactory makeView, AppProfile profile, QWidget* parent)
    : QMdiArea(parent), m_makeView(std::move(makeView)), m_profile(profile) {
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setFrameShape(QFrame::NoFrame);
  setTabsClosable(true);
  setTabsMovable(true);
  setDocumentMode(true);
  setActivationOrder(ActivationHistoryOrder);
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
  if (!IsTabbed()) frame->resize(viewport()->size() * kUsualPercent / 100);
  addSubWindow(frame);
  m_used.push_back(frame);
  connect(&document, &CQuillDoc::TitleChanged, frame, [this] { NameFrames(); });
  NameFrames();
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
  if (frame != nullptr) {
    std::erase(m_used, frame);
    m_used.insert(m_used.begin(), frame);
  }
  Q_EMIT ActiveFrameChanged(frame);
}

void Workspace::OnClosed(CChildFrame* frame) {
  if (!IsTabbed()) frame->SavePlacement(m_profile);
  std::erase(m_used, frame);
  if (m_active == frame) {
    m_active = nullptr;
    Q_EMIT ActiveFrameChanged(nullptr);
  }
  NameFrames();
  Q_EMIT WindowClosed(frame);
}

void Workspace::NameFrames() {
  const std::vector<CChildFrame*> frames = Frames();
  std::vector<std::string> paths;
  paths.reserve(frames.size());
  for (const CChildFrame* frame : frames) paths.push_back(frame->Document().File().Path());
  const std::vector<std::string> folders = TellingFolders(paths);
  for (size_t i = 0; i < frames.size(); ++i) frames[i]->ShowFolder(FromBytes(folders[i]));
}

void Workspace::SetTabbed(bool tabbed) {
  setViewMode(tabbed ? TabbedView : SubWindowView);
  if (tabbed) {
    SetUpTabs();
  } else {
    Cascade();
  }
  Q_EMIT TabbedChanged();
}

QTabBar* Workspace::TabBar() const {
  return IsTabbed() ? findChild<QTabBar*>() : nullptr;
}

void Workspace::Cascade() {
  if (IsTabbed()) return;
  const QSize area = viewport()->size();
  const QSize size = area * kUsualPercent / 100;
  // The last ones may not leave the area: then the next row begins further right.
  QPoint place;
  int row = 0;
  const std::vector<CChildFrame*> used = m_used;  // showing a window may activate it
  for (CChildFrame* frame : used | std::views::reverse) {
    frame->showNormal();
    const int step = frame->TitleHeight();
    if (place.y() + size.height() > area.height()) place = {++row * 2 * step, 0};
    if (place.x() + size.width() > area.width()) place.setX(0);
    frame->setGeometry(QRect(place, size));
    frame->raise();
    place += QPoint(step, step);
  }
  if (used.empty()) return;
  Activate(*used.front());
  m_used = used;
}

void Workspace::SetUpTabs() {
  QTabBar* tabs = TabBar();
  if (tabs == nullptr) return;
  tabs->setExpanding(false);
  tabs->setElideMode(Qt::ElideNone);
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
