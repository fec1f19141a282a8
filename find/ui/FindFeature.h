#pragma once
#include <QObject>
#include <QPointer>
#include <optional>

#include "find/ui/FindHost.h"
#include "find/ui/SearchMarks.h"
#include "shell/ui/Feature.h"
#include "text/search/Search.h"

class QMainWindow;

namespace quill {

class ActiveView;
class CEditReplaceDlg;
class CFindTextDlg;
class CGrep;
class CQuillView;
class FileOperations;
class StatusBar;
struct AppServices;

/// Finding, as the main window offers it: opens the dialogs on the active view, repeats searches, and
/// shows in the status bar how many matches there are.
class FindFeature : public QObject, public Feature {
  Q_OBJECT

 public:
  struct Needs {
    AppServices& services;
    QMainWindow& window;
    ActiveView& active;
    FileOperations& files;
    StatusBar& statusBar;
  };
  explicit FindFeature(const Needs& needs);

  void RegisterCommands(CommandRouter& router) override;
  void ActiveViewChanged() override;

  void OpenFind();
  void OpenReplace();
  void OpenFindInFiles();
  /// Repeats the view's last search, or the last one of any view, in a direction. Asks for a text when
  /// there is none.
  void Repeat(CQuillView& view, bool upwards);
  /// Finds the next place of the selected text, or of the word at the caret.
  void FindSelectedWord(CQuillView& view);

 private:
  FindHost HostOf();
  void ShowMatchCount();
  void HideMarks();
  /// Shows what a search has found, or tells that it is nowhere; returns whether it was found.
  bool ShowFound(CQuillView& view, const SearchRequest& search, std::optional<TextPosition> found);
  void OpenResult(const std::string& path, int64_t line);
  SearchRequest StoredSearch() const;

  Needs m;
  CFindTextDlg* m_find = nullptr;
  CEditReplaceDlg* m_replace = nullptr;
  CGrep* m_grep = nullptr;
  ViewMarks m_marksOfViews;
  QPointer<SearchMarks> m_marks;  ///< of the active view
};

}  // namespace quill
