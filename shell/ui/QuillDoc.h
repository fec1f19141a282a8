#pragma once
#include <QObject>
#include <QString>
#include <string>
#include <vector>

#include "shell/DocumentFile.h"

namespace quill {

class CQuillView;

/// One open script: its file and text, and the views that show it. All views show one buffer and so stay
/// in step.
class CQuillDoc : public QObject, private DocumentObserver {
  Q_OBJECT

 public:
  /// The observer is the document itself, whatever `services` names.
  explicit CQuillDoc(DocumentServices services, QObject* parent = nullptr);
  ~CQuillDoc() override;

  DocumentFile& File() { return m_file; }
  const DocumentFile& File() const { return m_file; }
  ScriptBuffer& Buffer() { return m_file.Buffer(); }
  const ScriptBuffer& Buffer() const { return m_file.Buffer(); }
  QString Title() const;
  /// A new document that nobody has typed into.
  bool IsPristine() const;

  /// The view shows the buffer from now on, and keeps the path of the file.
  void AttachView(CQuillView& view);
  void DetachView(CQuillView& view);
  const std::vector<CQuillView*>& Views() const { return m_views; }
  /// The paths that the views have recorded, in view order.
  std::vector<std::string> ViewPaths() const;

  /// Loads the file again; every view keeps its caret and its place as far as the text has them.
  IoResult Reload();
  /// What stands between the lines from the next save on; not while read-only.
  void SetLineEndStyle(int32_t style);
  /// Says so when the text became read-only.
  std::optional<DocumentPrompt> ToggleReadOnly();

 Q_SIGNALS:
  /// Whether the text is modified, or what became of its file on disk.
  void ModifiedChanged();
  void TitleChanged();
  /// A path for the recent-file list.
  void PathSet(const std::string& path);
  /// Read-only or not, loaded or saved: what menus and panes show may be different.
  void StateChanged();

 private:
  void OnModifiedChanged(bool modified) override;
  void OnFileRecorded(const std::string& path) override;
  void OnPathSet(const std::string& path) override;
  void OnDiskStateChanged() override;

  std::vector<CQuillView*> m_views;
  std::string m_recordedPath;
  DocumentFile m_file;
};

}  // namespace quill
