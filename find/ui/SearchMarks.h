#pragma once
#include <QBasicTimer>
#include <QObject>
#include <QPointer>
#include <QString>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "text/search/Search.h"
#include "text/search/SearchMatches.h"
#include "text/ui/CrystalTextView.h"
#include "text/ui/LineDecoration.h"
#include "text/ui/TextWatch.h"

namespace quill {

/// Marks every match of a search in a view, and counts them while the program is idle. Escape in the view
/// takes the marks away. Knows the last search of its view, too.
class SearchMarks : public QObject, private LineDecoration, private InputTaker {
  Q_OBJECT

 public:
  /// Goes with the view at the latest.
  explicit SearchMarks(CCrystalTextView& view);
  ~SearchMarks() override;
  /// The view is no longer one: what is left is to let these go, too.
  void ForgetView() { m_view = nullptr; }

  /// The last search that was made in the view, for repeating it; nothing when there was none.
  const std::optional<SearchRequest>& LastSearch() const { return m_lastSearch; }
  void SetLastSearch(SearchRequest search) { m_lastSearch = std::move(search); }

  void Show(const SearchRequest& search);
  void Hide();
  bool AreShown() const { return m_counter && m_counter->IsActive(); }
  /// "3 of 41", see `MatchCounter`; empty without marks, and when nothing is found in the whole text.
  QString StatusText() const;

 Q_SIGNALS:
  void StatusChanged();

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  bool TakeInput(QEvent& event) override;
  void OnTextChanged(uint32_t hints, int32_t line);
  void MarksOf(int32_t line, ColumnRange visible, std::vector<ColumnRange>& marks) const override;

  CCrystalTextView* m_view;
  QPointer<InputChain> m_input;  ///< of the view
  TextWatch m_watch;
  std::optional<SearchRequest> m_lastSearch;
  std::optional<MatchCounter> m_counter;  ///< of the buffer that the view shows
  QBasicTimer m_slice;
};

/// The marks of every view that was searched: made when asked for first, gone with the view.
class ViewMarks : public QObject {
 public:
  SearchMarks& Of(CCrystalTextView& view);

 private:
  std::map<const QObject*, std::unique_ptr<SearchMarks>> m_marks;
};

}  // namespace quill
