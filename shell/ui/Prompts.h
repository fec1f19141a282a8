#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "res/Strings.h"
#include "shell/DocumentPrompt.h"
#include "text/view/PrintLayout.h"

class QPrinter;

namespace quill {

class RecoverableDocument;

/// Everything that the program asks of its user or tells in a box. The windows ask through this, so that
/// whoever stands in for the user answers without a window.
class Prompts {
 public:
  enum class Answer { kOk, kYes, kNo, kSave, kDiscard, kCancel };
  enum class RecoveryAction { kLater, kRecover, kDiscard };
  struct RecoveryChoice {
    RecoveryAction action = RecoveryAction::kLater;
    std::vector<size_t> chosen;  ///< what the action is for; the others are offered again
  };

  /// How far a long work has come, told in a window beside the others, which stay usable. The window goes
  /// with the object.
  class Progress {
   public:
    virtual ~Progress() = default;
    /// `done` of `all` parts, at least one.
    virtual void Show(const std::string& text, int done, int all) = 0;
  };

  virtual ~Prompts() = default;

  /// One of the answers that the prompt's buttons allow; closing the box is kNo or kCancel.
  virtual Answer Ask(const DocumentPrompt& prompt) = 0;
  /// Several documents with unsaved text, told by path or title, are about to be closed: the indices of
  /// those to be saved. Nothing when they are to stay open.
  virtual std::optional<std::vector<size_t>> ChooseWhatToSave(const std::vector<std::string>& names) = 0;
  /// Empty when the user changed his mind, as with the next four.
  virtual std::vector<std::string> ChooseFilesToOpen(const std::string& folder) = 0;
  virtual std::string ChooseFileToSave(const std::string& suggestedPath) = 0;
  virtual std::string ChoosePdfFile(const std::string& suggestedPath) = 0;
  virtual std::string ChooseImage(const std::string& folder) = 0;
  virtual std::string ChooseFolder(StringId title, const std::string& folder) = 0;
  /// A line from 1 to `count`.
  virtual std::optional<int32_t> ChooseLine(int32_t current, int32_t count) = 0;
  /// One line of script text, in its code page.
  virtual std::optional<std::string> AskForScriptLine(StringId title, StringId prompt) = 0;
  /// Sets the printer up; false when nothing is to be printed.
  virtual bool ChoosePrinter(QPrinter& printer) = 0;
  virtual std::optional<PageMargins> ChooseMargins(const PageMargins& current) = 0;
  virtual RecoveryChoice ChooseRecovery(const std::vector<RecoverableDocument>& found) = 0;
  virtual void ShowAbout() = 0;
  /// `cancel` is called when the user does not want the work any more; it may let the progress go.
  virtual std::unique_ptr<Progress> ShowProgress(StringId caption, std::function<void()> cancel) = 0;

  /// A plain message.
  void Tell(const std::string& text, const std::string& detail = {},
            DocumentPrompt::Icon icon = DocumentPrompt::Icon::kWarning);
};

}  // namespace quill
