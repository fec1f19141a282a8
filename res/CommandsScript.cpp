#include "res/CommandTables.h"

namespace quill {
namespace {

using enum CommandId;
using enum CommandArea;

// clang-format off
constexpr Command kCommands[] = {
    // Script tools
    {kToolAddComment, "script.addComment", "&Add Comment...", {}, "Inserts a comment between two lines of slashes",
     "add-comment", false, kScriptTools},
    {kToolInsertImage, "script.insertImage", "&Insert Image...", {}, "Inserts the definition of a bitmap from an image file",
     "insert-image", false, kScriptTools},
    {kToolInsertVariable, "script.insertVariable", "Insert &Variable...", {}, "Inserts the definition of a variable",
     "insert-variable", false, kScriptTools},
    {kToolToDoList, "script.toDoList", "&To-do List...", {}, "Shows and edits the to-do list", "to-do", false,
     kScriptTools},

    // Script intelligence
    {kIntelCompleteWord, "script.completeWord", "Complete &Word", {"Ctrl+Space"},
     "Lists the names that fit the word begun", "complete", false, kCompletion},
    {kIntelShowHint, "script.showHint", "Show &Hint", {"Ctrl+Shift+Space"},
     "Shows the parameters of the command at the caret", "hint", false, kHints},
    {kIntelGoToDefinition, "script.goToDefinition", "Go to &Definition", {"F12"},
     "Moves the caret to the definition of the name at the caret", "go-to-definition", false, kOutline},
    {kIntelGoBack, "script.goBack", "Go &Back", {"Alt+Left"}, "Returns to the place of the last jump", "go-back", false,
     kOutline},
    {kIntelRefreshCodeJumper, "script.refreshCodeJumper", "&Refresh Code Jumper", {},
     "Reads the script's definitions again", "refresh-outline", false, kOutline},
    {kIntelFindName, "script.findName", "&Find Name", {"Ctrl+Shift+J"},
     "Goes to the Code Jumper's filter, to find a definition by its name", "code-jumper", false, kOutline},

    // Bookmarks
    {kBookmarkToggle, "bookmark.toggle", "&Toggle bookmark", {"Ctrl+F2"}, "Sets or removes the bookmark of the caret line",
     "bookmark-toggle"},
    {kBookmarkNext, "bookmark.next", "&Next bookmark", {"F2"}, "Moves the caret to the next bookmark", "bookmark-next"},
    {kBookmarkPrevious, "bookmark.previous", "&Previous bookmark", {"Shift+F2"}, "Moves the caret to the previous bookmark",
     "bookmark-previous"},
    {kBookmarkClear, "bookmark.clear", "&Clear bookmarks", {"Ctrl+Shift+F2"}, "Removes all bookmarks of the document",
     "bookmark-clear"},
    {kBookmarkRemoveNumbers, "bookmark.removeNumbers", "&Remove Numbered Bookmark", {},
     "Removes the numbered bookmarks of the caret line", ""},
    {kBookmarkClearNumbers, "bookmark.clearNumbers", "Clear N&umbered Bookmarks", {},
     "Removes all numbered bookmarks of the document", ""},
    {kBookmarkSet0 + 0, "bookmark.set0", "Set Bookmark &0", {"Ctrl+Shift+0"}, "Sets bookmark 0 on the caret line", ""},
    {kBookmarkSet0 + 1, "bookmark.set1", "Set Bookmark &1", {"Ctrl+Shift+1"}, "Sets bookmark 1 on the caret line", ""},
    {kBookmarkSet0 + 2, "bookmark.set2", "Set Bookmark &2", {"Ctrl+Shift+2"}, "Sets bookmark 2 on the caret line", ""},
    {kBookmarkSet0 + 3, "bookmark.set3", "Set Bookmark &3", {"Ctrl+Shift+3"}, "Sets bookmark 3 on the caret line", ""},
    {kBookmarkSet0 + 4, "bookmark.set4", "Set Bookmark &4", {"Ctrl+Shift+4"}, "Sets bookmark 4 on the caret line", ""},
    {kBookmarkSet0 + 5, "bookmark.set5", "Set Bookmark &5", {"Ctrl+Shift+5"}, "Sets bookmark 5 on the caret line", ""},
    {kBookmarkSet0 + 6, "bookmark.set6", "Set Bookmark &6", {"Ctrl+Shift+6"}, "Sets bookmark 6 on the caret line", ""},
    {kBookmarkSet0 + 7, "bookmark.set7", "Set Bookmark &7", {"Ctrl+Shift+7"}, "Sets bookmark 7 on the caret line", ""},
    {kBookmarkSet0 + 8, "bookmark.set8", "Set Bookmark &8", {"Ctrl+Shift+8"}, "Sets bookmark 8 on the caret line", ""},
    {kBookmarkSet0 + 9, "bookmark.set9", "Set Bookmark &9", {"Ctrl+Shift+9"}, "Sets bookmark 9 on the caret line", ""},
    {kBookmarkGo0 + 0, "bookmark.go0", "Go to Bookmark &0", {"Ctrl+0"}, "Moves the caret to bookmark 0", ""},
    {kBookmarkGo0 + 1, "bookmark.go1", "Go to Bookmark &1", {"Ctrl+1"}, "Moves the caret to bookmark 1", ""},
    {kBookmarkGo0 + 2, "bookmark.go2", "Go to Bookmark &2", {"Ctrl+2"}, "Moves the caret to bookmark 2", ""},
    {kBookmarkGo0 + 3, "bookmark.go3", "Go to Bookmark &3", {"Ctrl+3"}, "Moves the caret to bookmark 3", ""},
    {kBookmarkGo0 + 4, "bookmark.go4", "Go to Bookmark &4", {"Ctrl+4"}, "Moves the caret to bookmark 4", ""},
    {kBookmarkGo0 + 5, "bookmark.go5", "Go to Bookmark &5", {"Ctrl+5"}, "Moves the caret to bookmark 5", ""},
    {kBookmarkGo0 + 6, "bookmark.go6", "Go to Bookmark &6", {"Ctrl+6"}, "Moves the caret to bookmark 6", ""},
    {kBookmarkGo0 + 7, "bookmark.go7", "Go to Bookmark &7", {"Ctrl+7"}, "Moves the caret to bookmark 7", ""},
    {kBookmarkGo0 + 8, "bookmark.go8", "Go to Bookmark &8", {"Ctrl+8"}, "Moves the caret to bookmark 8", ""},
    {kBookmarkGo0 + 9, "bookmark.go9", "Go to Bookmark &9", {"Ctrl+9"}, "Moves the caret to bookmark 9", ""},

    // Outlining
    {kOutlineToggleBlock, "outline.toggleBlock", "T&oggle Block\tAlt+C", {"Alt+C"},
     "Collapses or expands the block around the caret", "outline-toggle"},
    {kOutlineExpandAll, "outline.expandAll", "&Expand All\tCtrl+Num '+'", {"Ctrl+Num++"}, "Expands all blocks",
     "outline-expand"},
    {kOutlineCollapseAll, "outline.collapseAll", "&Collapse All\tCtrl+Num '-'", {"Ctrl+Num+-"}, "Collapses all blocks",
     "outline-collapse"},
};
// clang-format on

}  // namespace

std::span<const Command> ScriptCommands() {
  return kCommands;
}

}  // namespace quill
