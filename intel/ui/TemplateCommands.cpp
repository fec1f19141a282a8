// The menu Code Templates, and what it has in common with the keys in every view.
#include <QMainWindow>

#include "intel/ui/TemplateKeys.h"
#include "res/ui/UiText.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/ViewHandlers.h"

namespace quill {
namespace {

/// The templates, read from their folder each time that the user turns to them: files can be changed while
/// the program runs.
class TemplateFolder : public QObject {
 public:
  explicit TemplateFolder(const ShellParts& parts)
      : QObject(&parts.window), m_parts(parts), m_folder(parts.services.programFolder) {
    connect(&parts.workspace, &Workspace::WindowAdded, this, [this](CChildFrame* frame) {
      new TemplateKeys(frame->View(), [this]() -> const CodeTemplates& {
        Read();
        return m_templates;
      });
    });
  }

  void Read() { m_templates.Load(m_folder); }

  void Insert(int index) {
    auto* keys = m_parts.workspace.ActiveView()->findChild<TemplateKeys*>();
    if (Has(index)) keys->Insert(m_templates, m_templates.Names()[static_cast<size_t>(index)]);
  }

  CommandState StateOf(int index) const {
    CommandState state;
    state.visible = Has(index);
    if (!state.visible) return state;
    const CQuillView* view = m_parts.workspace.ActiveView();
    state = view == nullptr ? CommandState::Disabled(StringId::kNoDocumentOpen) : NeedsWriting(*view);
    state.text = FromBytes(m_templates.Names()[static_cast<size_t>(index)]).replace(u'&', "&&");
    return state;
  }

 private:
  bool Has(int index) const { return static_cast<size_t>(index) < m_templates.Names().size(); }

  const ShellParts& m_parts;
  std::string m_folder;
  CodeTemplates m_templates;
};

}  // namespace

void RegisterTemplates(const ShellParts& parts) {
  auto* folder = new TemplateFolder(parts);
  parts.router.RegisterSeries(
      CommandId::kTemplateFirst, CommandId::kTemplateLast, [folder](int index) { folder->Insert(index); },
      [folder](int index) { return folder->StateOf(index); }, [folder] { folder->Read(); });
}

}  // namespace quill
