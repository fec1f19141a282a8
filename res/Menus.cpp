#include "res/Menus.h"

#include <algorithm>

#include "res/Commands.h"

namespace quill {
namespace {

using enum CommandId;

constexpr MenuEntry kLine{};

constexpr MenuEntry Item(CommandId id) {
  return {MenuEntry::Kind::kCommands, id, id};
}
constexpr MenuEntry Items(CommandId first, CommandId last) {
  return {MenuEntry::Kind::kCommands, first, last};
}
constexpr MenuEntry Series(CommandId first, CommandId last, StringId emptyText = {}) {
  return {MenuEntry::Kind::kSeries, first, last, nullptr, emptyText};
}
constexpr MenuEntry Sub(const Menu& menu) {
  return {MenuEntry::Kind::kSubmenu, kNone, kNone, &menu};
}

constexpr MenuEntry kLineEndEntries[] = {Items(kFileLineEndDos, kFileLineEndMac)};
constexpr Menu kLineEndMenu{"Line &Ends", kLineEndEntries};

constexpr MenuEntry kFileEntries[] = {
    Item(kFileNew),
    Item(kFileOpen),
    Item(kFileReload),
    Item(kFileRecover),
    kLine,
    Item(kFileClose),
    Item(kFileCloseAll),
    kLine,
    Item(kFileSave),
    Item(kFileSaveAs),
    Item(kFileSaveAll),
    Item(kFileReadOnly),
    Sub(kLineEndMenu),
    kLine,
    Item(kFileCopyPath),
    Item(kFileOpenFolder),
    kLine,
    Item(kFilePageSetup),
    Item(kFilePrint),
    Item(kFilePrintToPdf),
    kLine,
    Series(kRecentFileFirst, kRecentFileLast, StringId::kNoRecentFiles),
    kLine,
    Item(kFileExit),
};

constexpr MenuEntry kSetBookmarkEntries[] = {Items(kBookmarkSet0, kBookmarkSet9)};
constexpr Menu kSetBookmarkMenu{"&Set Numbered Bookmark", kSetBookmarkEntries};
constexpr MenuEntry kGoBookmarkEntries[] = {Items(kBookmarkGo0, kBookmarkGo9)};
constexpr Menu kGoBookmarkMenu{"&Go to Numbered Bookmark", kGoBookmarkEntries};

constexpr MenuEntry kBookmarkEntries[] = {
    Items(kBookmarkToggle, kBookmarkClear),
    kLine,
    Sub(kSetBookmarkMenu),
    Sub(kGoBookmarkMenu),
    Item(kBookmarkRemoveNumbers),
    Item(kBookmarkClearNumbers),
};
constexpr Menu kBookmarkMenu{"Bookmarks", kBookmarkEntries};

constexpr MenuEntry kOutliningEntries[] = {Items(kOutlineToggleBlock, kOutlineCollapseAll)};
constexpr Menu kOutliningMenu{"Outli&ning", kOutliningEntries};

constexpr MenuEntry kLineEntries[] = {
    Items(kEditDeleteLine, kEditMoveLineDown), kLine, Items(kEditIndent, kEditUnindent), kLine,
    Items(kEditUpperCase, kEditLowerCase),
};
constexpr Menu kLineMenu{"&Lines and Case", kLineEntries};

constexpr MenuEntry kTemplateEntries[] = {Series(kTemplateFirst, kTemplateLast, StringId::kNoTemplates)};
constexpr Menu kTemplateMenu{"&Code Templates", kTemplateEntries};

constexpr MenuEntry kInsertEntries[] = {
    Item(kToolAddComment),
    Item(kToolInsertImage),
    Item(kToolInsertVariable),
    Sub(kTemplateMenu),
};
constexpr Menu kInsertMenu{"&Insert", kInsertEntries};

constexpr MenuEntry kScriptEntries[] = {
    Item(kIntelCompleteWord), Item(kIntelShowHint), kLine, Item(kIntelGoToDefinition),
    Item(kIntelFindName),     Item(kIntelGoBack),   kLine, Item(kIntelRefreshCodeJumper),
};
constexpr Menu kScriptMenu{"&Script", kScriptEntries};

constexpr MenuEntry kEditEntries[] = {
    Items(kEditUndo, kEditRedo),
    kLine,
    Items(kEditCut, kEditSelectAll),
    kLine,
    Items(kEditFind, kEditFindInFiles),
    kLine,
    Item(kEditGoToLine),
    Sub(kBookmarkMenu),
    Sub(kOutliningMenu),
    kLine,
    Sub(kLineMenu),
    Items(kEditIndentAll, kEditInsertDate),
    Sub(kInsertMenu),
    Sub(kScriptMenu),
    kLine,
    Item(kEditOverwrite),
    Item(kEditColumnSelection),
};

constexpr MenuEntry kToolBarEntries[] = {Items(kViewToolBarFile, kViewToolBarBookmark)};
constexpr Menu kToolBarMenu{"Tool&bars", kToolBarEntries};

constexpr MenuEntry kViewEntries[] = {
    Sub(kToolBarMenu),
    Item(kViewStatusBar),
    kLine,
    Items(kViewCodeJumper, kViewWatch),
    Item(kToolToDoList),
    kLine,
    Item(kViewZoomIn),
    Item(kViewZoomOut),
    Item(kViewZoomReset),
    kLine,
    Item(kViewFullScreen),
};

constexpr MenuEntry kProjectEntries[] = {
    Item(kProjectNew),
    Item(kProjectOpen),
    Item(kProjectSave),
    Item(kProjectSaveAs),
    Item(kProjectClose),
    kLine,
    Item(kProjectAddFile),
    Item(kProjectRemoveFile),
    kLine,
    Series(kRecentProjectFirst, kRecentProjectLast, StringId::kNoRecentProjects),
};

constexpr MenuEntry kDebugEntries[] = {
    Items(kDebugTestRun, kDebugSyntaxCheck),
    kLine,
    Items(kDebugBreak, kDebugGoToPosition),
    kLine,
    Items(kDebugToggleBreakpoint, kDebugIgnoreBreakpoints),
    kLine,
    Items(kDebugExecute, kDebugReloadFx),
    kLine,
    Items(kDebugAddWatch, kDebugDeleteAllWatches),
    kLine,
    Items(kDebugLevelEditor, kDebugModelEditor),
};

constexpr MenuEntry kOptionsEntries[] = {
    Items(kOptionsHighlightLine, kOptionsFolding),
    kLine,
    Item(kOptionsFont),
    Item(kOptionsKeyboard),
    kLine,
    Item(kOptionsDialog),
};

constexpr MenuEntry kPluginEntries[] = {Item(kPluginPlaceholder), Series(kPluginFirst, kPluginLast)};

constexpr MenuEntry kWindowEntries[] = {
    Item(kWindowNew),
    kLine,
    Item(kWindowTabbed),
    Item(kWindowCascade),
    Item(kWindowTileHorizontally),
    Item(kWindowTileVertically),
    kLine,
    Item(kWindowNext),
    Item(kWindowPrevious),
    kLine,
    Item(kWindowCloseOthers),
    Item(kWindowCloseToRight),
    Item(kWindowCloseAll),
    kLine,
    Series(kWindowListFirst, kWindowListLast),
};

constexpr MenuEntry kHelpEntries[] = {Item(kHelpManual), Item(kHelpSample), kLine, Item(kHelpAbout)};

// "Plugins" carries no mnemonic: the loader of plug-ins looks the menu up by this very text.
constexpr Menu kMenuBar[] = {
    {"&File", kFileEntries},       {"&Edit", kEditEntries},     {"&View", kViewEntries},
    {"&Project", kProjectEntries}, {"&Debug", kDebugEntries},   {"&Options", kOptionsEntries},
    {"Plugins", kPluginEntries},   {"&Window", kWindowEntries}, {"&Help", kHelpEntries},
};

constexpr CommandId kFileButtons[] = {
    kFileNew, kFileOpen, kFileSave, kFileSaveAll, kNone, kFilePrint, kNone, kFileReadOnly, kFileClose,
};
constexpr CommandId kEditButtons[] = {
    kEditUndo,          kEditRedo, kNone,       kEditCut,      kEditCopy,
    kEditPaste,         kNone,     kEditFind,   kEditFindNext, kEditReplace,
    kEditFindInFiles,   kNone,     kEditIndent, kEditUnindent, kEditCommentLine,
    kEditUncommentLine,
};
constexpr CommandId kDebugButtons[] = {
    kDebugTestRun,
    kDebugBreak,
    kDebugStop,
    kNone,
    kDebugStepOver,
    kDebugGoToPosition,
    kNone,
    kDebugToggleBreakpoint,
    kDebugIgnoreBreakpoints,
    kNone,
    kDebugSyntaxCheck,
    kNone,
    kDebugLevelEditor,
    kDebugModelEditor,
};
constexpr CommandId kBookmarkButtons[] = {
    kBookmarkToggle,
    kBookmarkPrevious,
    kBookmarkNext,
    kBookmarkClear,
};

constexpr ToolBar kToolBars[] = {
    {"File", kFileButtons},
    {"Edit", kEditButtons},
    {"Debug", kDebugButtons},
    {"Bookmark", kBookmarkButtons},
};

/// Appends the path below `menu` to the command; false when the menu does not hold it.
bool FindIn(const Menu& menu, CommandId id, std::string& path) {
  const size_t before = path.size();
  if (!path.empty()) path += " > ";
  path += PlainLabel(menu.text);
  for (const MenuEntry& entry : menu.entries) {
    if (entry.kind == MenuEntry::Kind::kSubmenu ? FindIn(*entry.submenu, id, path)
                                                : InSeries(id, entry.first, entry.last))
      return true;
  }
  path.resize(before);
  return false;
}

}  // namespace

std::span<const Menu> MenuBar() {
  return kMenuBar;
}

std::span<const ToolBar> ToolBars() {
  return kToolBars;
}

std::string MenuPath(CommandId id) {
  std::string path;
  if (id == kNone) return path;
  for (const Menu& menu : kMenuBar) {
    if (FindIn(menu, id, path)) break;
  }
  return path;
}

const ToolBar* ToolBarOf(CommandId id) {
  if (id == kNone) return nullptr;
  for (const ToolBar& bar : kToolBars) {
    if (std::find(bar.buttons.begin(), bar.buttons.end(), id) != bar.buttons.end()) return &bar;
  }
  return nullptr;
}

int ToolBarImageIndex(CommandId id) {
  if (id == kNone) return -1;
  int index = 0;
  for (const ToolBar& bar : kToolBars) {
    for (CommandId button : bar.buttons) {
      if (button == id) return index;
      if (button != kNone) ++index;
    }
  }
  return -1;
}

}  // namespace quill
