#pragma once
#include <QObject>

class QListView;

namespace quill {

/// Tells screen readers of the rows of a list that never has the focus, as if it had: a row that is chosen
/// is read out, and when the list closes, what really has the focus has it for them again. Rows that are
/// only proposed stay silent, so that the user hears what he types.
class ListAnnouncer : public QObject {
 public:
  explicit ListAnnouncer(QListView& list);

  /// Whether the current row counts as chosen; to be called again when it is another one.
  void SetChosen(bool chosen);

 private:
  QListView& m_list;
  bool m_hasFocus = false;  ///< as screen readers were told
};

}  // namespace quill
