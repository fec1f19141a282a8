#include "intel/ui/OutlineLabels.h"

#include <QAbstractItemView>
#include <QPainter>

#include "res/ui/UiText.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

constexpr size_t kLongestLabel = 250;  ///< characters
constexpr qsizetype kTipLine = 60;
constexpr size_t kLongestTip = 10 * kTipLine;
constexpr int kMargin = 12;
constexpr float kFaint = 0.65F;

QString Shortened(std::string_view text, size_t most) {
  if (text.size() <= most) return FromCodePage(text);
  return FromCodePage(text.substr(0, most)) + QChar(0x2026);
}

/// With places where a long name may be broken into lines.
QString Breakable(QString text) {
  constexpr QChar kZeroWidthSpace(0x200B);
  for (qsizetype at = (text.size() - 1) / kTipLine * kTipLine; at > 0; at -= kTipLine) {
    text.insert(at, kZeroWidthSpace);
  }
  return text;
}

}  // namespace

QString OutlineLabel(std::string_view text) {
  return Shortened(text, kLongestLabel);
}

QString OutlineTip(std::string_view text, TextPosition at, int32_t file, const ScriptFacts& facts) {
  const QString line = QString::number(at.line + 1);
  QString place = UiText(StringId::kPlaceInScript, {line});
  if (file > 0 && static_cast<size_t>(file) <= facts.includedPaths.size()) {
    place =
        UiText(StringId::kPlaceInFile, {FromBytes(facts.includedPaths[static_cast<size_t>(file) - 1]), line});
  }
  // Escaped: the text is not to be taken for markup.
  const QString shown = Breakable(Shortened(text, kLongestTip));
  return "<p>" + shown.toHtmlEscaped() + "<br>" + place.toHtmlEscaped() + "</p>";
}

void PaintEmptyText(QAbstractItemView& view, const QString& text) {
  QPainter painter(view.viewport());
  QColor colour = view.palette().color(QPalette::Text);
  colour.setAlphaF(kFaint);
  painter.setPen(colour);
  painter.drawText(view.viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                   Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, text);
}

}  // namespace quill
