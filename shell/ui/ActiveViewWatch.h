#pragma once
#include <QObject>
#include <QPointer>

#include "shell/ui/QuillView.h"

namespace quill {

class CChildFrame;
struct ShellParts;

/// Sees the events of the active view, whichever that is, before the view does.
class ActiveViewWatch : public QObject {
  Q_OBJECT

 protected:
  ActiveViewWatch(const ShellParts& parts, QObject* parent);

  /// Null while there is none.
  CQuillView* View() const { return m_view; }
  QWidget* Window() const { return m_window; }

  /// The view is not the active one any more; its signals are cut off from this object.
  virtual void OnLeave() = 0;
  virtual void OnEnter(CQuillView& view) = 0;
  /// An event of the view or of its viewport; true when they must not see it.
  virtual bool OnViewEvent(QEvent& event) = 0;
  /// The main window was moved, or has another size.
  virtual void OnWindowMoved() = 0;

  bool eventFilter(QObject* watched, QEvent* event) final;

 private:
  void Follow(CChildFrame* frame);

  /// While the main window is being destroyed it still gets events.
  QPointer<QWidget> m_window;
  QPointer<CQuillView> m_view;
};

}  // namespace quill
