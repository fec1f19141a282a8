#pragma once
#include <QMainWindow>
#include <memory>
#include <optional>
#include <string>

#include "app/Features.h"
#include "app/ShellParts.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/KeywordDatabase.h"
#include "shell/AttemptMark.h"

namespace quill {

class CQuillDoc;

/// The main window: makes the objects that do the work, joins them, and tells the features what happens to
/// it. Owns the databases.
class CMainFrame : public QMainWindow {
  Q_OBJECT

 public:
  enum class Created {
    kYes,
    kDatabaseMissing,  ///< the user was told; the program ends with status 0
    kFailed,           ///< the user was told
  };

  /// `services` outlives the window.
  CMainFrame(AppServices& services, FeatureFactory makeFeatures);
  ~CMainFrame() override;

  /// Builds the window, starts its timers and loads the databases.
  Created Create();
  /// Gives the window and its bars the places they had, and the keys that the user chose. Before the
  /// window is shown; true when it is to be maximised.
  bool RestoreLayout();
  void LoadKeys();
  /// What can wait until the window has been on the screen for a second.
  void StartDeferred();

  void UpdateFrameTitle();
  /// After the settings were changed: hands them to every view and to the timers.
  void ApplySettingsToViews();

  const ShellParts& Parts() const { return *m_parts; }
  const KeywordDatabase& Keywords() const { return m_keywords; }
  const CommandDatabase& Commands() const { return m_commands; }

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void RestoreBars();
  void BuildParts();
  void BuildBars();
  void Connect();
  void StartTimers();
  Created LoadDatabases();
  void OnActiveViewChanged();
  void OnDocumentCreated(CQuillDoc* document);
  void ShutDown();

  AppServices& m_services;
  KeywordDatabase m_keywords;
  CommandDatabase m_commands;
  std::unique_ptr<RecentFiles> m_recent;
  std::unique_ptr<DockBars> m_bars;
  std::unique_ptr<ShellParts> m_parts;
  FeatureFactory m_makeFeatures;
  Features m_features;  ///< cleared before anything that they use goes
  QString m_title;
  std::optional<AttemptMark> m_restoringBars;
};

}  // namespace quill
