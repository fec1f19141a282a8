#pragma once
#include <QObject>
#include <QPointer>
#include <vector>

#include "shell/ui/QuillView.h"
#include "text/ui/InputChain.h"

namespace quill {

class CChildFrame;
class CQuillDoc;
class Workspace;

/// The view that commands are for, whichever that is, and what happens in it. Who follows it connects once
/// to the signals here; they are those of the view, and of its document, that is active at the moment.
class ActiveView : public QObject {
  Q_OBJECT

 public:
  /// The workspace outlives it, or says that no window is active before it goes.
  ActiveView(Workspace& workspace, QObject* parent);
  ~ActiveView() override;

  /// All null while no window is open.
  CQuillView* View() const { return m_view; }
  CChildFrame* Frame() const;
  CQuillDoc* Document() const;
  /// Null also while the view has no text.
  CQuillView* ViewWithText() const;

  /// Takes part in the input of the active view; remove it before it goes.
  void AddTaker(InputTurn turn, InputTaker& taker);
  void RemoveTaker(InputTaker& taker);

 Q_SIGNALS:
  /// Another view is the active one, or none.
  void Changed();

  void CaretMoved();
  void SelectionChanged();
  void OverwriteModeChanged();
  void ZoomChanged();
  void LostFocus();
  void ScrolledVertically();
  /// The view shows another text.
  void BufferReplaced();
  void Typed(char character);
  /// A sentence for the status bar.
  void Hint(const QString& text);
  /// Read-only or not, modified or not, loaded or saved.
  void DocumentChanged();

 private:
  struct Taker {
    InputTurn turn;
    InputTaker* taker;
  };
  void Follow(CChildFrame* frame);

  Workspace& m_workspace;
  QPointer<CQuillView> m_view;
  QPointer<QObject> m_connections;  ///< context of the connections to the view
  std::vector<Taker> m_takers;
};

}  // namespace quill
