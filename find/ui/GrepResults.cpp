#include "find/ui/GrepResults.h"

#include <QPainter>
#include <algorithm>

#include "res/ui/UiText.h"
#include "widgets/CodePageText.h"
#include "widgets/ItemPanel.h"

namespace quill {
namespace {

constexpr int kSidePadding = 4;
constexpr int kTopPadding = 1;
constexpr int kColumnGap = 16;
constexpr int kWidestPlace = 50;  ///< percent of the row; longer places lose their beginning
constexpr float kFaint = 0.65F;   ///< strength of the place beside the text
constexpr int kContext = 12;      ///< characters shown before a hit that would be out of sight

QString Ellipsis() {
  return QString(QChar(0x2026));
}

}  // namespace

// Model

void GrepResultModel::BeginSearch(const std::string& what) {
  beginResetModel();
  m_text.clear();
  m_rows.clear();
  m_longestPlace = 0;
  m_search = TextSearch(what, 0);
  endResetModel();
  beginResetModel();
}

void GrepResultModel::Add(std::span<const GrepResult> results) {
  for (const GrepResult& result : results) {
    m_rows.push_back(
        {m_text.size(), static_cast<uint32_t>(result.pathLength), static_cast<uint32_t>(result.textStart)});
    m_text.append(result.entry);
    m_longestPlace = std::max(m_longestPlace, static_cast<int>(result.textStart));
  }
}

void GrepResultModel::EndSearch() {
  endResetModel();
}

std::string_view GrepResultModel::Entry(int row) const {
  const auto at = static_cast<size_t>(row);
  const size_t end = at + 1 < m_rows.size() ? m_rows[at + 1].start : m_text.size();
  return std::string_view(m_text).substr(m_rows[at].start, end - m_rows[at].start);
}

GrepResultModel::Parts GrepResultModel::PartsOf(int row) const {
  const Row& record = m_rows[static_cast<size_t>(row)];
  const std::string_view entry = Entry(row);
  return {entry.substr(0, record.pathLength), entry.substr(0, record.textStart),
          entry.substr(record.textStart)};
}

int GrepResultModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant GrepResultModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
  const Parts parts = PartsOf(index.row());
  if (role == Qt::ToolTipRole) return FromBytes(parts.place);
  return QVariant(FromBytes(parts.place) + FromCodePage(parts.text));
}

// Delegate

GrepResultDelegate::GrepResultDelegate(const GrepResultModel& model, QObject* parent)
    : QStyledItemDelegate(parent), m_model(model) {}

QSize GrepResultDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return {0, option.fontMetrics.height() + 2 * kTopPadding};
}

void GrepResultDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
  const QColor colour = PaintItemPanel(*painter, option);
  const bool selected = (option.state & QStyle::State_Selected) != 0;
  QColor faint = colour;
  faint.setAlphaF(kFaint);

  painter->save();
  painter->setFont(option.font);
  const QFontMetrics& metrics = option.fontMetrics;
  const QRect area = option.rect.adjusted(kSidePadding, 0, -kSidePadding, 0);
  const QString longest(m_model.LongestPlace(), u'0');
  const int widest = std::min(metrics.horizontalAdvance(longest) + 1, area.width() * kWidestPlace / 100);
  const GrepResultModel::Parts parts = m_model.PartsOf(index.row());
  painter->setPen(selected ? colour : faint);
  painter->drawText(QRect(area.left(), area.top(), widest, area.height()), Qt::AlignVCenter | Qt::AlignLeft,
                    metrics.elidedText(FromBytes(parts.place), Qt::ElideLeft, widest));
  PaintText(*painter, area.adjusted(widest + kColumnGap, 0, 0, 0), parts.text, colour);
  painter->restore();
}

void GrepResultDelegate::PaintText(QPainter& painter, const QRect& area, std::string_view text,
                                   const QColor& colour) const {
  const QFont plain = painter.font();
  QFont bold = plain;
  bold.setBold(true);
  const TextSearch& search = m_model.Search();
  // The font is a fixed one: what fits can be counted.
  const double advance = std::max(1.0, QFontMetricsF(plain).horizontalAdvance(u'0'));
  const auto room = static_cast<int>(area.width() / advance);
  int start = static_cast<int>(std::min(text.find_first_not_of(' '), text.size()));
  double x = area.left();
  const auto draw = [&](const QString& piece, const QFont& font) {
    painter.setFont(font);
    painter.drawText(QRectF(x, area.top(), area.right() + 1 - x, area.height()),
                     Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, piece);
    x += QFontMetricsF(font).horizontalAdvance(piece);
  };
  painter.setPen(colour);
  int match = search.NextOccurrence(text, start);
  if (match >= 0 && match + search.Length() - start > room) {
    start = std::max(start, match - kContext);
    draw(Ellipsis(), plain);
  }
  const int end = std::min(static_cast<int>(text.size()), start + room + 1);
  for (int at = start; at < end;) {
    const bool inMatch = at == match;
    const int stop = inMatch ? match + search.Length() : match >= 0 ? std::min(match, end) : end;
    draw(FromCodePage(text.substr(static_cast<size_t>(at), static_cast<size_t>(stop - at))),
         inMatch ? bold : plain);
    if (inMatch) match = search.NextOccurrence(text, stop);
    at = stop;
  }
}

}  // namespace quill
