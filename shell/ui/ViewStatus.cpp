#include "shell/ui/ViewStatus.h"

#include "shell/ui/ChildFrame.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/StatusPanes.h"
#include "shell/ui/Workspace.h"

namespace quill {

ViewStatus::ViewStatus(Workspace& workspace, StatusBar& bar, CommandRouter& router, QObject* parent)
    : QObject(parent), m_workspace(workspace), m_bar(bar), m_router(router) {
  connect(&workspace, &Workspace::ActiveFrameChanged, this, &ViewStatus::Follow);
}

void ViewStatus::Follow(CChildFrame* frame) {
  delete m_connections;
  if (frame != nullptr) {
    auto* context = new QObject(this);
    m_connections = context;
    const auto update = [this] { Update(); };
    const auto updateCommands = [this] { m_router.RefreshSoon(); };
    CQuillView* view = &frame->View();
    connect(view, &CCrystalTextView::CaretMoved, context, update);
    connect(view, &CCrystalTextView::OverwriteModeChanged, context, update);
    connect(view, &CCrystalTextView::ZoomChanged, context, update);
    connect(view, &CCrystalEditView::Hint, context, [this](const QString& text) { m_bar.Tell(text); });
    connect(view, &CCrystalTextView::SelectionChanged, context, updateCommands);
    connect(&frame->Document(), &CQuillDoc::StateChanged, context, update);
    connect(&frame->Document(), &CQuillDoc::StateChanged, context, updateCommands);
    connect(&frame->Document(), &CQuillDoc::ModifiedChanged, context, updateCommands);
  }
  Update();
  m_router.RefreshSoon();
}

void ViewStatus::Update() {
  const CQuillView* view = m_workspace.ActiveView();
  const CCrystalTextBuffer* buffer = view == nullptr ? nullptr : view->Buffer();
  if (buffer == nullptr) {
    m_bar.Show(nullptr);
    return;
  }
  const StatusFacts facts{.line = view->CaretPos().line + 1,
                          .column = view->CaretPos().character + 1,
                          .lineEndStyle = buffer->LineEndStyle(),
                          .overwrite = view->OverwriteMode(),
                          .readOnly = buffer->IsReadOnly(),
                          .zoom = view->Zoom()};
  m_bar.Show(&facts);
}

}  // namespace quill
