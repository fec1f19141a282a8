#pragma once
#include <QObject>
#include <map>
#include <memory>
#include <string>

#include "intel/writing/CodeTemplates.h"
#include "shell/ui/Feature.h"

namespace quill {

class ActiveView;
class CQuillView;
class TemplateKeys;
class Workspace;
struct CommandState;

/// The menu Code Templates, and the templates' keys in every view. The templates are read from their folder
/// each time that the user turns to them: files can be changed while the program runs.
class Templates : public QObject, public Feature {
 public:
  Templates(Workspace& workspace, ActiveView& active, std::string programFolder);
  ~Templates() override;

  void RegisterCommands(CommandRouter& router) override;

 private:
  void AddKeysTo(CQuillView& view);
  void Insert(int index);
  CommandState StateOf(int index) const;
  bool Has(int index) const { return static_cast<size_t>(index) < m_templates.Names().size(); }

  ActiveView& m_active;
  std::string m_folder;
  CodeTemplates m_templates;
  std::map<const QObject*, std::unique_ptr<TemplateKeys>> m_keys;  ///< by view
};

}  // namespace quill
