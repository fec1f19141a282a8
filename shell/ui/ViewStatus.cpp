#include "shell/ui/ViewStatus.h"

#include <QAction>
#include <QMenu>
#include <vector>

#include "res/ui/UiText.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/StatusPanes.h"

namespace quill {
namespace {

using enum CommandId;

struct PaneAnswer {
  PaneOf pane;
  std::vector<CommandId> commands;  ///< one is carried out, several are a menu
};

const PaneAnswer kAnswers[] = {
    {PaneOf::kCaret, {kEditGoToLine}},
    {PaneOf::kLineEnd, {kFileLineEndDos, kFileLineEndUnix, kFileLineEndMac}},
    {PaneOf::kInsert, {kEditOverwrite}},
    {PaneOf::kReadOnly, {kFileReadOnly}},
    {PaneOf::kZoom, {kViewZoomIn, kViewZoomOut, kViewZoomReset}},
};

void ShowMenu(const std::vector<CommandId>& commands, CommandRouter& router, QPoint above) {
  QMenu menu;
  for (const CommandId id : commands) {
    router.Refresh(id);
    router.EnsureIcon(id);
    menu.addAction(router.Action(id));
  }
  menu.exec(above - QPoint(0, menu.sizeHint().height()));
}

}  // namespace

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
  MakePanesAnswer();
}

void ViewStatus::MakePanesAnswer() {
  for (const PaneAnswer& answer : kAnswers) {
    const auto tip = [this, &answer] {
      m_router.Refresh(answer.commands.front());
      return answer.commands.size() == 1
                 ? m_router.Action(answer.commands.front())->toolTip()
                 : UiText(answer.pane == PaneOf::kZoom ? StringId::kZoomPaneTip : StringId::kLineEndPaneTip);
    };
    m_bar.Pane(answer.pane).SetAnswer(tip, [this, &answer](QPoint place) {
      if (answer.commands.size() == 1) {
        m_router.Execute(answer.commands.front());
      } else {
        ShowMenu(answer.commands, m_router, place);
      }
    });
  }
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
