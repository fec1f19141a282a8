#include "text/ui/ViewPalette.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

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

/// What a colour may be painted on, and the contrast that it needs there.
struct Ground {
  QColor colour;
  double contrast;
};

/// `c` moved towards `end` (white or black) as far as reading on all of `grounds` needs it.
QColor Readable(const QColor& c, std::initializer_list<Ground> grounds, const QColor& end) {
  for (double share = 0; share < 1; share += 0.05) {
    const QColor moved = Mixed(c, end, share);
    const auto isReadable = [&moved](const Ground& g) { return Contrast(moved, g.colour) >= g.contrast; };
    if (std::all_of(grounds.begin(), grounds.end(), isReadable)) return moved;
  }
  return end;
}

/// Found text on a dark background: a shade of orange on which light text stays light enough.
QColor DarkMatch(const QColor& background) {
  const QColor soft = Mixed(background, QColor(255, 170, 0), 0.22);
  return Contrast(Qt::white, soft) >= 7 ? soft : Mixed(background, QColor(90, 50, 0), 0.6);
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

/// What takes the place of a default on a dark background. The defaults are made for paper: lightened, the
/// greys of functions, variables and strings would be one, and the dark reds and blues would lose their hue.
QColor DarkDefault(int32_t index, const QColor& fallback) {
  switch (index) {
    case kColourKeyword:
      return {125, 170, 255};
    case kColourCommand:
      return {255, 140, 145};
    case kColourFunction:
      return {236, 222, 130};
    case kColourVariable:
      return {120, 220, 205};
    case kColourComment:
      return {115, 195, 115};
    case kColourNumber:
      return {225, 150, 235};
    case kColourString:
      return {222, 172, 120};
    case kColourPreprocessor:
      return {95, 190, 240};
    default:
      return fallback;
  }
}

}  // namespace

ViewPalette::ViewPalette(const ColourTable& table) {
  const QColor background = FromColourRef(table.ColourOf(kColourBackground));
  const QColor margin = FromColourRef(table.ColourOf(kColourMargin));
  m_dark = Luminance(background) < 0.18;
  const bool darkMargin = Luminance(margin) < 0.18;
  m_match = m_dark ? DarkMatch(background) : Mixed(background, QColor(255, 170, 0), 0.4);
  m_braceBox = Mixed(background, QColor(60, 160, 90), m_dark ? 0.45 : 0.35);
  const bool ownCaretLine = m_dark && table.IsDefault(kColourCaretLine);
  const QColor caretLine = ownCaretLine ? Mixed(background, Qt::white, 0.09) : background;
  for (int32_t index = 0; index < kColours; ++index) {
    QColor colour = FromColourRef(table.ColourOf(index));
    const bool inMargin = index == kColourMarginText;
    const bool onDark = inMargin ? darkMargin : m_dark;
    if (onDark && table.IsDefault(index)) {
      if (index == kColourCaretLine) {
        colour = caretLine;
      } else if (inMargin) {
        colour = Readable(colour, {{margin, kReadable}}, Qt::white);
      } else if (index == kColourFolding || index == kColourIndentGuide) {
        colour = Readable(colour, {{background, kReadable}}, Qt::white);
      } else if (!IsBackground(index) && index != kColourSelectionText) {
        const QColor& mark = index == kColourBrace ? m_braceBox : m_match;
        colour = Readable(DarkDefault(index, colour),
                          {{background, WantedContrast(index)}, {caretLine, kReadable}, {mark, kReadable}},
                          Qt::white);
      }
    }
    m_colours[static_cast<size_t>(index)] = colour.rgb();
    m_bold[static_cast<size_t>(index)] = table.IsBold(index);
  }
}

ViewPalette ViewPalette::ForPaper(const ColourTable& table) {
  ViewPalette palette(table);
  for (int32_t index = 0; index < kColours; ++index) {
    QColor colour = FromColourRef(table.ColourOf(index));
    // What was chosen for a dark background is too light here.
    if (!IsBackground(index)) colour = Readable(colour, {{Qt::white, kReadable}}, Qt::black);
    palette.m_colours[static_cast<size_t>(index)] = colour.rgb();
  }
  return palette;
}

bool ViewPalette::UsesBold() const {
  return std::find(m_bold.begin(), m_bold.end(), true) != m_bold.end();
}

}  // namespace quill
