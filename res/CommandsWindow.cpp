#include "res/CommandTables.h"

namespace quill {
namespace {

using enum CommandId;
using enum CommandArea;

// clang-format off
constexpr Command kCommands[] = {
    // View
    {kViewToolBarFile, "view.toolBarFile", "&File", {}, "Shows or hides the File toolbar", "", true},
    {kViewToolBarEdit, "view.toolBarEdit", "&Edit", {}, "Shows or hides the Edit toolbar", "", true},
    {kViewToolBarDebug, "view.toolBarDebug", "&Debug", {}, "Shows or hides the Debug toolbar", "", true},
    {kViewToolBarBookmark, "view.toolBarBookmark", "&Bookmark", {}, "Shows or hides the Bookmark toolbar", "", true},
    {kViewStatusBar, "view.statusBar", "&Status Bar", {}, "Shows or hides the status bar", "status-bar", true},
    {kViewCodeJumper, "view.codeJumper", "Code &Jumper", {}, "Shows or hides the outline of the script", "code-jumper",
     true},
    {kViewCommandHelp, "view.commandHelp", "Command &Help", {}, "Shows or hides the help on the command at the caret",
     "command-help", true},
    {kViewProjectBar, "view.projectBar", "&Project", {}, "Shows or hides the files of the project", "project", true,
     kProjects},
    {kViewOutput, "view.output", "&Output", {}, "Shows or hides the log and the results of the syntax check", "output",
     true, kDebugging},
    {kViewWatch, "view.watch", "&Watch", {}, "Shows or hides the watches", "watch", true, kWatches},
    {kViewZoomIn, "view.zoomIn", "Zoom &In", {"Ctrl++", "Ctrl+="}, "Shows the text larger", "zoom-in"},
    {kViewZoomOut, "view.zoomOut", "Zoom O&ut", {"Ctrl+-"}, "Shows the text smaller", "zoom-out"},
    {kViewZoomReset, "view.zoomReset", "&Reset Zoom", {"Ctrl+Alt+0"}, "Shows the text in its own size", "zoom-reset"},
    {kViewFullScreen, "view.fullScreen", "Fu&ll Screen", {"F11"}, "Gives the window the whole screen", "full-screen",
     true},

    // Options
    {kOptionsHighlightLine, "options.highlightLine", "H&ighlight Selected Line", {},
     "Marks the line that holds the caret", "highlight-line", true},
    {kOptionsIndentGuide, "options.indentGuide", "Indentation Guide", {}, "Shows lines at the indentation steps",
     "indent-guide", true},
    {kOptionsLineNumbers, "options.lineNumbers", "Show Line Numbers", {}, "Shows line numbers in the margin",
     "line-numbers", true},
    {kOptionsFolding, "options.folding", "Show Folding", {}, "Shows folding marks in the margin", "folding", true},
    {kOptionsFont, "options.font", "&Font...", {}, "Chooses the font of the text", "font", false, kOptionsPages},
    {kOptionsKeyboard, "options.keyboard", "Customize &Keyboard...", {}, "Changes the shortcut keys", "keyboard", false,
     kKeyboardPage},
    {kOptionsDialog, "options.dialog", "&Options...", {}, "Changes paths, editing, backups, colors and keywords",
     "options", false, kOptionsPages},

    // Window
    {kWindowNew, "window.new", "&New Window", {}, "Opens another window on the same document", "window-new"},
    {kWindowCascade, "window.cascade", "&Cascade", {}, "Arranges the windows one behind the other", "window-cascade"},
    {kWindowTileHorizontally, "window.tileHorizontally", "Tile &Horizontally", {}, "Arranges the windows one below the other",
     "window-tile-horizontal"},
    {kWindowTileVertically, "window.tileVertically", "Tile &Vertically", {}, "Arranges the windows side by side",
     "window-tile-vertical"},
    {kWindowTabbed, "window.tabbed", "&Tabbed", {}, "Shows the documents as tabs instead of windows", "window-tabs", true},
    {kWindowNext, "window.next", "Ne&xt", {"Ctrl+Tab", "Ctrl+F6"}, "Goes to the window used before this one; further back while Ctrl is held", "window-next"},
    {kWindowPrevious, "window.previous", "&Previous", {"Ctrl+Shift+Tab", "Ctrl+Shift+F6"}, "Goes the other way through the windows in order of their last use",
     "window-previous"},
    {kWindowCloseOthers, "window.closeOthers", "Close &Others", {}, "Closes all windows but this one", ""},
    {kWindowCloseToRight, "window.closeToRight", "Close to the &Right", {}, "Closes the windows to the right of this one",
     ""},
    {kWindowCloseAll, "window.closeAll", "Close &All", {}, "Closes all windows", "file-close-all"},

    // Help
    {kHelpManual, "help.manual", "&Manual", {"F1"}, "Opens the manual at the word under the caret", "help", false, kManual},
    {kHelpSample, "help.sample", "Open &Sample Game", {}, "Opens the scripts of a small game to read and change",
     "document-script"},
    {kHelpAbout, "help.about", "&About Vesper Editor", {}, "Shows the version of the program", "about"},
};
// clang-format on

}  // namespace

std::span<const Command> WindowCommands() {
  return kCommands;
}

}  // namespace quill
