#include "shell/ui/PrintCommands.h"

#include <QPrinter>
#include <filesystem>

#include "res/ui/UiText.h"
#include "settings/Settings.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "text/ui/PrintJob.h"

namespace quill {
namespace {

PageMargins ReadMargins(const AppProfile& profile) {
  return {ReadInt(profile, profile::kLeftMargin), ReadInt(profile, profile::kRightMargin),
          ReadInt(profile, profile::kTopMargin), ReadInt(profile, profile::kBottomMargin)};
}

void WriteMargins(AppProfile profile, const PageMargins& margins) {
  SettingsTransaction transaction(profile.Store());
  WriteInt(profile, profile::kLeftMargin, margins.left);
  WriteInt(profile, profile::kRightMargin, margins.right);
  WriteInt(profile, profile::kTopMargin, margins.top);
  WriteInt(profile, profile::kBottomMargin, margins.bottom);
  transaction.Commit();
}

/// Of the printing between two looks at other events.
constexpr int kStepMs = 20;

}  // namespace

void PrintCommands::RegisterCommands(CommandRouter& router) {
  m_router = &router;
  const auto canPrint = [this] {
    if (m_job != nullptr) return CommandState::Disabled(StringId::kPrintingNow);
    return CommandState::EnabledIf(m_active.View() != nullptr, StringId::kNoDocumentOpen);
  };
  router.Register(CommandId::kFilePageSetup, [this] { SetUpPage(); });
  router.Register(
      CommandId::kFilePrint, [this] { Print(); }, canPrint);
  router.Register(
      CommandId::kFilePrintToPdf, [this] { PrintToPdf(); }, canPrint);
}

void PrintCommands::Print() {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  if (m_services.prompts.ChoosePrinter(*printer)) Begin(std::move(printer));
}

void PrintCommands::PrintToPdf() {
  const std::filesystem::path source = m_active.Document()->File().SuggestedName();
  const std::string path =
      m_services.prompts.ChoosePdfFile(std::filesystem::path(source).replace_extension(".pdf").string());
  if (path.empty()) return;
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  printer->setOutputFormat(QPrinter::PdfFormat);
  printer->setOutputFileName(FromBytes(path));
  Begin(std::move(printer));
}

void PrintCommands::Begin(std::unique_ptr<QPrinter> printer) {
  if (m_active.View() == nullptr) return;  // the dialog was open for long
  const QString title = m_active.Document()->Title();
  printer->setDocName(title);
  auto job = std::make_unique<PrintJob>(*m_active.View(), ReadMargins(m_services.Profile()), title);
  if (!job->Begin(PrintTarget::For(std::move(printer)))) return TellFailure(job->Failure());
  m_job = std::move(job);
  m_progress = m_services.prompts.ShowProgress(StringId::kPrintingTitle, [this] { Cancel(); });
  m_step.start(0, this);
}

void PrintCommands::timerEvent(QTimerEvent*) {
  const PrintJob::State state = m_job->Step(kStepMs);
  if (state == PrintJob::State::kDone || state == PrintJob::State::kFailed) return End();
  const bool preparing = state == PrintJob::State::kPreparing;
  const QString text =
      preparing ? UiText(StringId::kPrintingPreparing, {m_job->Title()})
                : UiText(StringId::kPrintingPage,
                         {m_job->Title(), QString::number(m_job->Done()), QString::number(m_job->All())});
  m_progress->Show(ToBytes(text), m_job->Done(), m_job->All());
}

void PrintCommands::End() {
  m_step.stop();
  m_progress.reset();
  const std::unique_ptr<PrintJob> job = std::move(m_job);
  m_router->RefreshSoon();
  if (job->CurrentState() == PrintJob::State::kDone) {
    Hint(StringId::kPrinted, job->Title());
  } else {
    TellFailure(job->Failure());
  }
}

void PrintCommands::Cancel() {
  if (m_job == nullptr) return;
  m_step.stop();
  m_progress.reset();
  Hint(StringId::kPrintingCancelled, m_job->Title());
  m_job.reset();
  m_router->RefreshSoon();
}

void PrintCommands::TellFailure(const std::string& why) {
  m_services.prompts.Tell(std::string(Text(StringId::kPrintFailed)), why);
}

void PrintCommands::Hint(StringId text, const QString& title) {
  if (m_active.View() != nullptr) Q_EMIT m_active.View()->Hint(UiText(text, {title}));
}

bool PrintCommands::MayClose() {
  if (m_job == nullptr) return true;
  DocumentPrompt prompt;
  prompt.text = ToBytes(UiText(StringId::kQuitWhilePrinting, {m_job->Title()}));
  prompt.caption = std::string(Text(StringId::kProgramTitle));
  prompt.icon = DocumentPrompt::Icon::kQuestion;
  prompt.buttons = DocumentPrompt::Buttons::kYesNo;
  return m_services.prompts.Ask(prompt) == Prompts::Answer::kYes;
}

void PrintCommands::SetUpPage() {
  const AppProfile profile = m_services.Profile();
  if (const auto margins = m_services.prompts.ChooseMargins(ReadMargins(profile))) {
    WriteMargins(profile, *margins);
  }
}

}  // namespace quill
