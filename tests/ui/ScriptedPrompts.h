#pragma once
#include <gtest/gtest.h>

#include <QPrinter>
#include <algorithm>
#include <deque>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "shell/RecoveryFolder.h"
#include "shell/ui/Prompts.h"

namespace quill {

/// Stands in for the user: answers the questions that the test expects, in their order. Any other
/// question fails the test and is cancelled.
class ScriptedPrompts : public Prompts {
 public:
  ~ScriptedPrompts() override { EXPECT_TRUE(m_expected.empty()) << "not asked: " << m_expected.front().text; }

  /// `text` as the box shows it, without its detail.
  void Expect(const std::string& text, Answer answer) {
    m_expected.push_back({.text = text, .answer = answer});
  }
  /// `titles` is the list that is shown; kSave and kDiscard are for all of it.
  void ExpectSaveAll(const std::string& titles, Answer answer) { Expect("save all: " + titles, answer); }
  /// Only these are ticked.
  void ExpectSaveSome(const std::string& titles, const std::vector<std::string>& ticked) {
    m_expected.push_back({.text = "save all: " + titles, .answer = Answer::kOk, .names = ticked});
  }
  /// The answer of a dialog that asks for a file or files.
  void ExpectFile(const std::string& path) { m_expected.push_back({.text = "file", .file = path}); }
  /// Nothing is the answer Cancel.
  void ExpectScriptLine(const std::string& title, const std::optional<std::string>& line) {
    m_expected.push_back({.text = title,
                          .answer = line ? Answer::kOk : Answer::kCancel,
                          .file = line.value_or(std::string())});
  }
  void ExpectLine(int32_t line) { m_expected.push_back({.text = "line", .file = std::to_string(line)}); }
  /// `names` are paths, or titles of documents without a file.
  void ExpectRecovery(RecoveryAction action, const std::vector<std::string>& names = {}) {
    m_expected.push_back({.text = "recovery", .recovery = action, .names = names});
  }
  void ExpectMargins(const std::optional<PageMargins>& margins) {
    m_expected.push_back({.text = "margins", .margins = margins});
  }
  void ExpectAbout() { Expect("about", Answer::kOk); }

  /// Runs while each question is open, as the events of its window do.
  void WhileOpen(std::function<void()> run) { m_whileOpen = std::move(run); }

  /// Where the last file dialog would have begun.
  const std::string& LastSuggestion() const { return m_suggestion; }
  /// What the last recovery dialog would have listed.
  const std::set<std::string>& LastRecovery() const { return m_recovery; }

  /// What the last page-setup dialog would have begun with.
  const PageMargins& LastMargins() const { return m_margins; }

  /// The smaller words of the last question or message.
  const std::string& LastDetail() const { return m_detail; }

  Answer Ask(const DocumentPrompt& prompt) override {
    m_detail = prompt.detail;
    return Next(prompt.text).answer;
  }
  std::optional<std::vector<size_t>> ChooseWhatToSave(const std::vector<std::string>& names) override {
    const auto title = [](const std::string& name) {
      return std::filesystem::path(name).filename().string();
    };
    std::string list;
    for (const std::string& name : names) list += (list.empty() ? "" : ", ") + title(name);
    const Expected expected = Next("save all: " + list);
    if (expected.answer == Answer::kCancel) return std::nullopt;
    std::vector<size_t> ticked;
    for (size_t i = 0; i < names.size(); ++i) {
      const bool named = std::ranges::find(expected.names, title(names[i])) != expected.names.end();
      if (named || expected.answer == Answer::kSave) ticked.push_back(i);
    }
    return ticked;
  }
  std::vector<std::string> ChooseFilesToOpen(const std::string& folder) override {
    m_suggestion = folder;
    return {Next("file").file};
  }
  std::string ChooseFileToSave(const std::string& suggestedPath) override {
    m_suggestion = suggestedPath;
    return Next("file").file;
  }
  std::string ChoosePdfFile(const std::string& suggestedPath) override {
    return ChooseFileToSave(suggestedPath);
  }
  std::string ChooseImage(const std::string& folder) override { return ChooseFileToSave(folder); }
  std::string ChooseFolder(StringId, const std::string& folder) override { return ChooseFileToSave(folder); }
  /// The printer writes a PDF document to the expected file.
  bool ChoosePrinter(QPrinter& printer) override {
    const std::string file = Next("file").file;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(file));
    return !file.empty();
  }
  std::optional<PageMargins> ChooseMargins(const PageMargins& current) override {
    m_margins = current;
    return Next("margins").margins;
  }
  std::optional<std::string> AskForScriptLine(StringId title, StringId) override {
    const Expected expected = Next(std::string(Text(title)));
    return expected.answer == Answer::kOk ? std::optional(expected.file) : std::nullopt;
  }
  std::optional<int32_t> ChooseLine(int32_t, int32_t) override { return std::stoi(Next("line").file); }
  RecoveryChoice ChooseRecovery(const std::vector<RecoverableDocument>& found) override {
    const Expected expected = Next("recovery");
    RecoveryChoice choice{expected.recovery, {}};
    m_recovery.clear();
    for (size_t i = 0; i < found.size(); ++i) {
      const std::string& name = found[i].Path().empty() ? found[i].Title() : found[i].Path();
      m_recovery.insert(name);
      if (std::ranges::find(expected.names, name) != expected.names.end()) choice.chosen.push_back(i);
    }
    return choice;
  }
  void ShowAbout() override { Next("about"); }

  /// Called with what the window of a long work tells, each time that it changes.
  void OnProgress(std::function<void(const std::string& text)> run) { m_onProgress = std::move(run); }
  bool ShowsProgress() const { return m_cancel != nullptr; }
  /// As the button of that window does.
  void CancelProgress() {
    const std::function<void()> cancel = m_cancel;  // the window goes in the call
    cancel();
  }
  std::unique_ptr<Progress> ShowProgress(StringId, std::function<void()> cancel) override {
    struct Window : Progress {
      explicit Window(ScriptedPrompts& prompts) : owner(prompts) {}
      ~Window() override { owner.m_cancel = nullptr; }
      void Show(const std::string& text, int, int) override {
        if (owner.m_onProgress) owner.m_onProgress(text);
      }
      ScriptedPrompts& owner;
    };
    m_cancel = std::move(cancel);
    return std::make_unique<Window>(*this);
  }

 private:
  struct Expected {
    std::string text = {};
    Answer answer = Answer::kOk;
    std::string file = {};
    RecoveryAction recovery = RecoveryAction::kLater;
    std::vector<std::string> names = {};
    std::optional<PageMargins> margins = {};
  };

  Expected Next(const std::string& text) {
    if (m_expected.empty() || m_expected.front().text != text) {
      ADD_FAILURE() << "unexpected: " << text
                    << (m_expected.empty() ? "" : "\n  instead of: " + m_expected.front().text);
      return {.answer = Answer::kCancel};
    }
    Expected expected = m_expected.front();
    m_expected.pop_front();
    if (m_whileOpen) m_whileOpen();
    return expected;
  }

  std::deque<Expected> m_expected;
  std::function<void()> m_whileOpen;
  std::function<void()> m_cancel;
  std::function<void(const std::string&)> m_onProgress;
  std::string m_suggestion;
  std::string m_detail;
  PageMargins m_margins;
  std::set<std::string> m_recovery;
};

}  // namespace quill
