// Painting of CCrystalTextView.
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "text/edit/ColumnBlock.h"
#include "text/edit/ModelEditTarget.h"
#include "text/ui/CrystalTextView.h"
#include "text/ui/LineDecoration.h"
#include "text/view/IndentGuides.h"
#include "text/view/VisualColumns.h"

namespace quill {
namespace {

constexpr int64_t kUnits = ColumnMetrics::kUnitsPerPixel;

}  // namespace

std::vector<CCrystalTextView::RowSpan> CCrystalTextView::RowsOf(const QRegion& region) const {
  std::vector<RowSpan> spans;
  for (const QRect& rect : region) {
    const RowSpan span{rect.top() / LineHeight(), rect.bottom() / LineHeight()};
    if (!spans.empty() && span.first <= spans.back().last + 1) {
      spans.back().last = std::max(spans.back().last, span.last);
    } else {
      spans.push_back(span);
    }
  }
  return spans;
}

void CCrystalTextView::paintEvent(QPaintEvent* event) {
  if (m_fontRatio != devicePixelRatioF()) RebuildFont();  // the window came to another screen
  QPainter painter(viewport());
  if (m_model.HasText()) {
    for (const RowSpan& rows : RowsOf(event->region())) PaintRows(painter, rows);
    PaintCaret(painter);
  } else {
    painter.fillRect(event->rect(), m_palette.Colour(kColourBackground));
  }
}

void CCrystalTextView::PaintRows(QPainter& painter, const RowSpan& rows) {
  const int32_t topRow = verticalScrollBar()->value();
  const int32_t rowCount = m_model.RowCount();
  const int height = LineHeight();
  const int last = std::min(rows.last, rowCount - topRow - 1);
  const EditorFont& font = LoadedFont();
  LinePainter lines(painter, *m_batch, font, m_model.Metrics(), m_palette);
  for (int row = rows.first; row <= last; ++row) {
    PaintTextRow(lines, m_model.Folds().LineOfRow(topRow + row), row * height);
  }
  if (last < rows.last) {
    const int top = std::max(last + 1, rows.first) * height;
    painter.fillRect(m_margin.width, top, viewport()->width(), (rows.last + 1) * height - top,
                     m_palette.Colour(kColourBackground));
  }
  m_batch->Draw(painter);

  // After the text: a character that is scrolled halfway out ends at the margin's edge.
  MarginPainter margin(painter, *m_batch, font, m_palette, m_margin);
  margin.PaintBackground(rows.first * height, (rows.last - rows.first + 1) * height);
  int32_t depth = 0;
  if (m_settings.showFolding && rows.first <= last) {
    depth = m_model.DepthBefore(m_model.Folds().LineOfRow(topRow + rows.first));
  }
  for (int row = rows.first; row <= last; ++row) {
    depth = PaintMarginRow(margin, m_model.Folds().LineOfRow(topRow + row), row * height, depth);
  }
  m_batch->Draw(painter);
}

int32_t CCrystalTextView::PaintMarginRow(MarginPainter& painter, int32_t line, int top, int32_t depth) {
  MarginPicture picture;
  picture.number = line + 1;
  picture.flags = Buffer()->LineFlags(line);
  picture.collapsed = m_model.Folds().IsCollapsedHead(line);
  picture.depthBefore = depth;
  const int32_t lastLine = m_model.Folds().LastLineUnder(line);
  picture.depthAfter = picture.collapsed ? m_model.DepthBefore(lastLine + 1)
                                         : FoldDepthIndex::DepthAfter(picture.flags, depth);
  painter.Paint(picture, top, LineHeight());
  return picture.depthAfter;
}

void CCrystalTextView::PaintTextRow(LinePainter& painter, int32_t line, int top) {
  const QRect area(m_margin.width, top, viewport()->width() - m_margin.width, LineHeight());
  painter.Paint(PictureOf(line), area, horizontalScrollBar()->value());
}

LinePicture CCrystalTextView::PictureOf(int32_t line) {
  LinePicture picture;
  picture.text = Buffer()->Line(line);
  const auto length = static_cast<int32_t>(picture.text.size());
  const int64_t left = horizontalScrollBar()->value() * kUnits;
  const int64_t right = left + TextArea().width() * kUnits;
  picture.visible.start = m_model.CharacterAt(line, left, false);
  picture.visibleX = m_model.XOf({line, picture.visible.start});
  int64_t x = picture.visibleX;
  picture.visible.end = picture.visible.start +
                        m_model.Metrics().CountUpTo(
                            picture.text.substr(static_cast<size_t>(picture.visible.start)), x, right, false);
  picture.visible.end = std::min(length, picture.visible.end + 1);

  picture.blocks = BlocksOf(line, picture.visible);
  picture.caretLine = m_settings.highlightLine && line == CaretPos().line;
  picture.collapsed = m_model.Folds().IsCollapsedHead(line);
  if (m_brace && m_brace->line == line) picture.brace = m_brace->character;
  AddSelection(line, picture);
  m_guides.clear();
  if (m_settings.indentationGuide) {
    const auto limit = static_cast<int32_t>(right / std::max<int64_t>(1, m_model.Metrics().Advance(' '))) + 1;
    IndentGuideColumns(*Buffer(), line, m_settings.tabSize, limit, m_guides);
    picture.guides = m_guides;
  }
  m_marks.clear();
  if (m_decoration != nullptr) {
    m_decoration->MarksOf(line, picture.visible, m_marks);
    picture.matches = m_marks;
  }
  m_boxes.clear();
  if (m_fields != nullptr) {
    m_fields->MarksOf(line, picture.visible, m_boxes);
    picture.fields = m_boxes;
  }
  return picture;
}

std::span<const TextBlock> CCrystalTextView::BlocksOf(int32_t line, ColumnRange columns) {
  const uint32_t state = m_model.States().StateAt(line);
  const int32_t length = Buffer()->LineLength(line);
  if (length >= LongLine::kWorthwhile) {
    return m_model.LongLines().Blocks(Words(), line, state, columns.start, columns.end);
  }
  m_blocks.resize(static_cast<size_t>(MostBlocks(length)));
  int32_t count = 0;
  ColourLine(state, line, m_blocks.data(), &count);
  return {m_blocks.data(), static_cast<size_t>(count)};
}

void CCrystalTextView::AddSelection(int32_t line, LinePicture& picture) {
  if (!m_model.HasSelection() && !m_model.IsColumnSelection()) return;
  if (m_model.IsColumnSelection()) {
    AddColumnSelection(line, picture);
    return;
  }
  const TextRange range = m_model.Selection();
  if (line < range.start.line || line > range.end.line) return;
  const auto length = static_cast<int32_t>(picture.text.size());
  picture.selection.start = line == range.start.line ? range.start.character : 0;
  picture.selection.end = line == range.end.line ? range.end.character : length;
  picture.selectionPastEnd = line != range.end.line;
}

void CCrystalTextView::AddColumnSelection(int32_t line, LinePicture& picture) {
  ModelEditTarget target(m_model);
  target.SetSettings({m_settings.tabSize});
  const ColumnBlock block = BlockOf(target);
  if (line < block.firstLine || line > block.lastLine) return;
  const TextRange range = block.RangeOn(*Buffer(), line, m_settings.tabSize);
  picture.selection = {range.start.character, range.end.character};
  // Behind a short line's end the block is shown as well.
  const int32_t end = ColumnOf(picture.text, static_cast<int32_t>(picture.text.size()), m_settings.tabSize);
  picture.paddingStart = std::max(0, block.left - end);
  picture.paddingWidth = std::max(0, block.right - std::max(end, block.left));
  if (block.Width() == 0 && block.firstLine != block.lastLine) picture.bar = range.start.character;
}

void CCrystalTextView::PaintCaret(QPainter& painter) {
  if (m_dropPlace)
    painter.fillRect(QRect(PointOf(*m_dropPlace), QSize(1, LineHeight())), m_palette.Colour(kColourText));
  if (!m_caretShown) return;
  const QRect caret = CaretRect();
  if (caret.left() < m_margin.width - 1) return;
  const QColor colour = m_palette.Colour(kColourText);
  if (m_overwrite) {
    painter.fillRect(caret.adjusted(0, caret.height() - 3, 0, 0), colour);
    QColor veil = colour;
    veil.setAlpha(70);
    painter.fillRect(caret, veil);
  } else {
    painter.fillRect(caret, colour);
  }
}

}  // namespace quill
