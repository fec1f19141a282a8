#pragma once
#include <array>
#include <cstdint>
#include <functional>

#include "settings/SettingsTable.h"

namespace quill {

/// Reads preferences for the table.
struct ColourReader {
  std::function<uint32_t(const ColourSetting& setting, const DesktopColours& desktop)> colour;
  std::function<bool(const FlagSetting& setting)> flag;
};

/// The colours and bold switches that a view paints with. A plain array, so that asking costs nothing.
class ColourTable {
 public:
  /// Defaults only.
  explicit ColourTable(const DesktopColours& desktop = {});

  /// Reads every value anew.
  void Load(const ColourReader& reader, const DesktopColours& desktop = {});
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
