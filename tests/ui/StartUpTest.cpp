#include <filesystem>

#include "shell/KeyBindings.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/Documents.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/TimerService.h"
#include "shell/ui/Workspace.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

using Started = CQuillApp::Started;

class StartUp : public ShellFixture {};

TEST_F(StartUp, LogsItsStepsInOrderAndWhatWaitsComesWithTimer107) {
  std::string calls;
  m_hooks.startDebugger = [&calls] { calls += "debugger "; };
  m_hooks.openPreviousProject = [&calls] { calls += "project "; };
  m_hooks.loadPlugins = [&calls] { calls += "plugins "; };
  m_folder.Write("bin/qil.log", "of the run before\n");
  ASSERT_EQ(Start(), Started::kRunning);
  const std::string created =
      "Creating MainFrame...\nVersion -1.3.1\nLoading Keywords...\nLoading Commands...\nMainFrame created\n";
  EXPECT_EQ(LogMessages(), created);
  EXPECT_EQ(calls, "");
  EXPECT_EQ(Parts().timers.PeriodOf(timer_id::kDeferredStart), 1000);
  EXPECT_EQ(Parts().timers.PeriodOf(timer_id::kWatchRefresh), 500);
  EXPECT_EQ(Parts().timers.PeriodOf(timer_id::kAutoSave), 60000);
  EXPECT_TRUE(Parts().timers.Fire(timer_id::kDeferredStart));
  EXPECT_EQ(LogMessages(),
            created + "Starting Debugger...\nLoading previous project...\nLoading Plugins...\n");
  EXPECT_EQ(calls, "debugger project plugins ");
  EXPECT_FALSE(Parts().timers.Fire(timer_id::kDeferredStart)) << "it fires once";
}

TEST_F(StartUp, AFileOnTheCommandLineOpensAtItsLineAndNoProjectIsReopened) {
  m_hooks.openPreviousProject = [] { FAIL(); };
  const std::string path = m_folder.Write("a.vsl", "1\r\n2\r\n3");
  ASSERT_EQ(Start({path + ":2"}), Started::kRunning);
  EXPECT_EQ(ActiveText(), "1|2|3");
  EXPECT_EQ(View().CaretPos().line, 1);
  EXPECT_EQ(Parts().documents.All().size(), 1U);
  Parts().timers.Fire(timer_id::kDeferredStart);
  EXPECT_EQ(LogMessages().find("previous project"), std::string::npos);
}

TEST_F(StartUp, AFileThatCannotBeOpenedIsToldAboutAndTheNextOneOpens) {
  const std::string path = m_folder.Write("a.vsl", "x");
  m_prompts.Expect("The file could not be opened.", Prompts::Answer::kOk);
  m_prompts.Expect("The file could not be opened.", Prompts::Answer::kOk);
  ASSERT_EQ(Start({m_folder.Path("missing.vsl"), m_folder.Path("bin"), path}), Started::kRunning);
  EXPECT_EQ(ActiveText(), "x");
}

TEST_F(StartUp, StartBlankDecidesWhetherAnEmptyDocumentIsThere) {
  ASSERT_EQ(Start(), Started::kRunning);
  EXPECT_EQ(Document().Title(), "Untitled1");
  WriteFlag(m_settings, settings::kStartBlank, false);
  ASSERT_EQ(Start(), Started::kRunning);
  EXPECT_EQ(Parts().workspace.ActiveDocument(), nullptr);
}

TEST_F(StartUp, AMissingDatabaseEndsTheProgramWithItsMessage) {
  std::filesystem::remove(m_folder.Path("bin/cKeywords.db"));
  m_prompts.Expect("Keywords does not exist, please reinstall Vesper Editor", Prompts::Answer::kOk);
  EXPECT_EQ(Start(), Started::kEnded);
  m_folder.Write("bin/cKeywords.db", "if\r\n");
  std::filesystem::remove(m_folder.Path("bin/KVSTCommands.db"));
  m_prompts.Expect("Command Database does not exist, please reinstall Vesper Editor", Prompts::Answer::kOk);
  EXPECT_EQ(Start(), Started::kEnded);
}

TEST_F(StartUp, ARunningCopyTakesTheCommandLine) {
  std::vector<std::string> handed;
  m_hooks.handOverToRunningCopy = [&handed](const std::vector<std::string>& files) {
    handed = files;
    return true;
  };
  EXPECT_EQ(Start({"a.vsl", "b.vsl"}), Started::kHandedOver);
  EXPECT_EQ(handed, (std::vector<std::string>{"a.vsl", "b.vsl"}));
  EXPECT_FALSE(std::filesystem::exists(m_folder.Path("bin/qil.log")));
}

TEST_F(StartUp, TheUsersKeysAreUsedAndABrokenTableIsToldAbout) {
  AppProfile profile(m_settings);
  KeyBindings bindings;
  bindings.Set("file.new", {"F7"});
  WriteBinary(profile, profile::kKeyboard, bindings.ToBytes());
  ASSERT_EQ(Start(), Started::kRunning);
  Press("F7");
  EXPECT_EQ(Document().Title(), "Untitled2");
  EXPECT_EQ(MenuAction("File > New")->text(), "&New\tF7");

  WriteBinary(profile, profile::kKeyboard, "nonsense");
  m_prompts.Expect("Loading User accelerators failed !!", Prompts::Answer::kOk);
  ASSERT_EQ(Start(), Started::kRunning);
  Press("Ctrl+N");
  EXPECT_EQ(Document().Title(), "Untitled2");
}

TEST_F(StartUp, TheTitleNamesTheProjectAndThePathWhenItShould) {
  std::string project;
  m_hooks.projectName = [&project] { return project; };
  ASSERT_EQ(Start(), Started::kRunning);
  Open("a.vsl", "x");
  EXPECT_EQ(Frame().windowTitle(), "Vesper Editor");
  project = "lander";
  WriteFlag(m_settings, settings::kShowFullPathTitle, true);
  Frame().UpdateFrameTitle();
  EXPECT_EQ(Frame().windowTitle().toStdString(),
            "Vesper Editor - [lander] - [" + m_folder.Path("a.vsl") + "]");
}

TEST_F(StartUp, ClosingRunsItsStepsInOrderAndARunningEngineEndsTheProcess) {
  std::string calls;
  bool engineRuns = false;
  m_hooks.saveProjectName = [&calls] { calls += "project "; };
  m_hooks.stopEngine = [&calls] { calls += "engine "; };
  m_hooks.engineRuns = [&engineRuns] { return engineRuns; };
  m_hooks.endProcess = [&calls](int status) { calls += "end " + std::to_string(status); };
  ASSERT_EQ(Start(), Started::kRunning);
  Quit();
  EXPECT_EQ(calls, "project engine ");
  EXPECT_EQ(ReadBinary(AppProfile(m_settings), profile::kMainWndPos)->size(), 44U);
  EXPECT_TRUE(ReadBinary(AppProfile(m_settings), profile::kBarPositions).has_value());
  engineRuns = true;
  ASSERT_EQ(Start(), Started::kRunning);
  Quit();
  EXPECT_EQ(calls, "project engine project engine end 0");
}

}  // namespace
}  // namespace quill
