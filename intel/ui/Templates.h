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

  /// As last read; they are read when nobody did that yet.
  const CodeTemplates& Known();
  /// Read anew.
  const CodeTemplates& Latest();
  /// Writes one of those known over the selection of a view, and leads Tab through its places.
  void Insert(const CQuillView& view, const std::string& name);
  /// Whether Tab has a place of a template to go to in a view.
  bool IsBeingFilled(const CQuillView& view) const;

 private:
  void AddKeysTo(CQuillView& view);
  void InsertNumbered(int index);
  CommandState StateOf(int index) const;
  bool Has(int index) const { return static_cast<size_t>(index) < m_templates.Names().size(); }

  ActiveView& m_active;
  std::string m_folder;
  CodeTemplates m_templates;
  bool m_read = false;
  std::map<const QObject*, std::unique_ptr<TemplateKeys>> m_keys;  ///< by view
};

}  // namespace quill
