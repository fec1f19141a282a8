#include "res/CommandTables.h"

namespace quill {
namespace {

using enum CommandId;
using enum CommandArea;

// clang-format off
constexpr Command kCommands[] = {
    // File
    {kFileNew, "file.new", "&New", {"Ctrl+N"}, "Creates a new, empty script", "file-new"},
    {kFileOpen, "file.open", "&Open...", {"Ctrl+O"}, "Opens a script", "file-open"},
    {kFileReload, "file.reload", "&Reload", {"Ctrl+R"}, "Reads the document from its file again", "file-reload"},
    {kFileClose, "file.close", "&Close", {"Ctrl+W", "Ctrl+F4"}, "Closes the document", "file-close"},
    {kFileCloseAll, "file.closeAll", "C&lose All", {"Ctrl+Shift+W"}, "Closes all documents", "file-close-all"},
    {kFileSave, "file.save", "&Save", {"Ctrl+S"}, "Saves the document", "file-save"},
    {kFileSaveAs, "file.saveAs", "Save &As...", {"Ctrl+Shift+S"}, "Saves the document under another name",
     "file-save-as"},
    {kFileSaveAll, "file.saveAll", "Sa&ve All", {"Ctrl+Alt+S"}, "Saves all modified documents", "file-save-all"},
    {kFileReadOnly, "file.readOnly", "Read-Onl&y", {}, "Protects the document from changes, or lifts the protection",
     "file-read-only", true},
    {kFileLineEndDos, "file.lineEndDos", "&DOS (CR LF)", {}, "Saves the document with CR LF between its lines", "", true},
    {kFileLineEndUnix, "file.lineEndUnix", "&UNIX (LF CR)", {}, "Saves the document with LF CR between its lines", "",
     true},
    {kFileLineEndMac, "file.lineEndMac", "&MAC (LF)", {}, "Saves the document with LF between its lines", "", true},
    {kFileCopyPath, "file.copyPath", "Copy Pat&h", {}, "Copies the path of the document's file to the clipboard", "copy"},
    {kFileOpenFolder, "file.openFolder", "Open Containing &Folder", {}, "Shows the folder of the document's file",
     "folder-open"},
    {kFileRecover, "file.recover", "Recover Unsaved &Text...", {}, "Offers what an earlier run left unsaved", "undo"},
    {kFilePageSetup, "file.pageSetup", "Page Set&up...", {}, "Sets the margins of the printed page", "page-setup"},
    {kFilePrint, "file.print", "&Print...", {"Ctrl+P"}, "Prints the document", "print"},
    {kFilePrintToPdf, "file.printToPdf", "Print to P&DF...", {}, "Writes the printed pages to a PDF file", "print-pdf"},
    {kFileExit, "file.exit", "E&xit", {"Ctrl+Q"}, "Leaves the program; asks about unsaved changes", "exit"},
    {kRecentFileFirst + 0, "file.recent1", "", {}, "Opens this file again", ""},
    {kRecentFileFirst + 1, "file.recent2", "", {}, "Opens this file again", ""},
    {kRecentFileFirst + 2, "file.recent3", "", {}, "Opens this file again", ""},
    {kRecentFileFirst + 3, "file.recent4", "", {}, "Opens this file again", ""},

    // Edit. The plain Redo names Ctrl+Z as its key, although Ctrl+Y and Ctrl+Shift+Z are what works.
    {kEditUndo, "edit.undo", "&Undo\tCtrl+Z", {"Ctrl+Z", "Alt+Backspace"}, "Takes the last change back", "undo"},
    {kEditRedo, "edit.redo", "&Redo\tCtrl+Z", {"Ctrl+Y", "Ctrl+Shift+Z"}, "Makes the change that was taken back again",
     "redo"},
    {kEditCut, "edit.cut", "Cu&t", {"Ctrl+X", "Shift+Del"}, "Moves the selected text to the clipboard", "cut"},
    {kEditCopy, "edit.copy", "&Copy", {"Ctrl+C", "Ctrl+Ins"}, "Copies the selected text to the clipboard", "copy"},
    {kEditPaste, "edit.paste", "&Paste", {"Ctrl+V", "Shift+Ins"}, "Inserts the clipboard's text at the caret", "paste"},
    {kEditDelete, "edit.delete", "&Delete", {"Del"}, "Deletes the selected text, or the character at the caret",
     "delete"},
    {kEditSelectAll, "edit.selectAll", "Select &All", {"Ctrl+A"}, "Selects the whole text", "select-all"},
    {kEditDeleteLine, "edit.deleteLine", "&Delete Line", {"Ctrl+Shift+K"}, "Deletes the caret line, or the selected lines",
     "line-delete"},
    {kEditDuplicateLine, "edit.duplicateLine", "D&uplicate Line", {"Ctrl+D"},
     "Repeats the caret line, or the selected lines, below", "line-duplicate"},
    {kEditMoveLineUp, "edit.moveLineUp", "&Move Line Up", {"Alt+Up"},
     "Moves the caret line, or the selected lines, one line up", "line-up"},
    {kEditMoveLineDown, "edit.moveLineDown", "Mo&ve Line Down", {"Alt+Down"},
     "Moves the caret line, or the selected lines, one line down", "line-down"},
    {kEditUpperCase, "edit.upperCase", "Upper &Case", {"Ctrl+Shift+U"}, "Turns the selected text into capital letters",
     "upper-case"},
    {kEditLowerCase, "edit.lowerCase", "&Lower Case", {"Ctrl+U"}, "Turns the selected text into small letters",
     "lower-case"},
    {kEditIndent, "edit.indent", "&Indent", {"Ctrl+]"}, "Moves the selected lines one step to the right", "indent"},
    {kEditUnindent, "edit.unindent", "U&nindent", {"Ctrl+["}, "Moves the selected lines one step to the left", "unindent"},
    {kEditIndentAll, "edit.indentAll", "Indent All\tCtrl+Alt+A", {"Ctrl+Alt+A"},
     "Indents the whole text by its braces", "indent-all"},
    {kEditCommentLine, "edit.commentLine", "Comment Line\tCtrl+Alt+C", {"Ctrl+Alt+C"},
     "Turns the caret line, or the selected lines, into comments", "comment"},
    {kEditUncommentLine, "edit.uncommentLine", "Uncomment Line\tCtrl+Shift+C", {"Ctrl+Shift+C"},
     "Removes the comment mark from the caret line, or the selected lines", "uncomment"},
    {kEditInsertDate, "edit.insertDate", "Insert Date", {}, "Inserts today's date, or replaces the selection with it",
     "insert-date"},
    {kEditOverwrite, "edit.overwrite", "&Overwrite Mode", {"Ins"},
     "Switches between inserting text and typing over it", "overwrite", true},
    {kEditColumnSelection, "edit.columnSelection", "Colu&mn Selection", {"Alt+Shift+Ins"},
     "Selects columns instead of lines; the mouse does so while Alt is held", "column-selection", true},
    {kEditGoToLine, "edit.goToLine", "&Go to Line...", {"Ctrl+G"}, "Moves the caret to a line by its number",
     "go-to-line"},

    // Search
    {kEditFind, "edit.find", "&Find...", {"Ctrl+F"}, "Finds text in the document", "find", false, kFind},
    {kEditFindNext, "edit.findNext", "Find Ne&xt", {"F3"}, "Finds the next place of the text last searched for",
     "find-next", false, kFind},
    {kEditFindPrevious, "edit.findPrevious", "Find Pre&vious", {"Shift+F3"},
     "Finds the previous place of the text last searched for", "find-previous", false, kFind},
    {kEditFindSelectedWord, "edit.findSelectedWord", "Find Selected &Word", {"Ctrl+F3"},
     "Finds the next place of the selected text, or of the word at the caret", "find-word", false, kFind},
    {kEditReplace, "edit.replace", "R&eplace...", {"Ctrl+H"}, "Finds text and replaces it", "replace", false, kFind},
    {kEditFindInFiles, "edit.findInFiles", "Find In Files", {"Ctrl+Shift+F"},
     "Finds text in all scripts of a folder", "find-in-files", false, kFindInFiles},
};
// clang-format on

}  // namespace

std::span<const Command> FileAndEditCommands() {
  return kCommands;
}

}  // namespace quill
