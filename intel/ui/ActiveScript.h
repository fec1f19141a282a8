#pragma once
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <memory>

#include "intel/outline/ScriptFacts.h"

namespace quill {

class CChildFrame;
class Documents;
class TextWatch;
class Workspace;
struct AppServices;

/// What is known of the active view's script. It is read when another view becomes active, on command and,
/// while "AutoRefresh" is on, after a pause in typing; everybody who shows it follows.
class ActiveScript : public QObject {
  Q_OBJECT

 public:
  static constexpr int kAutoRefreshDelay = 300;  ///< milliseconds after the last change

  /// All outlive it.
  ActiveScript(AppServices& services, Workspace& workspace, const Documents& documents, QObject* parent);
  ~ActiveScript() override;

  /// Reads the script anew and gives the view the names that it defines; without a view everything stays
  /// as it is.
  void Refresh();
  /// As last read: what the Code Jumper shows. Never null.
  const std::shared_ptr<const ScriptFacts>& Shown() const { return m_shown; }
  /// As the text is now; what is shown stays. Never null.
  const std::shared_ptr<const ScriptFacts>& Latest();

 Q_SIGNALS:
  void Refreshed();

 private:
  void Follow(CChildFrame* frame);
  void OnTextChanged();
  void OnTimer();
  std::shared_ptr<const ScriptFacts> Read() const;

  AppServices& m_services;
  Workspace& m_workspace;
  const Documents& m_documents;
  std::shared_ptr<const ScriptFacts> m_shown;
  std::shared_ptr<const ScriptFacts> m_latest;  ///< null when the text has changed since
  std::unique_ptr<TextWatch> m_watch;
  QTimer m_autoRefresh;
  QElapsedTimer m_sinceChange;
};

}  // namespace quill
