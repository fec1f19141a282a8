#include <filesystem>
#include <utility>

#include "app/ShellParts.h"
#include "shell/KeyBindings.h"
#include "shell/OpenProject.h"
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

class StartUp : public ShellFixture {
 protected:
  /// The witnesses speak to the end.
  ~StartUp() override { m_app.reset(); }

  /// Writes down what it is told, and may be a project or something that runs on.
  class Witness : public Feature, public OpenProject {
   public:
    Witness(std::string name, StartUp& test) : m_name(std::move(name)), m_test(test) {}
    ~Witness() override { Say("gone"); }
    void AddBars(DockBars&) override { Say("bars"); }
    void RegisterCommands(CommandRouter&) override { Say("commands"); }
    void Started() override { Say("started"); }
    void ActiveViewChanged() override { Say("view"); }
    void SettingsApplied() override { Say("settings"); }
    void AboutToClose() override { Say("closing"); }
    bool CannotBeStopped() const override { return m_test.m_runsOn; }
    std::string Name() const override { return m_test.m_project; }

   private:
    void Say(const std::string& what) { m_test.m_said += m_name + " " + what + "; "; }

    std::string m_name;
    StartUp& m_test;
  };

  /// The program's features, and two witnesses at the end of the list.
  void AddWitnesses() {
    m_makeFeatures = [this](const ShellParts& parts) {
      Features features = MakeFeatures(parts);
      features.project = &features.Add<Witness>("a", *this);
      features.Add<Witness>("b", *this);
      return features;
    };
  }
  std::string Said() { return std::exchange(m_said, {}); }

  std::string m_said;
  std::string m_project;
  bool m_runsOn = false;
};

TEST_F(StartUp, LogsItsStepsInOrderAndWhatWaitsComesWithTimer107) {
  AddWitnesses();
  m_folder.Write("bin/qil.log", "of the run before\n");
  ASSERT_EQ(Start(), Started::kRunning);
  const std::string created =
      "Creating MainFrame...\nVersion -1.3.1\nLoading Keywords...\nLoading Commands...\nMainFrame created\n";
  EXPECT_EQ(LogMessages(), created);
  EXPECT_EQ(Said(), "a bars; b bars; a commands; b commands; a view; b view; ");
  EXPECT_EQ(Parts().timers.PeriodOf(timer_id::kDeferredStart), 1000);
  EXPECT_EQ(Parts().timers.PeriodOf(timer_id::kWatchRefresh), 500);
  EXPECT_EQ(Parts().timers.PeriodOf(timer_id::kAutoSave), 60000);
  EXPECT_TRUE(Parts().timers.Fire(timer_id::kDeferredStart));
  EXPECT_EQ(LogMessages(),
            created + "Starting Debugger...\nLoading previous project...\nLoading Plugins...\n");
  EXPECT_EQ(Said(), "a started; b started; ");
  EXPECT_FALSE(Parts().timers.Fire(timer_id::kDeferredStart)) << "it fires once";
}

TEST_F(StartUp, AFileOnTheCommandLineOpensAtItsLineAndNoProjectIsReopened) {
  const std::string path = m_folder.Write("a.vsl", "1\r\n2\r\n3");
  ASSERT_EQ(Start({path + ":2"}), Started::kRunning);
  EXPECT_EQ(ActiveText(), "1|2|3");
  EXPECT_EQ(View().CaretPos().line, 1);
  EXPECT_EQ(Parts().documents.All().size(), 1U);
  Parts().timers.Fire(timer_id::kDeferredStart);
  EXPECT_EQ(LogMessages().find("previous project"), std::string::npos);
}

TEST_F(StartUp, AFileThatDoesNotExistIsCreatedOnlyWhenWanted) {
  const std::string path = m_folder.Path("missing.vsl");
  const std::string question = "The file \"" + path + "\" does not exist. Do you want to create it?";
  m_prompts.Expect(question, Prompts::Answer::kNo);
  EXPECT_EQ(Start({path}), Started::kFailed);
  EXPECT_FALSE(Frame().isVisible());
  EXPECT_FALSE(std::filesystem::exists(path));
  m_prompts.Expect(question, Prompts::Answer::kYes);
  ASSERT_EQ(Start({path + ":3"}), Started::kRunning);
  EXPECT_EQ(Document().File().Path(), path);
  EXPECT_TRUE(std::filesystem::exists(path));
  Type("x");
  Press("Ctrl+S");
  EXPECT_EQ(m_folder.Read("missing.vsl"), "x");
}

TEST_F(StartUp, AFileThatCannotBeOpenedEndsTheStartUnlessAnotherOneOpens) {
  const std::string file = m_folder.Write("file", "x");
  for (const std::string& path :
       {m_folder.Path("bin"), m_folder.Path("none/below.vsl"), file + "/below.vsl"}) {
    if (path != m_folder.Path("bin")) {
      m_prompts.Expect("The file \"" + path + "\" does not exist. Do you want to create it?",
                       Prompts::Answer::kYes);
    }
    m_prompts.Expect("The file could not be opened.", Prompts::Answer::kOk);
    EXPECT_EQ(Start({path}), Started::kFailed) << path;
    EXPECT_NE(m_prompts.LastDetail().find("\"" + path + "\""), std::string::npos) << m_prompts.LastDetail();
  }
  m_prompts.Expect("The file could not be opened.", Prompts::Answer::kOk);
  ASSERT_EQ(Start({m_folder.Path("bin"), file}), Started::kRunning);
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
  m_handOver = [&handed](const std::vector<std::string>& files) {
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
  AddWitnesses();
  ASSERT_EQ(Start(), Started::kRunning);
  Open("a.vsl", "x");
  EXPECT_EQ(Frame().windowTitle(), "Vesper Editor");
  m_project = "lander";
  WriteFlag(m_settings, settings::kShowFullPathTitle, true);
  Frame().UpdateFrameTitle();
  EXPECT_EQ(Frame().windowTitle().toStdString(),
            "Vesper Editor - [lander] - [" + m_folder.Path("a.vsl") + "]");
}

TEST_F(StartUp, ClosingTellsTheFeaturesLastFirstAndWhatRunsOnEndsTheProcess) {
  AddWitnesses();
  m_endProcess = [this](int status) { m_said += "end " + std::to_string(status) + "; "; };
  ASSERT_EQ(Start(), Started::kRunning);
  Said();
  Quit();
  EXPECT_EQ(Said(), "b closing; a closing; a view; b view; b gone; a gone; ");
  EXPECT_EQ(ReadBinary(AppProfile(m_settings), profile::kMainWndPos)->size(), 44U);
  EXPECT_TRUE(ReadBinary(AppProfile(m_settings), profile::kBarPositions).has_value());
  m_runsOn = true;
  ASSERT_EQ(Start(), Started::kRunning);
  Said();
  Quit();
  EXPECT_EQ(Said(), "b closing; a closing; end 0; a view; b view; b gone; a gone; ");
}

TEST_F(StartUp, FeaturesGoBeforeWhatTheyUseAndHearOfAppliedSettings) {
  AddWitnesses();
  ASSERT_EQ(Start(), Started::kRunning);
  Open("a.vsl", "x");
  Said();
  Frame().ApplySettingsToViews();
  EXPECT_EQ(Said(), "a settings; b settings; ");
  Crash();
  EXPECT_EQ(Said(), "b gone; a gone; ") << "windows that go afterwards tell nobody";
}

}  // namespace
}  // namespace quill
