#pragma once
#include <QAbstractListModel>
#include <QIcon>
#include <QStyledItemDelegate>
#include <cstdint>
#include <map>
#include <memory>
#include <string_view>

#include "intel/jumper/OutlineLists.h"
#include "intel/outline/ScriptFacts.h"

namespace quill {

/// Rows of names, so many at first and more when the user comes to their end. Makes the toolkit's texts only
/// for the rows that are painted.
class OutlineListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  /// `keepMade`: as many rows are there as before.
  void Show(std::shared_ptr<const ScriptFacts> facts, OutlineRows rows, bool keepMade);
  OutlineRow RowAt(int row) const { return m_rows[static_cast<size_t>(row)]; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;

 private:
  std::shared_ptr<const ScriptFacts> m_facts;
  OutlineRows m_rows;
  size_t m_made = 0;  ///< rows that the view knows of
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
