#include "app/Features.h"

#include <QMainWindow>

#include "app/ShellParts.h"
#include "find/ui/FindFeature.h"
#include "intel/ui/ActiveScript.h"
#include "intel/ui/CodeJumper.h"
#include "intel/ui/CommandHelp.h"
#include "intel/ui/ManualFeature.h"
#include "intel/ui/ScriptToolbox.h"
#include "intel/ui/Templates.h"
#include "intel/ui/WritingHelp.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/EditCommands.h"
#include "shell/ui/FileCommands.h"
#include "shell/ui/PrintCommands.h"
#include "shell/ui/StartFeature.h"
#include "shell/ui/ViewCommands.h"
#include "shell/ui/WindowCommands.h"

namespace quill {
namespace {

/// What every editor has.
void AddEditorCommands(const ShellParts& parts, Features& features) {
  AppServices& services = parts.services;
  features.Add<FileCommands>(FileCommands::Needs{parts.window, parts.active, parts.documents, parts.files,
                                                 parts.recentFiles, services});
  features.Add<StartFeature>(
      StartFeature::Needs{parts.workspace, parts.active, parts.files, parts.recentFiles});
  features.Add<PrintCommands>(services, parts.active);
  features.Add<EditCommands>(parts.active, services.clock);
  features.Add<ViewCommands>(
      ViewCommands::Needs{parts.window, parts.active, parts.viewSettings, parts.statusBar, services.prompts});
  features.Add<WindowCommands>(parts.workspace, parts.files, services.prompts);
}

/// What knows the language.
void AddScriptKnowledge(const ShellParts& parts, Features& features) {
  AppServices& services = parts.services;
  auto& script = features.Add<ActiveScript>(services.settings, parts.active, parts.documents);
  auto& help = features.Add<CommandHelp>(parts.active, script, parts.commands);
  features.Add<CodeJumper>(CodeJumper::Needs{parts.active, script, parts.workspace, parts.files,
                                             parts.viewSettings, services.Profile()});
  auto& templates = features.Add<Templates>(parts.workspace, parts.active, services.programFolder);
  features.Add<WritingHelp>(CompletionControl::Needs{parts.window, parts.active, script, templates,
                                                     parts.commands, services.settings},
                            help);
  features.Add<ScriptToolbox>(services, parts.window, parts.active, parts.files);
  features.Add<ManualFeature>(ManualFeature::Needs{services, parts.active, script, parts.commands, help});
}

}  // namespace

Features MakeFeatures(const ShellParts& parts) {
  Features features;
  AddEditorCommands(parts, features);
  AddScriptKnowledge(parts, features);
  features.Add<FindFeature>(
      FindFeature::Needs{parts.services, parts.window, parts.active, parts.files, parts.statusBar});
  return features;
}

}  // namespace quill
