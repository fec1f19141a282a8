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

}  // namespace

void PrintCommands::RegisterCommands(CommandRouter& router) {
  const auto hasView = [this] {
    return CommandState::EnabledIf(m_active.View() != nullptr, StringId::kNoDocumentOpen);
  };
  router.Register(CommandId::kFilePageSetup, [this] { SetUpPage(); });
  router.Register(
      CommandId::kFilePrint, [this] { Print(); }, hasView);
  router.Register(
      CommandId::kFilePrintToPdf, [this] { PrintToPdf(); }, hasView);
}

void PrintCommands::PrintTo(QPrinter& printer) {
  const QString title = m_active.Document()->Title();
  printer.setDocName(title);
  PrintJob job(*m_active.View(), ReadMargins(m_services.Profile()), title);
  if (!job.Print(printer)) m_services.prompts.Tell(std::string(Text(StringId::kPrintFailed)));
}

void PrintCommands::Print() {
  QPrinter printer(QPrinter::HighResolution);
  if (m_services.prompts.ChoosePrinter(printer)) PrintTo(printer);
}

void PrintCommands::PrintToPdf() {
  const std::filesystem::path source = m_active.Document()->File().SuggestedName();
  const std::string path =
      m_services.prompts.ChoosePdfFile(std::filesystem::path(source).replace_extension(".pdf").string());
  if (path.empty()) return;
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(FromBytes(path));
  PrintTo(printer);
}

void PrintCommands::SetUpPage() {
  const AppProfile profile = m_services.Profile();
  if (const auto margins = m_services.prompts.ChooseMargins(ReadMargins(profile))) {
    WriteMargins(profile, *margins);
  }
}

}  // namespace quill
