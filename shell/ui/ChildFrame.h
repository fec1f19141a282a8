#pragma once
#include <QMdiSubWindow>
#include <functional>

#include "settings/AppProfile.h"

namespace quill {

class CQuillDoc;
class CQuillView;

/// The window of one view of a document: a tab, or a window within the main window.
class CChildFrame : public QMdiSubWindow {
  Q_OBJECT

 public:
  /// Takes the view over and attaches it to the document.
  CChildFrame(CQuillDoc& document, CQuillView* view);
  ~CChildFrame() override;

  CQuillDoc& Document() const { return m_document; }
  CQuillView& View() const { return *m_view; }

  /// Asked before the window closes; false keeps it.
  void SetCloseGuard(std::function<bool()> mayClose) { m_mayClose = std::move(mayClose); }
  /// Shows the document's title, whether it is modified or its file has gone or was changed, and which of
  /// several windows this one is.
  void UpdateTitle();
  /// As it stands in tabs and lists: with the folder where the name needs it, with a star when modified.
  QString ShownTitle() const;
  /// Beside the title, for a name that other windows have too; empty for none.
  void ShowFolder(const QString& folder);
  /// Pixels, as a window that is no tab.
  int TitleHeight() const;

  /// The window was closed and waits for its deletion.
  bool IsClosed() const { return m_closed; }

  /// While set, a change of the file on disk is not asked about.
  void SetNoReload(bool noReload) { m_noReload = noReload; }
  bool NoReload() const { return m_noReload; }

  /// The window's place, kept under its title. Tabs have none.
  void SavePlacement(AppProfile profile) const;
  void RestorePlacement(const AppProfile& profile);

 Q_SIGNALS:
  /// The view is detached and the window about to go.
  void Closed(CChildFrame* frame);
  /// `UpdateTitle` was called.
  void TitleUpdated();

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QString TitleText() const;
  std::string PlacementSection() const;

  CQuillDoc& m_document;
  CQuillView* m_view;
  QString m_shownTitle;  ///< without the mark of changes
  QString m_folder;
  std::function<bool()> m_mayClose;
  bool m_noReload = false;
  bool m_closed = false;
};

}  // namespace quill
