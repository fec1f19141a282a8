#pragma once
#include <QAbstractListModel>
#include <QStyledItemDelegate>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "find/FindInFiles.h"
#include "text/search/Search.h"

namespace quill {

/// The result lines of a search in files, as bytes: the text of an item is the whole line as it can be
/// shown, what it opens is read from the bytes.
class GrepResultModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  /// A result line apart: "path (12)" and the text of the line.
  struct Parts {
    std::string_view path;
    std::string_view place;  ///< path and line number
    std::string_view text;
  };

  /// Results added up to `EndSearch` appear all at once then.
  void BeginSearch(const std::string& what);
  void Add(std::span<const GrepResult> results);
  void EndSearch();

  std::string_view Entry(int row) const;
  Parts PartsOf(int row) const;
  /// Of the places, in characters.
  int LongestPlace() const { return m_longestPlace; }
  /// What was searched for.
  const TextSearch& Search() const { return m_search; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  struct Row {
    size_t start;
    uint32_t pathLength;
    uint32_t textStart;
  };

  std::string m_text;  ///< the entries one behind the other
  std::vector<Row> m_rows;
  TextSearch m_search{"", 0};
  int m_longestPlace = 0;
};

/// Paints results in two columns, place and text, with what was searched for in bold.
class GrepResultDelegate : public QStyledItemDelegate {
 public:
  explicit GrepResultDelegate(const GrepResultModel& model, QObject* parent = nullptr);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  void PaintText(QPainter& painter, const QRect& area, std::string_view text, const QColor& colour) const;

  const GrepResultModel& m_model;
};

}  // namespace quill
