#include "app/QuillApp.h"

#include <QApplication>
#include <QTimer>

#include "app/MainFrame.h"
#include "res/ui/IconSet.h"
#include "settings/Settings.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/TimerService.h"

namespace quill {
namespace {

constexpr int kDeferredStartDelay = 1000;  ///< milliseconds

std::vector<std::string> PathsOf(const CommandLine& commandLine) {
  std::vector<std::string> paths;
  for (const CommandLine::File& file : commandLine.files) paths.push_back(file.path);
  return paths;
}

}  // namespace

CQuillApp::CQuillApp(AppServices& services, CommandLine commandLine, FeatureFactory makeFeatures)
    : m_services(services), m_commandLine(std::move(commandLine)), m_makeFeatures(std::move(makeFeatures)) {}

CQuillApp::~CQuillApp() = default;

CQuillApp::Started CQuillApp::Start() {
  m_services.language = ReadText(m_services.settings, settings::kLanguage);
  if (m_services.handOver && m_services.handOver(PathsOf(m_commandLine))) return Started::kHandedOver;

  m_frame = std::make_unique<CMainFrame>(m_services, m_makeFeatures);
  switch (m_frame->Create()) {
    case CMainFrame::Created::kYes:
      break;
    case CMainFrame::Created::kDatabaseMissing:
      return Started::kEnded;
    case CMainFrame::Created::kFailed:
      return Started::kFailed;
  }
  if (!ProcessCommandLine()) return Started::kFailed;
  ShowFrame();
  m_frame->LoadKeys();
  m_frame->Parts().timers.Start(timer_id::kDeferredStart, kDeferredStartDelay);
  QTimer::singleShot(0, m_frame.get(), [this] {
    // Drawing the icon in all its sizes need not hold up the first picture.
    QApplication::setWindowIcon(ProgramIcon());
    m_frame->Parts().files.OfferRecovery();
  });
  return Started::kRunning;
}

/// False when files were named and none of them is open. One of several that cannot be opened is told about
/// and passed over.
bool CQuillApp::ProcessCommandLine() {
  FileOperations& files = m_frame->Parts().files;
  if (m_commandLine.files.empty()) {
    if (ReadFlag(m_services.settings, settings::kStartBlank)) files.New();
    return true;
  }
  bool anyOpened = false;
  for (const CommandLine::File& file : m_commandLine.files) {
    if (files.OpenOrCreate(file.path, file.line) != nullptr) anyOpened = true;
  }
  return anyOpened;
}

/// The window gets its place before it is seen, so that it does not jump.
void CQuillApp::ShowFrame() {
  if (m_frame->RestoreLayout()) {
    m_frame->showMaximized();
  } else {
    m_frame->show();
  }
}

}  // namespace quill
