#pragma once
#include <QPointer>
#include <map>
#include <optional>
#include <string>

#include "intel/outline/Definitions.h"
#include "intel/outline/ScriptFacts.h"

namespace quill {

class ActiveView;
class CQuillDoc;
class FileOperations;
class Workspace;

/// Goes to places in scripts, and back, place by place.
class ScriptJumps {
 public:
  /// All outlive it.
  ScriptJumps(ActiveView& active, Workspace& workspace, FileOperations& files)
      : m_active(active), m_workspace(workspace), m_files(files) {}

  /// In the active view or, when `file` is not 0, in that included file of `facts`, which is opened. Shows
  /// the place with lines around it and gives the text the focus.
  void Go(int32_t file, TextPosition at, const ScriptFacts& facts);
  /// Opens a file; no place in it. False, and a message, when it cannot be opened.
  bool GoToFile(const std::string& path);
  void GoBack();
  bool CanGoBack() const { return !m_history.IsEmpty(); }

 private:
  /// The caret's place; nothing without a view.
  std::optional<JumpPlace> Here();
  void Show(TextPosition at);

  ActiveView& m_active;
  Workspace& m_workspace;
  FileOperations& m_files;
  JumpHistory m_history;
  /// By what the history calls them: a document may get another name, or have none but its title.
  std::map<std::string, QPointer<CQuillDoc>> m_documents;
};

}  // namespace quill
