#include "intel/ui/ManualControl.h"

#include <QApplication>
#include <QMainWindow>

#include "base/CodePage1252.h"
#include "intel/manual/ManualNames.h"
#include "intel/manual/ManualTopic.h"
#include "intel/ui/ActiveScript.h"
#include "intel/ui/HTMLCtrl.h"
#include "intel/ui/ManualBook.h"
#include "intel/ui/ManualWindow.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "res/ui/UiText.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/ViewHandlers.h"

namespace quill {

ManualControl::ManualControl(const ShellParts& parts) : QObject(&parts.window), m_parts(parts) {}

ManualControl::~ManualControl() {
  if (m_window) m_window->close();
}

ManualWindow* ManualControl::Window() {
  if (m_window) return m_window.get();
  std::unique_ptr<ManualBook> book = ManualBook::Open(FromBytes(m_parts.services.programFolder));
  if (book == nullptr) {
    m_parts.services.prompts.Tell(
        FormatText(StringId::kManualMissing, {manual::kCollectionName, manual::kCompiledName}));
    return nullptr;
  }
  m_window = std::make_unique<ManualWindow>(std::move(book), m_parts.services.Profile());
  return m_window.get();
}

void ManualControl::OpenTopic(const std::string& topic) {
  if (ManualWindow* window = Window()) window->Open(topic);
}

std::string ManualControl::TopicAtCaret() {
  const CQuillView* view = m_parts.workspace.ActiveView();
  if (view == nullptr || !view->Model().HasText()) return {};
  const TextPosition caret = view->CaretPos();
  const ManualBook& book = m_window->Book();
  return FindManualTopic(view->Buffer()->Line(caret.line), caret.character,
                         {[&book](const std::string& topic) { return book.HasTopic(topic); },
                          [this]() -> const Outline& { return m_parts.script.Latest()->outline; }});
}

void ManualControl::OpenAtCaret() {
  // Opening the book may show a message, which takes the focus.
  const auto* help = qobject_cast<CHTMLCtrl*>(QApplication::focusWidget());
  const int32_t command = help == nullptr ? -1 : help->ShownCommand();
  ManualWindow* window = Window();
  if (window == nullptr) return;
  window->Open(command < 0 ? TopicAtCaret() : cp1252::ToLower(m_parts.commands.GetCommandName(command)));
}

void RegisterManual(const ShellParts& parts) {
  auto* control = new ManualControl(parts);
  parts.router.Register(CommandId::kHelpManual, [control] { control->OpenAtCaret(); });
  for (CHTMLCtrl* pane : parts.window.findChildren<CHTMLCtrl*>()) {
    QObject::connect(pane, &CHTMLCtrl::ManualWanted, control,
                     [control](const std::string& command) { control->OpenTopic(cp1252::ToLower(command)); });
  }
}

}  // namespace quill
