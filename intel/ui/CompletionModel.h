#pragma once
#include <QAbstractListModel>
#include <QIcon>
#include <map>
#include <optional>
#include <string>

#include "intel/writing/Completion.h"

namespace quill {

/// The completion list's rows: a name each, with the icon of its kind.
class CompletionModel : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  void SetList(CompletionList list);
  void Narrow(std::string_view begun);
  /// Null before the first list.
  const CompletionList* List() const { return m_list ? &*m_list : nullptr; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  const QIcon& IconOf(CompletionKind kind) const;

  std::optional<CompletionList> m_list;
  mutable std::map<CompletionKind, QIcon> m_icons;
};

}  // namespace quill
