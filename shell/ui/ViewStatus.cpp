#include "shell/ui/ViewStatus.h"

#include "shell/ui/ActiveView.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/StatusPanes.h"

namespace quill {

ViewStatus::ViewStatus(ActiveView& active, StatusBar& bar, CommandRouter& router, QObject* parent)
    : QObject(parent), m_active(active), m_bar(bar), m_router(router) {
  for (const auto signal : {&ActiveView::Changed, &ActiveView::CaretMoved, &ActiveView::OverwriteModeChanged,
                            &ActiveView::ZoomChanged, &ActiveView::DocumentChanged}) {
    connect(&active, signal, this, &ViewStatus::Update);
  }
  for (const auto signal :
       {&ActiveView::Changed, &ActiveView::SelectionChanged, &ActiveView::DocumentChanged}) {
    connect(&active, signal, &router, &CommandRouter::RefreshSoon);
  }
  connect(&active, &ActiveView::Hint, this, [this](const QString& text) { m_bar.Tell(text); });
}

void ViewStatus::Update() {
  const CQuillView* view = m_active.View();
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
