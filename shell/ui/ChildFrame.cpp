#include "shell/ui/ChildFrame.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <algorithm>

#include "res/ui/IconSet.h"
#include "res/ui/UiText.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "widgets/FrameGeometry.h"

namespace quill {

CChildFrame::CChildFrame(CQuillDoc& document, CQuillView* view) : m_document(document), m_view(view) {
  setAttribute(Qt::WA_DeleteOnClose);
  // Its Close entry would dispute the key with the command of that key.
  for (QAction* action : systemMenu()->actions()) action->setShortcuts(QList<QKeySequence>());
  setWindowIcon(LoadIcon("document-script"));
  view->setFrameShape(QFrame::NoFrame);
  setWidget(view);
  document.AttachView(*view);
  connect(&document, &CQuillDoc::TitleChanged, this, &CChildFrame::UpdateTitle);
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
  const bool gone = file.Disk() == DocumentFile::DiskState::kGone;
  setWindowTitle((gone ? UiText(StringId::kDeletedFileTitle, {TitleText()}) : TitleText()) + "[*]");
  setWindowModified(file.IsModified() || file.Disk() != DocumentFile::DiskState::kAsKnown);
  setToolTip(FromBytes(m_document.File().Path()));
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
