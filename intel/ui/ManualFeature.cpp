#include "intel/ui/ManualFeature.h"

#include "base/CodePage1252.h"
#include "intel/manual/ManualNames.h"
#include "intel/manual/ManualTopic.h"
#include "intel/ui/ActiveScript.h"
#include "intel/ui/CommandHelp.h"
#include "intel/ui/ManualBook.h"
#include "intel/ui/ManualWindow.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "res/ui/UiText.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/Prompts.h"

namespace quill {

ManualFeature::ManualFeature(const Needs& needs) : m(needs) {
  connect(&m.help, &CommandHelp::ManualWanted, this,
          [this](const std::string& command) { OpenTopic(cp1252::ToLower(command)); });
}

ManualFeature::~ManualFeature() {
  if (m_window) m_window->close();
}

ManualWindow* ManualFeature::Window() {
  if (m_window) return m_window.get();
  std::unique_ptr<ManualBook> book = ManualBook::Open(FromBytes(m.services.programFolder));
  if (book == nullptr) {
    m.services.prompts.Tell(
        FormatText(StringId::kManualMissing, {manual::kCollectionName, manual::kCompiledName}));
    return nullptr;
  }
  m_window = std::make_unique<ManualWindow>(std::move(book), m.services.Profile());
  return m_window.get();
}

void ManualFeature::OpenTopic(const std::string& topic) {
  if (ManualWindow* window = Window()) window->Open(topic);
}

std::string ManualFeature::TopicAtCaret() {
  const CQuillView* view = m.active.ViewWithText();
  if (view == nullptr) return {};
  const TextPosition caret = view->CaretPos();
  const ManualBook& book = m_window->Book();
  return FindManualTopic(view->Buffer()->Line(caret.line), caret.character,
                         {[&book](const std::string& topic) { return book.HasTopic(topic); },
                          [this]() -> const Outline& { return m.script.Latest()->outline; }});
}

void ManualFeature::OpenAtCaret() {
  // Opening the book may show a message, which takes the focus.
  const std::optional<int32_t> command = m.help.CommandInFocus();
  ManualWindow* window = Window();
  if (window == nullptr) return;
  window->Open(command ? cp1252::ToLower(m.commands.GetCommandName(*command)) : TopicAtCaret());
}

void ManualFeature::RegisterCommands(CommandRouter& router) {
  router.Register(CommandId::kHelpManual, [this] { OpenAtCaret(); });
}

}  // namespace quill
