#pragma once
#include <functional>

#include "res/CommandId.h"
#include "shell/ui/Feature.h"

class QMainWindow;

namespace quill {

class ActiveView;
class CQuillDoc;
class Documents;
class FileOperations;
class RecentFiles;
struct AppServices;
struct CommandState;

/// The menu File without printing.
class FileCommands : public Feature {
 public:
  struct Needs {
    QMainWindow& window;
    ActiveView& active;
    Documents& documents;
    FileOperations& files;
    RecentFiles& recent;
    AppServices& services;
  };
  explicit FileCommands(const Needs& needs) : m(needs) {}

  void RegisterCommands(CommandRouter& router) override;

 private:
  using Run = std::function<void(CQuillDoc&)>;
  using StateOf = std::function<CommandState(const CQuillDoc&)>;

  /// On the active document, disabled while there is none.
  void OnDocument(CommandRouter& router, CommandId id, const Run& run, const StateOf& state = {});
  void RegisterSaving(CommandRouter& router);
  /// Commands on the file as a thing of its own.
  void RegisterFile(CommandRouter& router);
  void RegisterLineEnds(CommandRouter& router);
  void OpenRecentFile(int index);
  void ShowFolder(const CQuillDoc& document);
  void OpenSample();
  CommandState RecentFileState(int index) const;

  Needs m;
};

}  // namespace quill
