#pragma once
#include <QObject>
#include <QPointer>

#include "find/ui/FindHost.h"
#include "find/ui/SearchMarks.h"
#include "text/search/Search.h"

namespace quill {

class CChildFrame;
class CEditReplaceDlg;
class CFindTextDlg;
class CGrep;
class CQuillView;
struct ShellParts;

/// Finding, as the main window offers it: opens the dialogs on the active view, repeats searches, and
/// shows in the status bar how many matches there are.
class FindWindows : public QObject {
  Q_OBJECT

 public:
  explicit FindWindows(const ShellParts& parts);

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
  void Follow(CChildFrame* frame);
  void ShowMatchCount();
  void HideMarks();
  bool FindFrom(CQuillView& view, TextPosition start, const SearchRequest& search);
  void OpenResult(const std::string& path, int64_t line);
  SearchRequest StoredSearch() const;

  const ShellParts& m_parts;
  CFindTextDlg* m_find = nullptr;
  CEditReplaceDlg* m_replace = nullptr;
  CGrep* m_grep = nullptr;
  QPointer<SearchMarks> m_marks;  ///< of the active view
};

}  // namespace quill
