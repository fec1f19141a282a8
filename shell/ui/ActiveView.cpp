#include "shell/ui/ActiveView.h"

#include "shell/ui/ChildFrame.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/Workspace.h"

namespace quill {

ActiveView::ActiveView(Workspace& workspace, QObject* parent) : QObject(parent), m_workspace(workspace) {
  connect(&workspace, &Workspace::ActiveFrameChanged, this, &ActiveView::Follow);
}

ActiveView::~ActiveView() = default;

CChildFrame* ActiveView::Frame() const {
  return m_view == nullptr ? nullptr : m_workspace.ActiveFrame();
}

CQuillDoc* ActiveView::Document() const {
  return m_view == nullptr ? nullptr : m_workspace.ActiveDocument();
}

CQuillView* ActiveView::ViewWithText() const {
  return m_view != nullptr && m_view->Model().HasText() ? m_view.data() : nullptr;
}

void ActiveView::AddTaker(InputTurn turn, InputTaker& taker) {
  m_takers.push_back({turn, &taker});
  if (m_view != nullptr) m_view->Input().Add(turn, taker);
}

void ActiveView::RemoveTaker(InputTaker& taker) {
  std::erase_if(m_takers, [&taker](const Taker& known) { return known.taker == &taker; });
  if (m_view != nullptr) m_view->Input().Remove(taker);
}

void ActiveView::Follow(CChildFrame* frame) {
  delete m_connections;
  if (m_view != nullptr) {
    for (const Taker& taker : m_takers) m_view->Input().Remove(*taker.taker);
  }
  m_view = frame == nullptr ? nullptr : &frame->View();
  if (m_view != nullptr) {
    for (const Taker& taker : m_takers) m_view->Input().Add(taker.turn, *taker.taker);
    m_connections = new QObject(this);
    const auto pass = [this](auto signal, auto own) {
      connect(m_view, signal, m_connections, [this, own] { (this->*own)(); });
    };
    pass(&CCrystalTextView::CaretMoved, &ActiveView::CaretMoved);
    pass(&CCrystalTextView::SelectionChanged, &ActiveView::SelectionChanged);
    pass(&CCrystalTextView::OverwriteModeChanged, &ActiveView::OverwriteModeChanged);
    pass(&CCrystalTextView::ZoomChanged, &ActiveView::ZoomChanged);
    pass(&CCrystalTextView::LostFocus, &ActiveView::LostFocus);
    pass(&CCrystalTextView::ScrolledVertically, &ActiveView::ScrolledVertically);
    pass(&CCrystalTextView::BufferReplaced, &ActiveView::BufferReplaced);
    connect(m_view, &CCrystalEditView::Typed, m_connections, [this](char c) { Q_EMIT Typed(c); });
    connect(m_view, &CCrystalEditView::Hint, m_connections,
            [this](const QString& text) { Q_EMIT Hint(text); });
    for (const auto signal : {&CQuillDoc::StateChanged, &CQuillDoc::ModifiedChanged}) {
      connect(&frame->Document(), signal, m_connections, [this] { Q_EMIT DocumentChanged(); });
    }
  }
  Q_EMIT Changed();
}

}  // namespace quill
