#include "intel/ui/CompletionModel.h"

#include "res/ui/IconSet.h"
#include "widgets/CodePageText.h"

namespace quill {

void CompletionModel::SetList(CompletionList list) {
  beginResetModel();
  m_list = std::move(list);
  endResetModel();
}

void CompletionModel::Narrow(std::string_view begun) {
  beginResetModel();
  m_list->Narrow(begun);
  endResetModel();
}

int CompletionModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() || !m_list ? 0 : static_cast<int>(m_list->Count());
}

const QIcon& CompletionModel::IconOf(CompletionKind kind) const {
  QIcon& icon = m_icons[kind];
  if (icon.isNull()) icon = LoadIcon(CompletionIcon(kind));
  return icon;
}

QVariant CompletionModel::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<size_t>(index.row());
  if (!m_list || row >= m_list->Count()) return {};
  if (role == Qt::DisplayRole) return FromCodePage(m_list->Name(row));
  if (role == Qt::DecorationRole) return IconOf(m_list->Kind(row));
  return {};
}

}  // namespace quill
