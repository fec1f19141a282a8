#include "intel/ui/ScriptPreview.h"

#include <algorithm>
#include <vector>

#include "shell/ui/QuillView.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

constexpr int kLines = 3;  ///< that are shown without scrolling
constexpr int kRemarkAlpha = 150;
constexpr double kLargestFont = 12;  ///< points; the view may be zoomed

QFont FontOf(const CQuillView& view) {
  QFont font = view.Font();
  font.setPointSizeF(std::min(font.pointSizeF(), kLargestFont));
  return font;
}

}  // namespace

ScriptPreview::ScriptPreview(const CQuillView& view, QWidget* parent)
    : QTextEdit(parent), m_view(view), m_palette(view.Settings().colours) {
  setReadOnly(true);
  setFocusPolicy(Qt::NoFocus);
  setTextInteractionFlags(Qt::NoTextInteraction);
  viewport()->setCursor(Qt::ArrowCursor);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  const int around = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
  setFixedHeight(kLines * QFontMetrics(FontOf(view)).lineSpacing() + around);
  QPalette colours = palette();
  colours.setColor(QPalette::Base, m_palette.Colour(kColourBackground));
  setPalette(colours);
}

void ScriptPreview::ShowScript(std::string_view line) {
  document()->setDefaultFont(FontOf(m_view));
  setHtml("<div style=\"white-space:pre-wrap\">" + Coloured(line) + "</div>");
}

QString ScriptPreview::Coloured(std::string_view line) const {
  CCrystalTextBuffer buffer;
  buffer.NewBuffer(line_end::kCrLf, line);
  std::vector<TextBlock> blocks(static_cast<size_t>(MostBlocks(buffer.LineLength(0))));
  int32_t count = 0;
  ColourLine(buffer, m_view.Words(), 0, 0, blocks.data(), &count);
  blocks.resize(static_cast<size_t>(count));
  QString html;
  for (size_t i = 0; i < blocks.size(); ++i) {
    const auto start = static_cast<size_t>(blocks[i].column);
    const size_t end = i + 1 < blocks.size() ? static_cast<size_t>(blocks[i + 1].column) : line.size();
    const QString weight = m_palette.IsBold(blocks[i].colour) ? "bold" : "normal";
    html += QStringLiteral("<span style=\"color:%1;font-weight:%2\">%3</span>")
                .arg(m_palette.Colour(blocks[i].colour).name(), weight,
                     FromCodePage(line.substr(start, end - start)).toHtmlEscaped());
  }
  return html;
}

void ScriptPreview::ShowRemark(const QString& text) {
  document()->setDefaultFont(font());
  QColor faint = m_palette.Colour(kColourText);
  faint.setAlpha(kRemarkAlpha);
  setTextColor(faint);
  setPlainText(text);
}

}  // namespace quill
