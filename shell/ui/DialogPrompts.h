#pragma once
#include "shell/ui/Prompts.h"

class QWidget;

namespace quill {

/// Asks in message boxes and dialogs.
class DialogPrompts : public Prompts {
 public:
  /// Dialogs open before the window; null for none yet.
  void SetParent(QWidget* parent) { m_parent = parent; }

  Answer Ask(const DocumentPrompt& prompt) override;
  std::optional<std::vector<size_t>> ChooseWhatToSave(const std::vector<std::string>& names) override;
  std::vector<std::string> ChooseFilesToOpen(const std::string& folder) override;
  std::string ChooseFileToSave(const std::string& suggestedPath) override;
  std::string ChoosePdfFile(const std::string& suggestedPath) override;
  std::string ChooseImage(const std::string& folder) override;
  std::string ChooseFolder(StringId title, const std::string& folder) override;
  std::optional<int32_t> ChooseLine(int32_t current, int32_t count) override;
  std::optional<std::string> AskForScriptLine(StringId title, StringId prompt) override;
  bool ChoosePrinter(QPrinter& printer) override;
  std::optional<PageMargins> ChooseMargins(const PageMargins& current) override;
  RecoveryChoice ChooseRecovery(const std::vector<RecoverableDocument>& found) override;
  void ShowAbout() override;
  std::unique_ptr<Progress> ShowProgress(StringId caption, std::function<void()> cancel) override;

 private:
  QWidget* m_parent = nullptr;
};

}  // namespace quill
