#include "intel/ui/ScriptJumps.h"

#include <QApplication>

#include "res/ui/UiText.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/Workspace.h"

namespace quill {

std::optional<JumpPlace> ScriptJumps::Here() {
  const CQuillView* view = m_active.View();
  CQuillDoc* document = m_active.Document();
  if (view == nullptr || document == nullptr) return std::nullopt;
  const std::string name = view->FilePath().empty() ? ToBytes(document->Title()) : view->FilePath();
  m_documents[name] = document;
  return JumpPlace{name, view->CaretPos()};
}

void ScriptJumps::Show(TextPosition at) {
  CQuillView* view = m_active.View();
  if (view == nullptr) return;
  view->SetCaretPos(at);
  view->ShowLinesAround(at.line);
  view->activateWindow();
  view->setFocus();
}

void ScriptJumps::Go(int32_t file, TextPosition at, const ScriptFacts& facts) {
  const std::optional<JumpPlace> from = Here();
  if (file > 0) {
    const auto index = static_cast<size_t>(file) - 1;
    if (index >= facts.includedPaths.size()) return;
    // A copy: opening a window reads the script anew.
    const std::string path = facts.includedPaths[index];
    if (m_files.Open(path) == nullptr) return;
  }
  if (from) m_history.Push(*from);
  Show(at);
}

bool ScriptJumps::GoToFile(const std::string& path) {
  const std::optional<JumpPlace> from = Here();
  if (m_files.Open(path) == nullptr) return false;
  if (from) m_history.Push(*from);
  if (CQuillView* view = m_active.View()) view->setFocus();
  return true;
}

void ScriptJumps::GoBack() {
  while (!m_history.IsEmpty()) {
    const JumpPlace place = m_history.Pop();
    const CQuillDoc* document = m_documents[place.document];
    const bool isFile = place.document.find('/') != std::string::npos;
    const bool shown = document != nullptr ? m_workspace.ActivateDocument(*document)
                                           : isFile && m_files.Open(place.document) != nullptr;
    if (shown) Show(place.at);
    if (shown || isFile) return;  // what was never saved and is closed by now is passed over
  }
  QApplication::beep();
  if (m_active.View() != nullptr) Q_EMIT m_active.View()->Hint(UiText(StringId::kNowhereToGoBack));
}

}  // namespace quill
