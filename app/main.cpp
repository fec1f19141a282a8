#include <QApplication>
#include <QDesktopServices>
#include <QStyleFactory>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "app/EndsFromOutside.h"
#include "app/MainFrame.h"
#include "app/QuillApp.h"
#include "base/UiThread.h"
#include "res/Strings.h"
#include "res/ui/IconSet.h"
#include "res/ui/UiText.h"
#include "settings/SettingsFile.h"
#include "settings/SqliteSettingsStore.h"
#include "shell/ProfileLineFlagStore.h"
#include "shell/RecoveryFolder.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/Appearance.h"
#include "shell/ui/DialogPrompts.h"
#include "shell/ui/Documents.h"

namespace {

using namespace quill;

constexpr int kWrongUse = 2;
/// Short enough not to be felt while one works.
constexpr std::chrono::milliseconds kSettingsPatience{200};
constexpr std::chrono::seconds kStoreKeptPeriod{1};

CommandLine ParseArguments(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  return CommandLine::Parse(arguments, [](const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
  });
}

/// Help and version need no display.
bool AnswersInTheTerminal(const CommandLine& commandLine) {
  if (commandLine.action == CommandLine::Action::kShowHelp) {
    std::fputs(Text(StringId::kCommandLineHelp).data(), stdout);
    return true;
  }
  if (commandLine.action == CommandLine::Action::kShowVersion) {
    std::printf("%s %s\n", Text(StringId::kProgramTitle).data(), Text(StringId::kVersionText).data());
    return true;
  }
  return false;
}

bool ShowFolder(const std::string& folder) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(FromBytes(folder)));
}

int Run(QApplication& application, CommandLine commandLine, const std::string& processCommandLine) {
  const std::string programFolder = ToBytes(QCoreApplication::applicationDirPath());
  SqliteSettingsStore settings(
      settings_file::DefaultPath(std::getenv("XDG_CONFIG_HOME"), std::getenv("HOME")), kSettingsPatience);
  QTimer storeKept;
  QObject::connect(&storeKept, &QTimer::timeout, [&settings] { settings.StoreKept(); });
  storeKept.start(kStoreKeptPeriod);
  ProfileLineFlagStore marks{AppProfile(settings)};
  RunLog log(programFolder);
  DialogPrompts prompts;
  AppServices services{.programFolder = programFolder,
                       .recoveryFolder = DefaultRecoveryFolder(),
                       .commandLine = processCommandLine,
                       .language = {},
                       .settings = settings,
                       .marks = marks,
                       .log = log,
                       .prompts = prompts,
                       .clock = SystemTime,
                       .handOver = {},
                       .endProcess = [](int status) { std::_Exit(status); },
                       .showFolder = ShowFolder};

  CQuillApp quill(services, std::move(commandLine));
  switch (quill.Start()) {
    case CQuillApp::Started::kHandedOver:
    case CQuillApp::Started::kEnded:
      return EXIT_SUCCESS;
    case CQuillApp::Started::kFailed:
      return EXIT_FAILURE;
    case CQuillApp::Started::kRunning:
      break;
  }
  prompts.SetParent(&quill.MainFrame());
  if (const std::string message = settings.TakeMessage(); !message.empty()) prompts.Tell(message);
  const EndsFromOutside ends([&quill] { quill.MainFrame().Parts().documents.FlushJournals(); });
  return application.exec();
}

}  // namespace

int main(int argc, char** argv) {
  ClaimUiThread();
  if (AnswersInTheTerminal(ParseArguments(argc, argv))) return EXIT_SUCCESS;
  const std::string processCommandLine = JoinCommandLine(std::vector<std::string>(argv, argv + argc));
  PrepareAppearance();
  QApplication application(argc, argv);
  // The toolkit has taken its own options out.
  CommandLine commandLine = ParseArguments(argc, argv);
  if (commandLine.action == CommandLine::Action::kRefuse) {
    std::fprintf(stderr, "quill: %s\n", commandLine.error.c_str());
    return kWrongUse;
  }
  QApplication::setApplicationName("quill");
  QApplication::setApplicationDisplayName({});
  QApplication::setApplicationVersion(UiText(StringId::kVersionText));
  QGuiApplication::setDesktopFileName("quill");
  ApplyAppearance();
  return Run(application, std::move(commandLine), processCommandLine);
}
