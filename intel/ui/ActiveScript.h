#pragma once
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <memory>

#include "intel/outline/ScriptFacts.h"
#include "shell/ui/Feature.h"

namespace quill {

class ActiveView;
class Documents;
class TextWatch;
class SettingsStore;

/// What is known of the active view's script. It is read when another view becomes active, on command and,
/// while "AutoRefresh" is on, after a pause in typing; everybody who shows it follows.
class ActiveScript : public QObject, public Feature {
  Q_OBJECT

 public:
  static constexpr int kAutoRefreshDelay = 300;  ///< milliseconds after the last change

  ActiveScript(SettingsStore& settings, ActiveView& active, const Documents& documents);
  ~ActiveScript() override;

  void SettingsApplied() override;

  /// Reads the script anew and gives the view the names that it defines; without a view everything stays
  /// as it is.
  void Refresh();
  /// As last read: what the Code Jumper shows. Never null.
  const std::shared_ptr<const ScriptFacts>& Shown() const { return m_shown; }
  /// As the text is now; what is shown stays. Never null.
  const std::shared_ptr<const ScriptFacts>& Latest();
  /// The same with what included files define, whether or not they are shown.
  std::shared_ptr<const ScriptFacts> LatestWithIncluded();
  /// Of files that are included: those in open windows as they are there. Valid as long as this object.
  ScriptReader Reader() const;

 Q_SIGNALS:
  void Refreshed();

 private:
  void Follow();
  void OnTextChanged();
  void OnTimer();
  std::shared_ptr<const ScriptFacts> Read(bool withIncluded) const;

  SettingsStore& m_settings;
  ActiveView& m_active;
  const Documents& m_documents;
  std::shared_ptr<const ScriptFacts> m_shown;
  std::shared_ptr<const ScriptFacts> m_latest;  ///< null when the text has changed since
  std::unique_ptr<TextWatch> m_watch;
  bool m_followsText;  ///< "AutoRefresh"
  QTimer m_autoRefresh;
  QElapsedTimer m_sinceChange;
};

}  // namespace quill
