#include "text/ui/ViewPalette.h"

#include <algorithm>
#include <cmath>

namespace quill {
namespace {

/// Contrast wanted between coloured text and its background (the usual bound for body text), and for
/// plain text on a dark one.
constexpr double kReadable = 4.5;
constexpr double kComfortable = 11.0;

double Luminance(const QColor& c) {
  const auto linear = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
  return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
  const double x = Luminance(a);
  const double y = Luminance(b);
  return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

QColor Mixed(const QColor& a, const QColor& b, double share) {
  return QColor::fromRgbF(static_cast<float>(a.redF() + (b.redF() - a.redF()) * share),
                          static_cast<float>(a.greenF() + (b.greenF() - a.greenF()) * share),
                          static_cast<float>(a.blueF() + (b.blueF() - a.blueF()) * share));
}

/// `c` moved towards `end` (white or black) as far as reading on `background` needs it.
QColor Readable(const QColor& c, const QColor& background, const QColor& end, double contrast) {
  for (double share = 0; share < 1; share += 0.05) {
    const QColor moved = Mixed(c, end, share);
    if (Contrast(moved, background) >= contrast) return moved;
  }
  return end;
}

QColor FromColourRef(uint32_t ref) {
  return QColor(static_cast<int>(ref & 0xFF), static_cast<int>((ref >> 8) & 0xFF),
                static_cast<int>((ref >> 16) & 0xFF));
}

bool IsBackground(int32_t index) {
  return index == kColourBackground || index == kColourBackground2 || index == kColourMargin ||
         index == kColourSelectionBackground || index == kColourCaretLine;
}

double WantedContrast(int32_t index) {
  return index == kColourText || index == kColourBrace ? kComfortable : kReadable;
}

}  // namespace

ViewPalette::ViewPalette(const ColourTable& table) {
  const QColor background = FromColourRef(table.ColourOf(kColourBackground));
  const QColor margin = FromColourRef(table.ColourOf(kColourMargin));
  m_dark = Luminance(background) < 0.18;
  const bool darkMargin = Luminance(margin) < 0.18;
  for (int32_t index = 0; index < kColours; ++index) {
    QColor colour = FromColourRef(table.ColourOf(index));
    const bool inMargin = index == kColourMarginText;
    const bool onDark = inMargin ? darkMargin : m_dark;
    if (onDark && table.IsDefault(index)) {
      if (index == kColourCaretLine) {
        colour = Mixed(background, Qt::white, 0.09);
      } else if (!IsBackground(index) && index != kColourSelectionText) {
        colour = Readable(colour, inMargin ? margin : background, Qt::white, WantedContrast(index));
      }
    }
    m_colours[static_cast<size_t>(index)] = colour.rgb();
    m_bold[static_cast<size_t>(index)] = table.IsBold(index);
  }
  m_match = Mixed(background, QColor(255, 170, 0), m_dark ? 0.35 : 0.4);
  m_braceBox = Mixed(background, QColor(60, 160, 90), m_dark ? 0.45 : 0.35);
}

ViewPalette ViewPalette::ForPaper(const ColourTable& table) {
  ViewPalette palette(table);
  for (int32_t index = 0; index < kColours; ++index) {
    QColor colour = FromColourRef(table.ColourOf(index));
    // What was chosen for a dark background is too light here.
    if (!IsBackground(index)) colour = Readable(colour, Qt::white, Qt::black, kReadable);
    palette.m_colours[static_cast<size_t>(index)] = colour.rgb();
  }
  return palette;
}

bool ViewPalette::UsesBold() const {
  return std::find(m_bold.begin(), m_bold.end(), true) != m_bold.end();
}

}  // namespace quill
