#pragma once
#include <QWidget>
#include <string>

#include "shell/ui/Feature.h"

namespace quill {

class ActiveView;
class CQuillView;
class FileOperations;
struct AppServices;

/// What the script tools write at the caret, and the to-do list.
class ScriptToolbox : public Feature {
 public:
  ScriptToolbox(AppServices& services, QWidget& window, ActiveView& active, const FileOperations& files)
      : m_services(services), m_window(window), m_active(active), m_files(files) {}

  void RegisterCommands(CommandRouter& router) override;

 private:
  void AddComment(CQuillView& view);
  void InsertImage(CQuillView& view);
  void InsertVariable(CQuillView& view);
  void ShowToDoList();

  AppServices& m_services;
  QWidget& m_window;
  ActiveView& m_active;
  const FileOperations& m_files;
  std::string m_variableType;  ///< used last; empty before the first time
};

}  // namespace quill
