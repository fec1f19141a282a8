#pragma once
#include <memory>

#include "app/Features.h"
#include "shell/CommandLine.h"

namespace quill {

class CMainFrame;
struct AppServices;

/// The application: starts the program in its fixed order and owns the main window.
class CQuillApp {
 public:
  enum class Started {
    kRunning,
    kHandedOver,  ///< a running copy has taken the command line
    kEnded,       ///< there is nothing to run; the user knows why
    kFailed,      ///< the user was told, or answered so
  };

  /// `services` outlives the application.
  CQuillApp(AppServices& services, CommandLine commandLine, FeatureFactory makeFeatures = MakeFeatures);
  ~CQuillApp();

  /// Everything up to the point where events are waited for.
  Started Start();
  CMainFrame& MainFrame() { return *m_frame; }

 private:
  bool ProcessCommandLine();
  void ShowFrame();

  AppServices& m_services;
  CommandLine m_commandLine;
  FeatureFactory m_makeFeatures;
  std::unique_ptr<CMainFrame> m_frame;
};

}  // namespace quill
