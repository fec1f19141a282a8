#pragma once
#include <QObject>
#include <QPointer>
#include <vector>

class QKeyEvent;
class QListWidget;

namespace quill {

class CChildFrame;
class Workspace;

/// Goes through the windows in the order of their last use. While the key that does it is held down by
/// Ctrl, Alt or Meta, a list shows how far one has come; the window is changed when that key is released.
class WindowSwitcher : public QObject {
  Q_OBJECT

 public:
  /// The workspace outlives it.
  explicit WindowSwitcher(Workspace& workspace) : m_workspace(workspace) {}
  ~WindowSwitcher() override;

  /// One window further back in use for 1, the other way for -1.
  void Step(int direction);

 protected:
  /// Of the application, while the list is shown.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Open();
  void Close(bool change);
  bool OnKey(QEvent& event);
  bool IsOpen() const { return !m_list.isNull(); }

  Workspace& m_workspace;
  std::vector<QPointer<CChildFrame>> m_frames;  ///< as in the list
  QPointer<QListWidget> m_list;
  Qt::KeyboardModifiers m_held;
};

}  // namespace quill
