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
  m_face = QRawFont::fromFont(m_font);
  m_glyphs = GlyphsOf(m_face);
  if (bold) {
    QFont boldFont = m_font;
    boldFont.setBold(true);
    m_boldFace = QRawFont::fromFont(boldFont);
    m_boldGlyphs = GlyphsOf(m_boldFace);
  } else {
    m_boldFace = m_face;
    m_boldGlyphs = m_glyphs;
  }
  MeasureAdvances(bold, devicePixelRatio);
  const QFontMetricsF metrics(m_font);
  m_ascent = static_cast<int>(std::ceil(metrics.ascent()));
  m_lineHeight = std::max(1, m_ascent + static_cast<int>(std::ceil(metrics.descent())) + 1);
}

EditorFont::Glyphs EditorFont::GlyphsOf(const QRawFont& face) {
  QString characters;
  for (int byte = 0; byte < 256; ++byte) {
    const char16_t c = cp1252::ToUnicode(static_cast<char>(byte));
    const bool control = c < 0x20 || (c >= 0x7F && c < 0xA0);
    characters += QChar(control ? kPlaceholder : c);
  }
  const QList<quint32> found = face.glyphIndexesForString(characters);
  const quint32 placeholder = found.value(0);
  Glyphs glyphs{};
  for (size_t byte = 0; byte < glyphs.size(); ++byte) {
    const quint32 glyph = found.value(static_cast<qsizetype>(byte));
    glyphs[byte] = glyph == 0 ? placeholder : glyph;
  }
  return glyphs;
}

void EditorFont::MeasureAdvances(bool bold, double devicePixelRatio) {
  // Loading a glyph to measure it is slow: one stands for all where it may. Such a font may lack a few
  // characters and draw them from a wider stand-in, which must not matter.
  const bool fixedPitch = QFontInfo(m_font).fixedPitch();
  const size_t first = fixedPitch ? '0' : 0;
  const size_t count = fixedPitch ? 1 : m_advances.size();
  const auto measure = [&](const QRawFont& face, const Glyphs& glyphs) {
    std::array<QPointF, 256> sizes;
    face.advancesForGlyphIndexes(glyphs.data() + first, sizes.data(), static_cast<int>(count));
    for (size_t i = 0; i < count; ++i) {
      // Whole device pixels, so that equal characters look equal wherever they stand.
      const double pixels = std::max(1.0, std::round(sizes[i].x() * devicePixelRatio)) / devicePixelRatio;
      const auto advance = static_cast<int32_t>(std::lround(pixels * ColumnMetrics::kUnitsPerPixel));
      m_advances[first + i] = std::max(m_advances[first + i], advance);
    }
  };
  measure(m_face, m_glyphs);
  if (bold) measure(m_boldFace, m_boldGlyphs);
  if (fixedPitch) m_advances.fill(m_advances['0']);
}

}  // namespace quill
