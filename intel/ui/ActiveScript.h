#pragma once
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "intel/outline/LiveOutline.h"
#include "intel/outline/ScriptFacts.h"
#include "intel/ui/BackgroundTask.h"
#include "shell/ui/Feature.h"

namespace quill {

class ActiveView;
class CQuillView;
class Documents;
class TextWatch;
class SettingsStore;

/// What is known of the active view's script. It is read when another view becomes active, on command and,
/// while "AutoRefresh" is on, after a pause in typing; everybody who shows it follows.
///
/// A script of a usual size is read at once. A larger one is read in slices of some milliseconds, of which a
/// later reading repeats only what changed, and is sorted on another thread, as files are that it includes;
/// until then what is known of it is incomplete.
class ActiveScript : public QObject, public Feature {
  Q_OBJECT

 public:
  static constexpr int kAutoRefreshDelay = 300;  ///< milliseconds after the last change
  /// A script that has more is not read at once.
  static constexpr int32_t kMostLinesAtOnce = 8192;
  static constexpr int64_t kMostBytesAtOnce = int64_t{1} << 20;

  ActiveScript(SettingsStore& settings, ActiveView& active, const Documents& documents);
  ~ActiveScript() override;

  void SettingsApplied() override;

  /// Reads the script anew and gives the view the names that it defines; without a view everything stays
  /// as it is.
  void Refresh();
  /// As last read: what the Code Jumper shows. Never null.
  const std::shared_ptr<const ScriptFacts>& Shown() const { return m_shown; }
  /// As the text is now; what is shown stays. Never null. While much of a large script is still to be read,
  /// it is what is shown.
  const std::shared_ptr<const ScriptFacts>& Latest();
  /// The same with what included files define, whether or not they are shown.
  std::shared_ptr<const ScriptFacts> LatestWithIncluded();
  /// Of files that are included: those in open windows as they are there. Valid as long as this object.
  ScriptReader Reader() const;
  /// Whether something is under way that will be shown.
  bool IsReading() const { return m_slices.isActive() || m_task.IsRunning(); }

 Q_SIGNALS:
  void Refreshed();
  /// `IsReading` may have changed.
  void ReadingChanged();

 private:
  /// The files that a script's lines led to. What leads to them is compared to know whether it still does.
  struct Followed {
    std::vector<std::string> lines;
    IncludedFiles files;
  };
  /// What facts are made of: values, which another thread may have.
  struct Source {
    OutlineParts parts;
    std::shared_ptr<const ScriptFacts> previous;
    std::shared_ptr<const Followed> followed;  ///< null when no files are known
    std::string path;
    ScriptReader reader;  ///< null when includes are not followed
  };
  struct Outcome {
    std::shared_ptr<const ScriptFacts> facts;  ///< null when it was stopped
    std::shared_ptr<const Followed> followed;
  };
  static Outcome MakeFacts(const Source& source, const std::atomic<bool>* stop);

  void Follow();
  void OnTextChanged();
  void OnTimer();
  /// Reads what is not read of the text as it is.
  void Read();
  void ReadAtOnce(CQuillView& view, bool isNew);
  void ReadSlice();
  /// Sorts on the other thread what was read, and follows includes there.
  void SortLater(CQuillView& view);
  bool PrepareOutline(CQuillView& view);
  Source SourceOf(const CQuillView& view) const;
  /// `isLatest`: the facts are those of the text as it is.
  void Show(std::shared_ptr<const ScriptFacts> facts, bool isLatest);
  /// For another thread: open windows' texts that are not as in the file go with it.
  ScriptReader ReaderOfCopies() const;

  SettingsStore& m_settings;
  ActiveView& m_active;
  const Documents& m_documents;
  std::shared_ptr<const ScriptFacts> m_shown;
  std::shared_ptr<const ScriptFacts> m_latest;  ///< null when the text has changed since
  std::shared_ptr<const Followed> m_followed;
  std::unique_ptr<TextWatch> m_watch;
  std::unique_ptr<LiveOutline> m_outline;  ///< of the text that is watched; null until it is read
  uint64_t m_changes = 0;                  ///< of the text
  bool m_isStale = false;  ///< while facts are made, the pause came after which they are to be made again
  bool m_followsText;      ///< "AutoRefresh"
  QTimer m_autoRefresh;
  QElapsedTimer m_sinceChange;
  QTimer m_slices;
  BackgroundTask m_task;  ///< the last one: it ends first
};

}  // namespace quill
