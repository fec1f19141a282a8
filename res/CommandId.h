#pragma once
#include <cstdint>

namespace quill {

/// Number of a command: what menus, toolbars, shortcut keys and the user's key bindings refer to.
/// A number, once given, stays. Numbers of a series (bookmarks, recent lists, plug-ins) are consecutive.
enum class CommandId : uint16_t {
  kNone = 0,

  // The Plugins menu: the placeholder while nothing is loaded, then one number a library.
  kPluginPlaceholder = 221,
  kPluginFirst = 222,
  kPluginLast = 231,

  // File
  kFileNew = 1000,
  kFileOpen,
  kFileReload,
  kFileClose,
  kFileCloseAll,
  kFileSave,
  kFileSaveAs,
  kFileSaveAll,
  kFileReadOnly,
  kFilePageSetup,
  kFilePrint,
  kFilePrintToPdf,
  kFileExit,
  kFileCopyPath,
  kFileOpenFolder,
  kFileRecover,
  kFileLineEndDos,
  kFileLineEndUnix,
  kFileLineEndMac,
  kRecentFileFirst = 1050,
  kRecentFileLast = 1053,

  // Edit
  kEditUndo = 1100,
  kEditRedo,
  kEditCut,
  kEditCopy,
  kEditPaste,
  kEditDelete,
  kEditSelectAll,
  kEditDeleteLine,
  kEditDuplicateLine,
  kEditMoveLineUp,
  kEditMoveLineDown,
  kEditUpperCase,
  kEditLowerCase,
  kEditIndent,
  kEditUnindent,
  kEditIndentAll,
  kEditCommentLine,
  kEditUncommentLine,
  kEditInsertDate,
  kEditOverwrite,
  kEditGoToLine,
  kEditFind,
  kEditFindNext,
  kEditFindPrevious,
  kEditFindSelectedWord,
  kEditReplace,
  kEditFindInFiles,
  kEditColumnSelection,

  // Script tools and script intelligence
  kToolAddComment = 1150,
  kToolInsertImage,
  kToolInsertVariable,
  kToolToDoList,
  kIntelCompleteWord,
  kIntelShowHint,
  kIntelGoToDefinition,
  kIntelGoBack,
  kIntelRefreshCodeJumper,
  kIntelFindName,
  kTemplateFirst = 1170,
  kTemplateLast = 1199,

  // Bookmarks and outlining
  kBookmarkToggle = 1200,
  kBookmarkNext,
  kBookmarkPrevious,
  kBookmarkClear,
  kBookmarkRemoveNumbers,
  kBookmarkClearNumbers,
  kBookmarkSet0 = 1210,
  kBookmarkSet9 = 1219,
  kBookmarkGo0 = 1220,
  kBookmarkGo9 = 1229,
  kOutlineToggleBlock = 1240,
  kOutlineExpandAll,
  kOutlineCollapseAll,

  // View
  kViewToolBarFile = 1300,
  kViewToolBarEdit,
  kViewToolBarDebug,
  kViewToolBarBookmark,
  kViewStatusBar,
  kViewCodeJumper,
  kViewCommandHelp,
  kViewProjectBar,
  kViewOutput,
  kViewWatch,
  kViewZoomIn,
  kViewZoomOut,
  kViewZoomReset,
  kViewFullScreen,

  // Project
  kProjectNew = 1400,
  kProjectOpen,
  kProjectSave,
  kProjectSaveAs,
  kProjectClose,
  kProjectAddFile,
  kProjectRemoveFile,
  kRecentProjectFirst = 1450,
  kRecentProjectLast = 1453,

  // Debug
  kDebugTestRun = 1500,
  kDebugSetCurrentFile,
  kDebugSyntaxCheck,
  kDebugBreak,
  kDebugStop,
  kDebugStepOver,
  kDebugGoToPosition,
  kDebugToggleBreakpoint,
  kDebugIgnoreBreakpoints,
  kDebugExecute,
  kDebugReloadFx,
  kDebugAddWatch,
  kDebugEditWatch,
  kDebugDeleteWatch,
  kDebugDeleteAllWatches,
  kDebugLevelEditor,
  kDebugModelEditor,

  // Options
  kOptionsHighlightLine = 1600,
  kOptionsIndentGuide,
  kOptionsLineNumbers,
  kOptionsFolding,
  kOptionsFont,
  kOptionsKeyboard,
  kOptionsDialog,

  // Window
  kWindowNew = 1700,
  kWindowCascade,
  kWindowTileHorizontally,
  kWindowTileVertically,
  kWindowTabbed,
  kWindowNext,
  kWindowPrevious,
  kWindowCloseAll,
  kWindowCloseOthers,
  kWindowCloseToRight,
  kWindowListFirst = 1750,
  kWindowListLast = 1799,

  // Help
  kHelpManual = 1800,
  kHelpAbout,
  kHelpSample,
};

/// The command `offset` numbers after the first of a series.
constexpr CommandId operator+(CommandId first, int offset) {
  return static_cast<CommandId>(static_cast<int>(first) + offset);
}

/// How far a command is into the series that begins with `first`.
constexpr int operator-(CommandId id, CommandId first) {
  return static_cast<int>(id) - static_cast<int>(first);
}

/// True for a command of the series first..last.
constexpr bool InSeries(CommandId id, CommandId first, CommandId last) {
  return first <= id && id <= last;
}

}  // namespace quill
