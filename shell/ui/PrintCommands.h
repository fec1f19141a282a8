#pragma once
#include <QBasicTimer>
#include <QObject>
#include <memory>

#include "shell/ui/Feature.h"
#include "shell/ui/Prompts.h"
#include "text/ui/PrintJob.h"

namespace quill {

class ActiveView;
struct AppServices;

/// Printing the active document, to paper or into a file: one at a time, while the program goes on.
class PrintCommands : public QObject, public Feature {
  Q_OBJECT

 public:
  PrintCommands(AppServices& services, ActiveView& active) : m_services(services), m_active(active) {}

  void RegisterCommands(CommandRouter& router) override;
  bool MayClose() override;

 protected:
  /// A step of the printing.
  void timerEvent(QTimerEvent* event) override;

 private:
  void Print();
  void PrintToPdf();
  void Begin(std::unique_ptr<QPrinter> printer);
  void Cancel();
  /// The job is over, done or not.
  void End();
  void TellFailure(const std::string& why);
  /// In the status bar.
  void Hint(StringId text, const QString& title);
  void SetUpPage();

  AppServices& m_services;
  ActiveView& m_active;
  CommandRouter* m_router = nullptr;
  std::unique_ptr<PrintJob> m_job;  ///< null while nothing is printed
  std::unique_ptr<Prompts::Progress> m_progress;
  QBasicTimer m_step;
};

}  // namespace quill
