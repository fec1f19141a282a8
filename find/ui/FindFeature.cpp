#include "find/ui/FindFeature.h"

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
#include "shell/ui/FileOperations.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/StatusPanes.h"
#include "shell/ui/ViewHandlers.h"
#include "text/search/FindOpening.h"
#include "widgets/CodePageText.h"

namespace quill {

using enum CommandId;

FindFeature::FindFeature(const Needs& needs) : m(needs) {}

void FindFeature::RegisterCommands(CommandRouter& router) {
  const ViewHandlers views(router, m.active);
  views.Add(kEditFind, [this](CQuillView&) { OpenFind(); });
  views.Add(kEditFindNext, [this](CQuillView& view) { Repeat(view, false); });
  views.Add(kEditFindPrevious, [this](CQuillView& view) { Repeat(view, true); });
  views.Add(kEditFindSelectedWord, [this](CQuillView& view) { FindSelectedWord(view); });
  views.Add(kEditReplace, [this](CQuillView&) { OpenReplace(); });
  router.Register(kEditFindInFiles, [this] { OpenFindInFiles(); });
}

FindHost FindFeature::HostOf() {
  return {[&active = m.active]() -> CCrystalEditView* { return active.View(); },
          [&prompts = m.services.prompts](const QString& text) { prompts.Tell(ToBytes(text)); },
          m.services.Profile(), m_marksOfViews};
}

// The active view

void FindFeature::ActiveViewChanged() {
  if (m_marks != nullptr) disconnect(m_marks, nullptr, this, nullptr);
  m_marks = m.active.View() == nullptr ? nullptr : &m_marksOfViews.Of(*m.active.View());
  if (m_marks != nullptr) {
    connect(m_marks, &SearchMarks::StatusChanged, this, &FindFeature::ShowMatchCount);
  }
  ShowMatchCount();
  if (m_find != nullptr) m_find->UpdateButtons();
  if (m_replace != nullptr) m_replace->UpdateButtons();
}

void FindFeature::ShowMatchCount() {
  m.statusBar.ShowMatches(m_marks == nullptr ? QString() : m_marks->StatusText());
}

void FindFeature::HideMarks() {
  if (m_marks != nullptr) m_marks->Hide();
}

// Dialogs

void FindFeature::OpenFind() {
  if (m_find == nullptr) {
    m_find = new CFindTextDlg(HostOf(), &m.window);
    connect(m_find, &SearchDialog::SearchEmptied, this, &FindFeature::HideMarks);
  }
  if (m_replace != nullptr) m_replace->close();
  m_find->Present();
}

void FindFeature::OpenReplace() {
  if (m_replace == nullptr) {
    m_replace = new CEditReplaceDlg(HostOf(), &m.window);
    connect(m_replace, &SearchDialog::SearchEmptied, this, &FindFeature::HideMarks);
  }
  if (m_find != nullptr) m_find->close();
  m_replace->Present();
}

void FindFeature::OpenFindInFiles() {
  if (m_grep == nullptr) {
    m_grep = new CGrep(
        {m.services.Profile(), [this](const std::string& path, int64_t line) { OpenResult(path, line); },
         [this](const std::string& from) {
           return m.services.prompts.ChooseFolder(StringId::kBrowseForDirectory, from);
         }},
        &m.window);
  }
  std::optional<std::string> selected;
  std::string folder;
  if (CQuillView* view = m.active.View(); view != nullptr && view->Buffer() != nullptr) {
    selected = SelectedWithinLine(*view->Buffer(), view->Selection());
    folder = view->Folder();
  }
  m_grep->Open(folder, selected);
}

/// Shows the line beside the dialog, which stays open.
void FindFeature::OpenResult(const std::string& path, int64_t line) {
  constexpr int64_t kLastLine = std::numeric_limits<int32_t>::max();
  if (m.files.Open(path, static_cast<int32_t>(std::clamp<int64_t>(line, 0, kLastLine))) == nullptr) {
    return;
  }
  CQuillView* view = m.active.View();
  m.window.activateWindow();
  view->setFocus();
  const QRect caret = view->CaretRect().translated(view->viewport()->mapToGlobal(QPoint()));
  if (!m_grep->frameGeometry().intersects(caret)) return;
  // As far up as needed for the line to be seen above the dialog.
  const int rowsAbove =
      (m_grep->frameGeometry().top() - view->viewport()->mapToGlobal(QPoint()).y()) / view->LineHeight() / 2;
  if (rowsAbove > 0) view->ScrollToLine(std::max(0, view->CaretPos().line - rowsAbove));
}

// Repeating

SearchRequest FindFeature::StoredSearch() const {
  const AppProfile profile = m.services.Profile();
  SearchRequest search{ReadText(profile, profile::kFindWhat), 0};
  if (ReadInt(profile, profile::kFindMatchCase) != 0) search.flags |= search_flag::kMatchCase;
  if (ReadInt(profile, profile::kFindWholeWord) != 0) search.flags |= search_flag::kWholeWord;
  return search;
}

void FindFeature::Repeat(CQuillView& view, bool upwards) {
  SearchMarks& marks = m_marksOfViews.Of(view);
  SearchRequest search = marks.LastSearch() ? *marks.LastSearch() : StoredSearch();
  if (search.what.empty()) return OpenFind();
  const SearchRequest remembered = search;  // with the direction that was chosen in the dialog
  search.flags &= ~search_flag::kUpwards;
  const TextRange selection = view.Selection();
  TextPosition found;
  const bool isThere =
      upwards
          ? TextSearch(search.what, search.flags).FindPrevious(*view.Buffer(), selection.start, true, found)
          : FindInText(*view.Buffer(), search.what, selection.end, search.flags, true, found);
  if (ShowFound(view, search, isThere ? std::optional(found) : std::nullopt)) {
    marks.SetLastSearch(remembered);
  }
}

void FindFeature::FindSelectedWord(CQuillView& view) {
  TextRange range = view.Selection();
  if (range.IsEmpty()) range = WordAround(*view.Buffer(), view.CaretPos());
  const auto what = SelectedWithinLine(*view.Buffer(), range);
  if (!what) return QApplication::beep();
  TextPosition found;
  const bool isThere = FindInText(*view.Buffer(), *what, range.end, 0, true, found);
  if (ShowFound(view, {*what, 0}, isThere ? std::optional(found) : std::nullopt)) {
    m_marksOfViews.Of(view).SetLastSearch({*what, 0});
  }
}

bool FindFeature::ShowFound(CQuillView& view, const SearchRequest& search,
                            std::optional<TextPosition> found) {
  if (!found) {
    m_marksOfViews.Of(view).Hide();
    QApplication::beep();
    m.statusBar.Tell(UiText(StringId::kCannotFind, {FromCodePage(search.what)}));
    return false;
  }
  view.SelectFound(*found, static_cast<int32_t>(search.what.size()));
  m_marksOfViews.Of(view).Show(search);
  for (QWidget* dialog : {static_cast<QWidget*>(m_find), static_cast<QWidget*>(m_replace)}) {
    if (dialog != nullptr) KeepSelectionClear(*dialog, view);
  }
  return true;
}

}  // namespace quill
