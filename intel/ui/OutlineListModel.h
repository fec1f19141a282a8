#pragma once
#include <QAbstractListModel>
#include <QIcon>
#include <QStyledItemDelegate>
#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "intel/jumper/OutlineFilter.h"
#include "intel/jumper/OutlineLists.h"
#include "intel/outline/ScriptFacts.h"

namespace quill {

/// Rows of names, those that fit a filter. Makes the toolkit's texts only for the rows that are painted.
class OutlineListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  /// The rows are views into the outline of `facts`.
  void Show(std::shared_ptr<const ScriptFacts> facts, std::vector<OutlineRow> rows);
  void SetFilter(const OutlineFilter& filter);
  bool IsFiltered() const { return !m_filter.IsEmpty(); }
  /// By the model's row.
  const OutlineRow& RowAt(int row) const { return m_rows[m_shown[static_cast<size_t>(row)]]; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  void ChooseRows();

  std::shared_ptr<const ScriptFacts> m_facts;
  std::vector<OutlineRow> m_rows;
  std::vector<uint32_t> m_shown;
  OutlineFilter m_filter;
};

/// Paints the name, and more softly what follows it.
class OutlineListDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit OutlineListDelegate(const OutlineListModel& model, QObject* parent = nullptr)
      : QStyledItemDelegate(parent), m_model(model) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const OutlineListModel& m_model;
  mutable std::map<std::string_view, QIcon> m_icons;  ///< by name, those that were painted once
};

}  // namespace quill
