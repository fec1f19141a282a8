#include "find/ui/FindWindows.h"

#include <QApplication>
#include <QMainWindow>
#include <algorithm>
#include <filesystem>
#include <limits>

#include "find/ui/EditReplaceDlg.h"
#include "find/ui/FindTextDlg.h"
#include "find/ui/Grep.h"
#include "res/ui/UiText.h"
#include "settings/Settings.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/ShellParts.h"
#include "shell/ui/StatusPanes.h"
#include "shell/ui/Workspace.h"
#include "text/search/FindOpening.h"
#include "widgets/CodePageText.h"

namespace quill {
FindWindows::FindWindows(const ShellParts& parts) : QObject(&parts.window), m_parts(parts) {
  connect(&parts.workspace, &Workspace::ActiveFrameChanged, this, &FindWindows::Follow);
}

FindHost FindWindows::HostOf() {
  return {[&workspace = m_parts.workspace]() -> CCrystalEditView* { return workspace.ActiveView(); },
          [&prompts = m_parts.services.prompts](const QString& text) { prompts.Tell(ToBytes(text)); },
          m_parts.services.Profile()};
}

// The active view

void FindWindows::Follow(CChildFrame* frame) {
  if (m_marks != nullptr) disconnect(m_marks, nullptr, this, nullptr);
  m_marks = frame == nullptr ? nullptr : &SearchMarks::Of(frame->View());
  if (m_marks != nullptr) {
    connect(m_marks, &SearchMarks::StatusChanged, this, &FindWindows::ShowMatchCount);
  }
  ShowMatchCount();
  if (m_find != nullptr) m_find->UpdateButtons();
  if (m_replace != nullptr) m_replace->UpdateButtons();
}

void FindWindows::ShowMatchCount() {
  m_parts.statusBar.ShowMatches(m_marks == nullptr ? QString() : m_marks->StatusText());
}

void FindWindows::HideMarks() {
  if (m_marks != nullptr) m_marks->Hide();
}

// Dialogs

void FindWindows::OpenFind() {
  if (m_find == nullptr) {
    m_find = new CFindTextDlg(HostOf(), &m_parts.window);
    connect(m_find, &SearchDialog::SearchEmptied, this, &FindWindows::HideMarks);
  }
  if (m_replace != nullptr) m_replace->close();
  m_find->Present();
}

void FindWindows::OpenReplace() {
  if (m_replace == nullptr) {
    m_replace = new CEditReplaceDlg(HostOf(), &m_parts.window);
    connect(m_replace, &SearchDialog::SearchEmptied, this, &FindWindows::HideMarks);
  }
  if (m_find != nullptr) m_find->close();
  m_replace->Present();
}

void FindWindows::OpenFindInFiles() {
  if (m_grep == nullptr) {
    m_grep = new CGrep({m_parts.services.Profile(),
                        [this](const std::string& path, int64_t line) { OpenResult(path, line); }},
                       &m_parts.window);
  }
  std::optional<std::string> selected;
  std::string folder;
  if (CQuillView* view = m_parts.workspace.ActiveView(); view != nullptr && view->Buffer() != nullptr) {
    selected = SelectedWithinLine(*view->Buffer(), view->Selection());
    folder = view->Folder();
  }
  m_grep->Open(folder, selected);
}

/// Shows the line beside the dialog, which stays open.
void FindWindows::OpenResult(const std::string& path, int64_t line) {
  constexpr int64_t kLastLine = std::numeric_limits<int32_t>::max();
  if (m_parts.files.Open(path, static_cast<int32_t>(std::clamp<int64_t>(line, 0, kLastLine))) == nullptr) {
    return;
  }
  CQuillView* view = m_parts.workspace.ActiveView();
  m_parts.window.activateWindow();
  view->setFocus();
  const QRect caret = view->CaretRect().translated(view->viewport()->mapToGlobal(QPoint()));
  if (!m_grep->frameGeometry().intersects(caret)) return;
  // As far up as needed for the line to be seen above the dialog.
  const int rowsAbove =
      (m_grep->frameGeometry().top() - view->viewport()->mapToGlobal(QPoint()).y()) / view->LineHeight() / 2;
  if (rowsAbove > 0) view->ScrollToLine(std::max(0, view->CaretPos().line - rowsAbove));
}

// Repeating

SearchRequest FindWindows::StoredSearch() const {
  const AppProfile profile = m_parts.services.Profile();
  SearchRequest search{ReadText(profile, profile::kFindWhat), 0};
  if (ReadInt(profile, profile::kFindMatchCase) != 0) search.flags |= search_flag::kMatchCase;
  if (ReadInt(profile, profile::kFindWholeWord) != 0) search.flags |= search_flag::kWholeWord;
  return search;
}

void FindWindows::Repeat(CQuillView& view, bool upwards) {
  SearchRequest search = view.LastSearch() ? *view.LastSearch() : StoredSearch();
  if (search.what.empty()) return OpenFind();
  const SearchRequest remembered = search;  // with the direction that was chosen in the dialog
  search.flags &= ~search_flag::kUpwards;
  if (upwards) search.flags |= search_flag::kUpwards;
  if (FindFrom(view, view.Selection().end, search)) view.SetLastSearch(remembered);
}

void FindWindows::FindSelectedWord(CQuillView& view) {
  TextRange range = view.Selection();
  if (range.IsEmpty()) range = WordAround(*view.Buffer(), view.CaretPos());
  const auto what = SelectedWithinLine(*view.Buffer(), range);
  if (!what) return QApplication::beep();
  if (FindFrom(view, range.end, {*what, 0})) view.SetLastSearch({*what, 0});
}

bool FindWindows::FindFrom(CQuillView& view, TextPosition start, const SearchRequest& search) {
  TextPosition found;
  if (!FindInText(*view.Buffer(), search.what, start, search.flags, true, found)) {
    SearchMarks::Of(view).Hide();
    QApplication::beep();
    m_parts.statusBar.Tell(UiText(StringId::kCannotFind, {FromCodePage(search.what)}));
    return false;
  }
  view.SelectFound(found, static_cast<int32_t>(search.what.size()));
  SearchMarks::Of(view).Show(search);
  for (QWidget* dialog : {static_cast<QWidget*>(m_find), static_cast<QWidget*>(m_replace)}) {
    if (dialog != nullptr) KeepSelectionClear(*dialog, view);
  }
  return true;
}

}  // namespace quill
