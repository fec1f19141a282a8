#pragma once
#include <QStringList>
#include <QUrl>
#include <QWidget>
#include <optional>

#include "intel/manual/ManualSearch.h"

class QLabel;
class QLineEdit;
class QListWidget;

namespace quill {

class ManualBook;

/// Searches the whole manual while the user types.
class ManualSearchPane : public QWidget {
  Q_OBJECT

 public:
  /// The book outlives the pane; its pages are read at the first search.
  explicit ManualSearchPane(const ManualBook& book, QWidget* parent = nullptr);
  void FocusField();

 Q_SIGNALS:
  /// `words` are those that were searched for.
  void Chosen(const QUrl& page, const QStringList& words);

 private:
  void Search();
  void OpenCurrent();

  const ManualBook& m_book;
  std::optional<ManualSearch> m_search;
  QLineEdit* m_field;
  QLabel* m_status;
  QListWidget* m_results;
};

}  // namespace quill
