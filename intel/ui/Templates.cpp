#include "intel/ui/Templates.h"

#include "intel/ui/TemplateKeys.h"
#include "res/ui/UiText.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/ViewHandlers.h"
#include "shell/ui/Workspace.h"
#include "widgets/PlainNames.h"

namespace quill {

Templates::Templates(Workspace& workspace, ActiveView& active, std::string programFolder)
    : m_active(active), m_folder(std::move(programFolder)) {
  connect(&workspace, &Workspace::WindowAdded, this,
          [this](CChildFrame* frame) { AddKeysTo(frame->View()); });
}

Templates::~Templates() = default;

void Templates::AddKeysTo(CQuillView& view) {
  m_keys[&view] = std::make_unique<TemplateKeys>(view, [this]() -> const CodeTemplates& { return Latest(); });
  connect(&view, &QObject::destroyed, this, [this](QObject* gone) {
    m_keys.at(gone)->ForgetView();
    m_keys.erase(gone);
  });
}

void Templates::RegisterCommands(CommandRouter& router) {
  router.RegisterSeries(
      CommandId::kTemplateFirst, CommandId::kTemplateLast, [this](int index) { InsertNumbered(index); },
      [this](int index) { return StateOf(index); }, [this] { Latest(); });
}

const CodeTemplates& Templates::Known() {
  return m_read ? m_templates : Latest();
}

const CodeTemplates& Templates::Latest() {
  m_templates.Load(m_folder);
  m_read = true;
  return m_templates;
}

void Templates::Insert(const CQuillView& view, const std::string& name) {
  const auto keys = m_keys.find(&view);
  if (keys != m_keys.end() && m_templates.Has(name)) keys->second->Insert(m_templates, name);
}

bool Templates::IsBeingFilled(const CQuillView& view) const {
  const auto keys = m_keys.find(&view);
  return keys != m_keys.end() && keys->second->IsActive();
}

void Templates::InsertNumbered(int index) {
  if (m_active.View() == nullptr || !Has(index)) return;
  Insert(*m_active.View(), m_templates.Names()[static_cast<size_t>(index)]);
}

CommandState Templates::StateOf(int index) const {
  CommandState state;
  state.visible = Has(index);
  if (!state.visible) return state;
  const CQuillView* view = m_active.View();
  state = view == nullptr ? CommandState::Disabled(StringId::kNoDocumentOpen) : NeedsWriting(*view);
  state.text = plain_names::ForMenu(FromBytes(m_templates.Names()[static_cast<size_t>(index)]));
  return state;
}

}  // namespace quill
