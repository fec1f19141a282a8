#pragma once
#include <QColor>
#include <array>
#include <cstdint>

#include "text/parse/ColourTable.h"

namespace quill {

/// The colour table as a view paints with it. On a dark background a colour that the user has not
/// chosen is made lighter until it can be read; chosen colours stay as they are.
class ViewPalette {
 public:
  static constexpr int kColours = kColourIndexLimit;

  ViewPalette() = default;
  explicit ViewPalette(const ColourTable& table);
  /// For white paper: colours that could not be read on it are made darker.
  static ViewPalette ForPaper(const ColourTable& table);

  QRgb Rgb(int32_t index) const { return m_colours[static_cast<size_t>(index)]; }
  QColor Colour(int32_t index) const { return QColor::fromRgb(Rgb(index)); }
  bool IsBold(int32_t index) const { return m_bold[static_cast<size_t>(index)]; }
  bool UsesBold() const;
  bool IsDark() const { return m_dark; }
  /// Behind found text.
  QColor Match() const { return m_match; }
  /// Behind a matched brace.
  QColor BraceBox() const { return m_braceBox; }

 private:
  std::array<QRgb, kColours> m_colours{};
  std::array<bool, kColours> m_bold{};
  QColor m_match;
  QColor m_braceBox;
  bool m_dark = false;
};

}  // namespace quill
