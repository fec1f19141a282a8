#pragma once
#include <QObject>
#include <memory>
#include <string>

namespace quill {

class ManualWindow;
struct AppServices;
struct ShellParts;

/// Opens the manual: its files are read when it is wanted for the first time, and there is one window.
class ManualControl : public QObject {
  Q_OBJECT

 public:
  explicit ManualControl(const ShellParts& parts);
  ~ManualControl() override;

  /// At what the keyboard works on: the command in the help bar, or the word at the caret.
  void OpenAtCaret();
  /// At a word of the index, in lower case; at the start page when there is no such word.
  void OpenTopic(const std::string& topic);

 private:
  ManualWindow* Window();
  std::string TopicAtCaret();

  const ShellParts& m_parts;
  std::unique_ptr<ManualWindow> m_window;
};

}  // namespace quill
