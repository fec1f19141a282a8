#pragma once
#include <QMdiArea>
#include <functional>
#include <vector>

#include "settings/AppProfile.h"

class QTabBar;

namespace quill {

class CChildFrame;
class CQuillDoc;
class CQuillView;

/// The area that holds the documents' windows: as tabs, or as windows within the main window.
class Workspace : public QMdiArea {
  Q_OBJECT

 public:
  /// Makes a view without a document.
  using ViewFactory = std::function<CQuillView*()>;
  using CloseGuard = std::function<bool(CChildFrame&)>;

  Workspace(ViewFactory makeView, AppProfile profile, QWidget* parent = nullptr);
  ~Workspace() override;

  /// Opens a window on the document and makes it the active one.
  CChildFrame& AddWindow(CQuillDoc& document);
  void SetCloseGuard(CloseGuard guard) { m_mayClose = std::move(guard); }

  /// The window that commands are for, also while another program is in front; null when there is none.
  CChildFrame* ActiveFrame() const;
  CQuillView* ActiveView() const;
  CQuillDoc* ActiveDocument() const;
  /// From left to right.
  std::vector<CChildFrame*> Frames() const;
  /// The one used last comes first.
  const std::vector<CChildFrame*>& FramesByUse() const { return m_used; }
  void Activate(CChildFrame& frame);
  /// Brings the first window of a document to the front; false when it has none.
  bool ActivateDocument(const CQuillDoc& document);

  bool IsTabbed() const { return viewMode() == TabbedView; }
  void SetTabbed(bool tabbed);
  /// Its tabs stand for `Frames()`. Null without tabs: it comes and goes with them.
  QTabBar* TabBar() const;
  /// One behind the other, the active one in front, each a good part of the area; only without tabs.
  void Cascade();
  /// One below the other, or side by side; only without tabs.
  void Tile(Qt::Orientation direction);

 Q_SIGNALS:
  /// Null when the last window closed.
  void ActiveFrameChanged(CChildFrame* frame);
  void WindowAdded(CChildFrame* frame);
  /// The window is about to go, its view detached.
  void WindowClosed(CChildFrame* frame);
  /// Tabs have become windows, or windows tabs.
  void TabbedChanged();

 private:
  void OnActivated();
  void OnClosed(CChildFrame* frame);
  /// Shows the folder beside names that are alike.
  void NameFrames();
  void SetUpTabs();

  ViewFactory m_makeView;
  AppProfile m_profile;
  CloseGuard m_mayClose;
  CChildFrame* m_active = nullptr;
  std::vector<CChildFrame*> m_used;
};

}  // namespace quill
