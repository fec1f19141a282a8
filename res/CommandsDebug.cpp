#include "res/CommandTables.h"

namespace quill {
namespace {

using enum CommandId;
using enum CommandArea;

// clang-format off
constexpr Command kCommands[] = {
    // Project
    {kProjectNew, "project.new", "&New Project...", {}, "Creates a project for a game's files", "project-new", false,
     kProjects},
    {kProjectOpen, "project.open", "&Open Project...", {}, "Opens a project and the files it had open", "project-open",
     false, kProjects},
    {kProjectSave, "project.save", "&Save Project", {}, "Saves the project's list of files", "project-save", false,
     kProjects},
    {kProjectSaveAs, "project.saveAs", "Save Project &As...", {}, "Saves the project under another name", "", false,
     kProjects},
    {kProjectClose, "project.close", "&Close Project", {}, "Closes the project", "project-close", false, kProjects},
    {kProjectAddFile, "project.addFile", "Add &File...", {}, "Adds a file to the project", "project-add", false,
     kProjects},
    {kProjectRemoveFile, "project.removeFile", "&Remove File", {}, "Removes the selected file from the project",
     "project-remove", false, kProjects},
    {kRecentProjectFirst + 0, "project.recent1", "", {}, "Opens this project again", "", false, kProjects},
    {kRecentProjectFirst + 1, "project.recent2", "", {}, "Opens this project again", "", false, kProjects},
    {kRecentProjectFirst + 2, "project.recent3", "", {}, "Opens this project again", "", false, kProjects},
    {kRecentProjectFirst + 3, "project.recent4", "", {}, "Opens this project again", "", false, kProjects},

    // Debug
    {kDebugTestRun, "debug.testRun", "Test Run", {"F5"}, "Starts the script in the engine, or lets a stopped one run on",
     "run", false, kDebugging},
    {kDebugSetCurrentFile, "debug.setCurrentFile", "Set current file to run", {"Alt+F5"},
     "Makes the current document the script that a test run starts", "run-set-file", false, kDebugging},
    {kDebugSyntaxCheck, "debug.syntaxCheck", "Syntax Check", {"F6"}, "Lists the errors that the engine reported",
     "syntax-check", false, kDebugging},
    {kDebugBreak, "debug.break", "Break", {}, "Pauses the execution and goes to current position", "break", false,
     kDebugging},
    {kDebugStop, "debug.stop", "Stop Debugging", {}, "Ends the engine and the tool started last", "stop", false,
     kDebugging},
    {kDebugStepOver, "debug.stepOver", "Step Over", {"F4"}, "Executes one line and stops", "step-over", false, kDebugging},
    {kDebugGoToPosition, "debug.goToPosition", "Goto current debugposition", {"F10"},
     "Moves the caret to the line that the engine is at", "debug-position", false, kDebugging},
    {kDebugToggleBreakpoint, "debug.toggleBreakpoint", "Toggle Breakpoint", {"F9"},
     "Sets or removes the breakpoint of the caret line", "breakpoint-toggle"},
    {kDebugIgnoreBreakpoints, "debug.ignoreBreakpoints", "Ignore further breakpoints", {},
     "Continues to run and ignores further breakpoints", "breakpoint-ignore", false, kDebugging},
    {kDebugExecute, "debug.execute", "Execute Instruction", {}, "Hands one instruction to the running engine",
     "execute", false, kDebugging},
    {kDebugReloadFx, "debug.reloadFx", "Reload FX material", {}, "Reads the effect of a material again", "reload-fx",
     false, kDebugging},
    {kDebugAddWatch, "debug.addWatch", "Add Watch", {}, "Adds an object or a variable to the watches", "watch-add", false,
     kWatches},
    {kDebugEditWatch, "debug.editWatch", "Edit Watch", {}, "Changes the value of the selected watch", "watch-edit", false,
     kWatches},
    {kDebugDeleteWatch, "debug.deleteWatch", "Delete Watch", {}, "Removes the selected watch", "watch-delete", false,
     kWatches},
    {kDebugDeleteAllWatches, "debug.deleteAllWatches", "Delete All Watches", {}, "Removes all watches", "", false,
     kWatches},
    {kDebugLevelEditor, "debug.levelEditor", "Start &Level Editor", {}, "Starts the suite's level editor", "level-editor",
     false, kSuiteTools},
    {kDebugModelEditor, "debug.modelEditor", "Start &Model Editor", {}, "Starts the suite's model editor", "model-editor",
     false, kSuiteTools},

    // Plugins: the names come from the libraries
    {kPluginPlaceholder, "plugin.none", "No plugins loaded", {}, "Libraries in the folder qil_plugins are listed here", "",
     false, kPlugins},
    {kPluginFirst + 0, "plugin.1", "", {}, "Runs this plugin", "", false, kPlugins},
    {kPluginFirst + 1, "plugin.2", "", {}, "Runs this plugin", "", false, kPlugins},
    {kPluginFirst + 2, "plugin.3", "", {}, "Runs this plugin", "", false, kPlugins},
    {kPluginFirst + 3, "plugin.4", "", {}, "Runs this plugin", "", false, kPlugins},
    {kPluginFirst + 4, "plugin.5", "", {}, "Runs this plugin", "", false, kPlugins},
    {kPluginFirst + 5, "plugin.6", "", {}, "Runs this plugin", "", false, kPlugins},
    {kPluginFirst + 6, "plugin.7", "", {}, "Runs this plugin", "", false, kPlugins},
    {kPluginFirst + 7, "plugin.8", "", {}, "Runs this plugin", "", false, kPlugins},
    {kPluginFirst + 8, "plugin.9", "", {}, "Runs this plugin", "", false, kPlugins},
    {kPluginFirst + 9, "plugin.10", "", {}, "Runs this plugin", "", false, kPlugins},
};
// clang-format on

}  // namespace

std::span<const Command> DebugCommands() {
  return kCommands;
}

}  // namespace quill
