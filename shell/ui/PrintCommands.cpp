#include <QMainWindow>
#include <QPrintDialog>
#include <QPrinter>
#include <filesystem>

#include "res/ui/UiText.h"
#include "settings/Settings.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/ShellParts.h"
#include "shell/ui/Workspace.h"
#include "text/ui/PageSetupDialog.h"
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

void PrintTo(QPrinter& printer, const ShellParts& parts) {
  const QString title = parts.workspace.ActiveDocument()->Title();
  printer.setDocName(title);
  PrintJob job(*parts.workspace.ActiveView(), ReadMargins(parts.services.Profile()), title);
  if (!job.Print(printer)) parts.services.prompts.Tell(std::string(Text(StringId::kPrintFailed)));
}

void Print(const ShellParts& parts) {
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, &parts.window);
  if (dialog.exec() == QDialog::Accepted) PrintTo(printer, parts);
}

void PrintToPdf(const ShellParts& parts) {
  const std::filesystem::path source = parts.workspace.ActiveDocument()->File().SuggestedName();
  const std::string path =
      parts.services.prompts.ChoosePdfFile(std::filesystem::path(source).replace_extension(".pdf").string());
  if (path.empty()) return;
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(FromBytes(path));
  PrintTo(printer, parts);
}

void SetUpPage(const ShellParts& parts) {
  PageSetupDialog dialog(ReadMargins(parts.services.Profile()), &parts.window);
  if (dialog.exec() == QDialog::Accepted) WriteMargins(parts.services.Profile(), dialog.Margins());
}

}  // namespace

void RegisterPrintCommands(const ShellParts& parts) {
  const auto hasView = [&workspace = parts.workspace] {
    return CommandState::EnabledIf(workspace.ActiveView() != nullptr, StringId::kNoDocumentOpen);
  };
  parts.router.Register(CommandId::kFilePageSetup, [parts] { SetUpPage(parts); });
  parts.router.Register(
      CommandId::kFilePrint, [parts] { Print(parts); }, hasView);
  parts.router.Register(
      CommandId::kFilePrintToPdf, [parts] { PrintToPdf(parts); }, hasView);
}

}  // namespace quill
