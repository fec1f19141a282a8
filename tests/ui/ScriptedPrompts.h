#pragma once
#include <gtest/gtest.h>

#include <deque>
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
  void Expect(const std::string& text, Answer answer) { m_expected.push_back({text, answer, {}, {}}); }
  void ExpectSaveAll(const std::string& titles, Answer answer) { Expect("save all: " + titles, answer); }
  /// The answer of a dialog that asks for a file or files.
  void ExpectFile(const std::string& path) { m_expected.push_back({"file", Answer::kOk, path, {}}); }
  void ExpectLine(int32_t line) { m_expected.push_back({"line", Answer::kOk, std::to_string(line), {}}); }
  void ExpectRecovery(RecoveryChoice choice) { m_expected.push_back({"recovery", Answer::kOk, {}, choice}); }
  void ExpectAbout() { Expect("about", Answer::kOk); }

  /// Where the last file dialog would have begun.
  const std::string& LastSuggestion() const { return m_suggestion; }
  /// What the last recovery dialog would have listed, a line a document.
  const std::string& LastRecovery() const { return m_recovery; }

  Answer Ask(const DocumentPrompt& prompt) override { return Next(prompt.text).answer; }
  Answer AskSaveAll(const std::vector<std::string>& titles) override {
    std::string list;
    for (const std::string& title : titles) list += (list.empty() ? "" : ", ") + title;
    return Next("save all: " + list).answer;
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
  std::optional<int32_t> ChooseLine(int32_t, int32_t) override { return std::stoi(Next("line").file); }
  RecoveryChoice ChooseRecovery(const std::vector<RecoverableDocument>& found) override {
    m_recovery.clear();
    for (const RecoverableDocument& document : found) {
      m_recovery += (document.Path().empty() ? document.Title() : document.Path()) + "\n";
    }
    return Next("recovery").recovery;
  }
  void ShowAbout() override { Next("about"); }

 private:
  struct Expected {
    std::string text;
    Answer answer = Answer::kCancel;
    std::string file;
    RecoveryChoice recovery;
  };

  Expected Next(const std::string& text) {
    if (m_expected.empty() || m_expected.front().text != text) {
      ADD_FAILURE() << "unexpected: " << text
                    << (m_expected.empty() ? "" : "\n  instead of: " + m_expected.front().text);
      return {};
    }
    Expected expected = m_expected.front();
    m_expected.pop_front();
    return expected;
  }

  std::deque<Expected> m_expected;
  std::string m_suggestion;
  std::string m_recovery;
};

}  // namespace quill
