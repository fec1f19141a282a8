#include "intel/ui/OutlineListModel.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>

#include "intel/ui/OutlineLabels.h"
#include "res/ui/IconSet.h"

namespace quill {
namespace {

constexpr int kIconSize = 16;
constexpr int kPadding = 4;  ///< left of the icon, between icon and text, right of the text
constexpr int kTopPadding = 1;
constexpr size_t kPage = 1000;  ///< rows that are made at a time
constexpr float kFaint = 0.65F;

}  // namespace

// Model

void OutlineListModel::Show(std::shared_ptr<const ScriptFacts> facts, OutlineRows rows, bool keepMade) {
  beginResetModel();
  m_facts = std::move(facts);
  m_rows = std::move(rows);
  m_made = std::min(std::max(keepMade ? m_made : 0, kPage), m_rows.size());
  endResetModel();
}

int OutlineListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_made);
}

bool OutlineListModel::canFetchMore(const QModelIndex& parent) const {
  return !parent.isValid() && m_made < m_rows.size();
}

void OutlineListModel::fetchMore(const QModelIndex& parent) {
  if (!canFetchMore(parent)) return;
  const size_t made = std::min(m_made + kPage, m_rows.size());
  beginInsertRows({}, static_cast<int>(m_made), static_cast<int>(made) - 1);
  m_made = made;
  endInsertRows();
}

QVariant OutlineListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const OutlineRow row = RowAt(index.row());
  if (role == Qt::DisplayRole) return OutlineLabel(row.text);
  if (role == Qt::ToolTipRole) return OutlineTip(row.text, row.at, row.file, *m_facts);
  return {};
}

// Delegate

QSize OutlineListDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return {0, std::max(option.fontMetrics.height(), kIconSize) + 2 * kTopPadding};
}

void OutlineListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
  QStyleOptionViewItem row = option;
  row.showDecorationSelected = true;
  const QWidget* view = option.widget;
  (view == nullptr ? QApplication::style() : view->style())
      ->drawPrimitive(QStyle::PE_PanelItemViewItem, &row, painter, view);
  const OutlineRow definition = m_model.RowAt(index.row());
  const QRect area = option.rect.adjusted(kPadding, 0, -kPadding, 0);
  const QRect icon(area.left(), area.top() + (area.height() - kIconSize) / 2, kIconSize, kIconSize);
  QIcon& picture = m_icons[RowIcon(definition)];
  if (picture.isNull()) picture = LoadIcon(RowIcon(definition));
  picture.paint(painter, icon);

  const bool selected = (option.state & QStyle::State_Selected) != 0;
  const QPalette::ColorGroup group =
      (option.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
  const QColor colour = option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
  QColor faint = colour;
  if (!selected) faint.setAlphaF(kFaint);
  const QRect room = area.adjusted(kIconSize + kPadding, 0, 0, 0);
  const QString text = option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, room.width());
  const QString name = text.left(static_cast<qsizetype>(definition.nameLength));
  painter->save();
  painter->setFont(option.font);
  painter->setPen(colour);
  painter->drawText(room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, name);
  painter->setPen(faint);
  painter->drawText(room.adjusted(option.fontMetrics.horizontalAdvance(name), 0, 0, 0),
                    Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, text.mid(name.size()));
  painter->restore();
}

}  // namespace quill
