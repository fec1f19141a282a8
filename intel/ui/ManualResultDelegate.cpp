#include "intel/ui/ManualResultDelegate.h"

#include <QPainter>
#include <QTextLayout>

#include "widgets/ItemPanel.h"

namespace quill {
namespace {

constexpr int kPadding = 5;
constexpr int kLinesOfText = 2;
constexpr float kFaint = 0.7F;

QList<QTextLayout::FormatRange> BoldRanges(const QVariant& matches, qsizetype length) {
  QList<QTextLayout::FormatRange> ranges;
  const auto places = matches.value<QList<int>>();
  for (qsizetype i = 0; i + 1 < places.size() && places[i + 1] <= length; i += 2) {
    QTextLayout::FormatRange range;
    range.start = places[i];
    range.length = places[i + 1] - places[i];
    range.format.setFontWeight(QFont::Bold);
    ranges.append(range);
  }
  return ranges;
}

/// Breaks the text into at most two lines; where the second one begins to be too long, or -1.
int LayOut(QTextLayout& layout, int width) {
  QTextOption wrap;
  wrap.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(wrap);
  layout.beginLayout();
  qreal y = 0;
  int start = 0;
  for (int i = 0; i < kLinesOfText; ++i) {
    QTextLine line = layout.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(width);
    line.setPosition({0, y});
    y += line.height();
    start = line.textStart();
  }
  const bool isTooLong = layout.createLine().isValid();
  layout.endLayout();
  return isTooLong ? start : -1;
}

void PaintExcerpt(QPainter& painter, const QRect& area, const QFont& font, const QModelIndex& index) {
  QString text = index.data(ManualResultDelegate::kExcerpt).toString();
  const QVariant matches = index.data(ManualResultDelegate::kMatches);
  QTextLayout whole(text, font);
  whole.setFormats(BoldRanges(matches, text.size()));
  const int lastLine = LayOut(whole, area.width());
  if (lastLine < 0) return whole.draw(&painter, area.topLeft());
  QFont bold = font;
  bold.setBold(true);
  text =
      text.left(lastLine) + QFontMetrics(bold).elidedText(text.mid(lastLine), Qt::ElideRight, area.width());
  QTextLayout cut(text, font);
  cut.setFormats(BoldRanges(matches, text.size()));
  LayOut(cut, area.width());
  cut.draw(&painter, area.topLeft());
}

}  // namespace

QSize ManualResultDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return {0, option.fontMetrics.lineSpacing() * (1 + kLinesOfText) + 2 * kPadding};
}

void ManualResultDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
  const QColor colour = PaintItemPanel(*painter, option);
  const bool selected = (option.state & QStyle::State_Selected) != 0;
  QColor faint = colour;
  if (!selected) faint.setAlphaF(kFaint);

  painter->save();
  QRect area = option.rect.adjusted(kPadding, kPadding, -kPadding, -kPadding);
  QFont bold = option.font;
  bold.setBold(true);
  const QFontMetrics metrics(bold);
  const QString heading =
      metrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight, area.width());
  painter->setFont(bold);
  painter->setPen(colour);
  painter->drawText(area, Qt::AlignTop | Qt::AlignLeft | Qt::TextSingleLine, heading);
  painter->setFont(option.font);
  painter->setPen(faint);
  const int left = metrics.horizontalAdvance(heading + u' ');
  if (left < area.width()) {
    const QString page = index.data(kPage).toString();
    painter->drawText(area.adjusted(left, 0, 0, 0), Qt::AlignTop | Qt::AlignRight | Qt::TextSingleLine,
                      option.fontMetrics.elidedText(page, Qt::ElideRight, area.width() - left));
  }
  area.setTop(area.top() + option.fontMetrics.lineSpacing());
  PaintExcerpt(*painter, area, option.font, index);
  painter->restore();
}

}  // namespace quill
