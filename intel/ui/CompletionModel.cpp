#include "intel/ui/CompletionModel.h"

#include "res/ui/IconSet.h"
#include "widgets/CodePageText.h"

namespace quill {

void CompletionModel::SetList(CompletionList list, DetailSource detail) {
  beginResetModel();
  m_list = std::move(list);
  m_detail = std::move(detail);
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
  if (role == Qt::AccessibleDescriptionRole) {
    const CompletionDetail detail = Detail(index.row());
    return FromCodePage(detail.text.empty() ? detail.heading : detail.heading + '\n' + detail.text);
  }
  return {};
}

}  // namespace quill
