#include "text/ui/EditorFont.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "base/CodePage1252.h"

namespace quill {
namespace {

/// Shown for bytes that no font draws: control characters.
constexpr char16_t kPlaceholder = 0x00B7;

QFont ChooseFont(const QString& family, double points) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  if (QFontDatabase::hasFamily(family)) font = QFont(family);
  font.setPointSizeF(points);
  font.setStyleHint(QFont::Monospace);
  font.setKerning(false);
  return font;
}

}  // namespace

EditorFont::EditorFont(const QString& family, double points, bool bold, double devicePixelRatio)
    : m_font(ChooseFont(family, points)) {
  QFont boldFont = m_font;
  boldFont.setBold(true);
  m_face = QRawFont::fromFont(m_font);
  m_boldFace = QRawFont::fromFont(boldFont);
  m_glyphs = GlyphsOf(m_face);
  m_boldGlyphs = GlyphsOf(m_boldFace);
  MeasureAdvances(bold, devicePixelRatio);
  const QFontMetricsF metrics(m_font);
  m_ascent = static_cast<int>(std::ceil(metrics.ascent()));
  m_lineHeight = std::max(1, m_ascent + static_cast<int>(std::ceil(metrics.descent())) + 1);
}

EditorFont::Glyphs EditorFont::GlyphsOf(const QRawFont& face) {
  Glyphs glyphs{};
  const quint32 placeholder = face.glyphIndexesForString(QString(QChar(kPlaceholder))).value(0);
  for (int byte = 0; byte < 256; ++byte) {
    const char16_t c = cp1252::ToUnicode(static_cast<char>(byte));
    const bool control = c < 0x20 || (c >= 0x7F && c < 0xA0);
    const quint32 glyph = control ? 0 : face.glyphIndexesForString(QString(QChar(c))).value(0);
    glyphs[static_cast<size_t>(byte)] = glyph == 0 ? placeholder : glyph;
  }
  return glyphs;
}

void EditorFont::MeasureAdvances(bool bold, double devicePixelRatio) {
  // Whole device pixels, so that equal characters look equal wherever they stand.
  const auto advance = [&](const QRawFont& face, uint32_t glyph) {
    QPointF size;
    face.advancesForGlyphIndexes(&glyph, &size, 1);
    const double pixels = std::max(1.0, std::round(size.x() * devicePixelRatio)) / devicePixelRatio;
    return static_cast<int32_t>(std::lround(pixels * ColumnMetrics::kUnitsPerPixel));
  };
  for (size_t byte = 0; byte < m_advances.size(); ++byte) {
    m_advances[byte] = advance(m_face, m_glyphs[byte]);
    if (bold) m_advances[byte] = std::max(m_advances[byte], advance(m_boldFace, m_boldGlyphs[byte]));
  }
  // A fixed-pitch font may lack a few characters and draw them from a wider stand-in.
  if (QFontInfo(m_font).fixedPitch()) m_advances.fill(m_advances['0']);
}

}  // namespace quill
