#include "shell/ui/ChildFrame.h"

#include <QAction>
#include <QCloseEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QStyle>
#include <QStyleOptionTitleBar>
#include <algorithm>

#include "res/ui/IconSet.h"
#include "res/ui/UiText.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "widgets/FrameGeometry.h"
#include "widgets/PlainNames.h"

namespace quill {

CChildFrame::CChildFrame(CQuillDoc& document, CQuillView* view) : m_document(document), m_view(view) {
  setAttribute(Qt::WA_DeleteOnClose);
  // Its Close entry would dispute the key with the command of that key.
  for (QAction* action : systemMenu()->actions()) action->setShortcuts(QList<QKeySequence>());
  setWindowIcon(LoadIcon("document-script"));
  view->setFrameShape(QFrame::NoFrame);
  setWidget(view);
  document.AttachView(*view);
  connect(&document, &CQuillDoc::ModifiedChanged, this, &CChildFrame::UpdateTitle);
}

CChildFrame::~CChildFrame() {
  if (!m_closed) m_document.DetachView(*m_view);
}

QString CChildFrame::TitleText() const {
  const auto& views = m_document.Views();
  const auto own = std::find(views.begin(), views.end(), m_view);
  const QString title = m_document.Title();
  return views.size() < 2 ? title : title + u':' + QString::number(own - views.begin() + 1);
}

void CChildFrame::UpdateTitle() {
  const DocumentFile& file = m_document.File();
  QString title = TitleText();
  if (!m_folder.isEmpty()) title = UiText(StringId::kNameInFolder, {title, m_folder});
  if (file.Disk() == DocumentFile::DiskState::kGone) title = UiText(StringId::kDeletedFileTitle, {title});
  m_shownTitle = title;
  m_view->setAccessibleName(title);
  m_view->setAccessibleDescription(FromBytes(m_document.File().Path()));
  setWindowTitle(plain_names::ForTitle(title) + "[*]");
  setWindowModified(file.IsModified() || file.Disk() != DocumentFile::DiskState::kAsKnown);
  setToolTip(plain_names::ForTip(FromBytes(m_document.File().Path())));
  Q_EMIT TitleUpdated();
}

QString CChildFrame::ShownTitle() const {
  return isWindowModified() ? m_shownTitle + u'*' : m_shownTitle;
}

void CChildFrame::ShowFolder(const QString& folder) {
  m_folder = folder;
  UpdateTitle();
}

int CChildFrame::TitleHeight() const {
  QStyleOptionTitleBar option;
  option.initFrom(this);
  return style()->pixelMetric(QStyle::PM_TitleBarHeight, &option, this);
}

bool CChildFrame::event(QEvent* event) {
  // The path is the tip of the tab or of the title; over the text it would cover what one reads.
  if (event->type() == QEvent::ToolTip &&
      m_view->geometry().contains(static_cast<QHelpEvent*>(event)->pos())) {
    event->ignore();
    return true;
  }
  return QMdiSubWindow::event(event);
}

void CChildFrame::closeEvent(QCloseEvent* event) {
  if (m_mayClose && !m_mayClose()) {
    event->ignore();
    return;
  }
  m_closed = true;
  m_document.DetachView(*m_view);
  QMdiSubWindow::closeEvent(event);
  Q_EMIT Closed(this);
}

std::string CChildFrame::PlacementSection() const {
  return ToBytes(TitleText());
}

void CChildFrame::SavePlacement(AppProfile profile) const {
  frame_geometry::Keep(profile, PlacementSection(), *this);
}

void CChildFrame::RestorePlacement(const AppProfile& profile) {
  const auto kept = frame_geometry::Kept(profile, PlacementSection());
  if (kept && frame_geometry::RestoreWithin(*this, *kept)) showMaximized();
}

}  // namespace quill
