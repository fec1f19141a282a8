#pragma once
#include <QFont>
#include <QRawFont>
#include <QString>
#include <array>
#include <cstdint>

#include "text/view/ColumnMetrics.h"

namespace quill {

/// A font made ready for drawing single-byte text: glyph numbers and widths of all 256 bytes in the
/// normal and the bold face. Every byte has one width, so that a place in a line does not depend on
/// which words are bold; of a font that is not fixed-pitch it is the wider face's.
class EditorFont {
 public:
  /// `points` is the size on the screen, zooming included. A family that is missing is replaced by the
  /// desktop's fixed-pitch font. `bold` tells whether any text is drawn in the bold face.
  EditorFont(const QString& family, double points, bool bold, double devicePixelRatio);

  const QFont& Font() const { return m_font; }
  const QRawFont& Face(bool bold) const { return bold ? m_boldFace : m_face; }
  uint32_t Glyph(char c, bool bold) const {
    return (bold ? m_boldGlyphs : m_glyphs)[static_cast<uint8_t>(c)];
  }
  const ColumnMetrics::Advances& Advances() const { return m_advances; }
  /// In logical pixels.
  int LineHeight() const { return m_lineHeight; }
  int Ascent() const { return m_ascent; }

 private:
  using Glyphs = std::array<uint32_t, 256>;
  static Glyphs GlyphsOf(const QRawFont& face);
  void MeasureAdvances(bool bold, double devicePixelRatio);

  QFont m_font;
  QRawFont m_face;
  QRawFont m_boldFace;
  Glyphs m_glyphs{};
  Glyphs m_boldGlyphs{};
  ColumnMetrics::Advances m_advances{};
  int m_lineHeight = 1;
  int m_ascent = 1;
};

}  // namespace quill
