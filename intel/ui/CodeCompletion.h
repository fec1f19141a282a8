#pragma once
#include <QWidget>
#include <functional>
#include <optional>

#include "intel/ui/CompletionModel.h"
#include "intel/ui/ListAnnouncer.h"
#include "intel/writing/PopupPlace.h"

class QLabel;
class QListView;

namespace quill {

/// The completion list: names below the caret, and beside them what the selected one is. It has no focus
/// and sees no key; who owns it tells it what to do.
class CCodeCompletion : public QWidget {
  Q_OBJECT

 public:
  using DetailSource = CompletionModel::DetailSource;

  explicit CCodeCompletion(QWidget* owner);

  /// Shows a list that is not empty. `word` is the word begun on the screen, as high as its line; `font`
  /// is that of the script.
  void Open(CompletionList list, DetailSource detail, const QFont& font, const QRect& word);
  /// The first row is selected; an empty list hides the window.
  void Narrow(std::string_view begun);
  void MoveTo(const QRect& word);

  enum class Move { kUp, kDown, kPageUp, kPageDown };
  void MoveSelection(Move move);
  /// Whether the selected row counts as chosen; it is drawn so.
  void SetChosen(bool chosen);
  /// Nothing while the window is hidden.
  std::optional<CompletionEntry> Selected() const;
  /// Whether a name begins with the word begun.
  bool HasBeginnings() const { return m_model.List() != nullptr && m_model.List()->HasBeginnings(); }
  /// Nothing unless the list is down to one name.
  std::optional<CompletionEntry> OnlyEntry() const;

 Q_SIGNALS:
  /// Another entry is selected.
  void EntryChanged();
  void Clicked();
  void DoubleClicked();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void ShowDetail();
  void SelectRow(int row);
  /// Gives list and panel the room that they need, beside the word.
  void Arrange();
  int WidthOfNames() const;

  CompletionModel m_model;
  QListView* m_view;
  QWidget* m_panel;
  QLabel* m_heading;
  QLabel* m_text;
  ListAnnouncer m_announcer;
  QRect m_word;
  PopupSide m_side = PopupSide::kBelow;  ///< of the word; kept until the list is opened anew
};

}  // namespace quill
