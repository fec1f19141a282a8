#pragma once
#include <array>
#include <cstdint>
#include <functional>
#include <span>

namespace quill {

/// What each colour is drawn for. Schemes and options name colours by their settings value; everything
/// that paints names them by these.
enum ColourIndex : int32_t {
  kColourBackground = 0,
  kColourBackground2 = 1,  ///< the same settings value as 0
  kColourText = 2,         ///< normal text, every bracket included
  kColourMarginText = 3,
  kColourFolding = 4,  ///< folding marks and block lines
  kColourBrace = 5,    ///< the matching brace
  kColourMargin = 6,
  kColourSelectionBackground = 7,
  kColourSelectionText = 8,
  kColourIndentGuide = 9,
  kColourKeyword = 10,
  kColourCommand = 11,
  kColourFunction = 12,
  kColourVariable = 13,
  kColourComment = 14,
  kColourNumber = 15,
  kColourUnused = 16,  ///< nothing is drawn with it; black
  kColourString = 17,
  kColourPreprocessor = 18,
  kColourCaretLine = 25,
};
inline constexpr int32_t kColourIndexLimit = 26;

/// Where the default of a colour comes from.
enum class ColourRole : uint8_t { kFixed, kSystemWindow, kSystemFace };

struct ColourEntry {
  int32_t index;
  const char* valueName;   ///< null for the index that has no settings value
  uint32_t defaultColour;  ///< 0x00BBGGRR, meaningful for `kFixed`
  ColourRole role;
};

/// A kind of text with a colour and a bold switch of its own.
struct SyntaxClass {
  const char* name;  ///< as the colour page lists it
  int32_t index;
  const char* boldValueName;
};

std::span<const ColourEntry> ColourEntries();
/// In the order of the colour page.
std::span<const SyntaxClass> SyntaxClasses();

/// The two colours that the desktop decides, 0x00BBGGRR.
struct SystemColours {
  uint32_t window = 0x00FFFFFF;
  uint32_t face = 0x00F0F0F0;
};

/// Reads preferences for the table; each call names a settings value and the default for a missing one.
struct ColourReader {
  std::function<uint32_t(const char* valueName, uint32_t fallback)> colour;
  std::function<bool(const char* valueName)> flag;
};

/// The colours and bold switches that a view paints with. A plain array, so that asking costs nothing.
class ColourTable {
 public:
  /// Defaults only.
  explicit ColourTable(const SystemColours& system = {});

  /// Reads every value anew.
  void Load(const ColourReader& reader, const SystemColours& system = {});
  /// 0x00BBGGRR; black for an index without an entry.
  uint32_t ColourOf(int32_t index) const { return IsIndex(index) ? m_colours[Slot(index)] : 0; }
  /// The bold switch of the class drawn with this index; false for screen elements.
  bool IsBold(int32_t index) const { return IsIndex(index) && m_bold[Slot(index)]; }
  bool AnyBold() const { return m_anyBold; }
  /// True when the colour is what it is without any settings.
  bool IsDefault(int32_t index) const {
    return !IsIndex(index) || m_colours[Slot(index)] == m_defaults[Slot(index)];
  }

 private:
  static constexpr size_t Slot(int32_t index) { return static_cast<size_t>(index); }
  static constexpr bool IsIndex(int32_t index) { return index >= 0 && index < kColourIndexLimit; }

  std::array<uint32_t, kColourIndexLimit> m_colours{};
  std::array<uint32_t, kColourIndexLimit> m_defaults{};
  std::array<bool, kColourIndexLimit> m_bold{};
  bool m_anyBold = false;
};

}  // namespace quill
