#pragma once
#include <QAbstractListModel>
#include <QIcon>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "intel/writing/Completion.h"
#include "intel/writing/CompletionDetail.h"

namespace quill {

/// The completion list's rows: a name each, with the icon of its kind.
class CompletionModel : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  using DetailSource = std::function<CompletionDetail(const CompletionList&, size_t row)>;

  void SetList(CompletionList list, DetailSource detail);
  void Narrow(std::string_view begun);
  /// Null before the first list.
  const CompletionList* List() const { return m_list ? &*m_list : nullptr; }
  /// What is known of a row's name; there is one.
  CompletionDetail Detail(int row) const { return m_detail(*m_list, static_cast<size_t>(row)); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  const QIcon& IconOf(CompletionKind kind) const;

  std::optional<CompletionList> m_list;
  DetailSource m_detail;
  mutable std::map<CompletionKind, QIcon> m_icons;
};

}  // namespace quill
