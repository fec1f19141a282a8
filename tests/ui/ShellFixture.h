#pragma once
#include <gtest/gtest.h>

#include <QAction>
#include <memory>
#include <string>
#include <vector>

#include "app/MainFrame.h"
#include "app/QuillApp.h"
#include "settings/MemorySettingsStore.h"
#include "settings/Settings.h"
#include "shell/ProfileLineFlagStore.h"
#include "shell/ui/AppServices.h"
#include "support/TempFolder.h"
#include "ui/ScriptedPrompts.h"

namespace quill {

class CQuillView;
class CQuillDoc;

/// The whole program on the offscreen platform, with a program folder, settings and a user of its own.
class ShellFixture : public testing::Test {
 protected:
  ShellFixture();
  ~ShellFixture() override;

  /// Starts the program as with these command-line arguments.
  CQuillApp::Started Start(const std::vector<std::string>& arguments = {});
  /// Ends the program as a closed window does, without asking; a later `Start` is the next run.
  void Quit();
  /// Ends it as a crash does.
  void Crash();

  CMainFrame& Frame() { return m_app->MainFrame(); }
  const ShellParts& Parts() { return Frame().Parts(); }
  CQuillView& View();
  CQuillDoc& Document();
  /// Writes a file and opens it.
  CQuillDoc& Open(const std::string& name, const std::string& text);
  /// The active document's lines, "|" between them.
  std::string TextOf(CQuillDoc& document);
  std::string ActiveText() { return TextOf(Document()); }

  /// Presses a key in the widget that has the focus: "Ctrl+S", "a".
  void Press(const std::string& key);
  void Type(const std::string& text);
  /// Chooses an entry of the menus by its path: "File > Save". False when it is disabled or missing.
  bool Choose(const std::string& path);
  QAction* MenuAction(const std::string& path);
  /// Handles all events that wait, deletions included.
  static void Pump();

  std::string LogMessages() const;

  TempFolder m_folder;  ///< holds the program folder "bin" and the user's files
  MemorySettingsStore m_settings;
  ProfileLineFlagStore m_marks{AppProfile(m_settings)};
  ScriptedPrompts m_prompts;
  std::unique_ptr<RunLog> m_log;
  std::unique_ptr<AppServices> m_services;
  std::unique_ptr<CQuillApp> m_app;
  FeatureFactory m_makeFeatures = MakeFeatures;
  /// Of the services, for the next `Start`.
  std::function<bool(const std::vector<std::string>&)> m_handOver;
  std::function<void(int)> m_endProcess;
  std::function<bool(const std::string&)> m_showFolder;
};

}  // namespace quill
