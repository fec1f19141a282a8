#pragma once
#include <QDialog>
#include <QList>
#include <QPointer>
#include <optional>
#include <string>

#include "find/ui/FindHost.h"
#include "res/Strings.h"
#include "settings/Settings.h"
#include "text/buffer/TextPosition.h"
#include "text/search/Search.h"

class QBoxLayout;
class QCheckBox;
class QGridLayout;
class QPushButton;

namespace quill {

class CCrystalTextView;
class HistoryCombo;

/// Moves a window aside when it covers what is selected in the view.
void KeepSelectionClear(QWidget& window, const CCrystalTextView& view);

/// A place where the user was in a view when a dialog looked last.
class NotedPlace {
 public:
  void Note(const CCrystalTextView& view);
  /// He is still there: neither caret nor selection has changed since, in this view.
  bool IsIn(const CCrystalTextView& view) const;

 private:
  QPointer<const CCrystalTextView> m_view;
  TextPosition m_caret;
  TextRange m_selection;
};

/// What the find and the replace dialog have in common: the text to find and how to compare it, the find
/// button, and the view that they act on.
class SearchDialog : public QDialog {
  Q_OBJECT

 public:
  /// Fills the controls from the active view, or from what was stored, and shows the dialog ready for
  /// typing. A dialog that is open in this view already keeps what was typed into it, but for a text that
  /// was selected.
  void Present();
  /// Another view is the active one, or it can be written now, or not any more.
  virtual void UpdateButtons();
  /// Gives the keyboard back to the text.
  void done(int result) override;

 Q_SIGNALS:
  /// The text to find became empty.
  void SearchEmptied();

 protected:
  /// Where the dialog keeps what it was used for.
  struct Stored {
    ProfileInteger matchCase;
    ProfileInteger wholeWord;
    ProfileText what;
  };

  SearchDialog(FindHost host, StringId title, const Stored& stored, QWidget* parent);

  /// The dialog is about to be shown for this view; null for none. When it is open already, it is asked
  /// for once more.
  virtual void BeginIn(CCrystalEditView* view, const SearchRequest& search) = 0;
  virtual void FindNext() = 0;
  /// Stores values beyond those of all search dialogs.
  virtual void SaveMore() {}

  CCrystalEditView* ActiveView() const { return m_host.activeView(); }
  const AppProfile& Profile() const { return m_host.profile; }
  ViewMarks& Marks() const { return m_host.marks; }
  /// Text and comparison as the controls say.
  virtual SearchRequest Request() const;
  /// The text can be searched for.
  bool CanSearch() const;
  void Save();
  /// The view selected what was searched for: marks the matches, remembers the search, shows the place.
  void ShowFound(CCrystalEditView& view, const SearchRequest& search);
  void TellNotFound(const SearchRequest& search);

  /// The user came back to the dialog; `ActiveView` may have changed meanwhile, and what it selects.
  virtual void Activated() { UpdateButtons(); }

  QGridLayout& Fields() { return *m_fields; }
  QBoxLayout& OptionRow() { return *m_optionRow; }
  /// Above the close button.
  QPushButton* AddButton(StringId text);
  /// Tab goes through these and the common controls from top to bottom, the buttons last.
  void OrderTabs(const QList<QWidget*>& fields, const QList<QWidget*>& options,
                 const QList<QWidget*>& buttons);

  bool event(QEvent* event) override;

 private:
  void Build();
  SearchRequest RequestToBeginWith(CCrystalEditView* view) const;

  FindHost m_host;
  Stored m_stored;
  HistoryCombo* m_what;
  QCheckBox* m_matchCase;
  QCheckBox* m_wholeWord;
  QGridLayout* m_fields;
  QBoxLayout* m_optionRow;
  QBoxLayout* m_buttons;
  QPushButton* m_find;
  QPushButton* m_close;
  QPointer<CCrystalEditView> m_shownFor;
};

}  // namespace quill
