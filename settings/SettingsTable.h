#pragma once
#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string_view>
#include <variant>

#include "res/Strings.h"
#include "settings/Colours.h"

/// The one table of every setting: name, kind, default and range. A constant such as `kTabSize` is its row;
/// `kTable` has them all, for whoever walks them.
namespace quill {

struct FlagSetting {
  std::string_view name;
  bool fallback;
};
struct IntegerSetting {
  std::string_view name;
  int32_t fallback;
  int32_t min = std::numeric_limits<int32_t>::min();
  int32_t max = std::numeric_limits<int32_t>::max();
};
struct TextSetting {
  std::string_view name;
  std::string_view fallback;
};
struct ColourSetting {
  std::string_view name;
  ColourIndex index;  ///< what is painted with it
  StringId label;     ///< as the options dialog lists it
  uint32_t fallback = 0;
  uint32_t DesktopColours::*desktop = nullptr;  ///< when set, this colour is the default
  const FlagSetting* bold = nullptr;            ///< the bold switch of a syntax class, null for others

  constexpr uint32_t Fallback(const DesktopColours& colours) const {
    return desktop == nullptr ? fallback : colours.*desktop;
  }
};

/// A row of any kind.
using SettingRow =
    std::variant<const FlagSetting*, const IntegerSetting*, const TextSetting*, const ColourSetting*>;

constexpr std::string_view NameOf(const SettingRow& row) {
  return std::visit([](const auto* setting) { return setting->name; }, row);
}

/// Values of the settings key, below the current user.
namespace settings {

inline constexpr std::string_view kKeyPath = "Software\\Quill\\Settings";

#define QUILL_SETTING(kind, constant, ...) inline constexpr kind##Setting constant{__VA_ARGS__};
#include "settings/SettingsTable.inc"
#undef QUILL_SETTING

inline constexpr SettingRow kTable[] = {
#define QUILL_SETTING(kind, constant, ...) &constant,
#include "settings/SettingsTable.inc"
#undef QUILL_SETTING
};

/// Rows that read the value of another row with a default of their own. Whoever walks values, not defaults,
/// leaves them out.
inline constexpr SettingRow kSecondDefaults[] = {&kAutoRefreshAtStart, &kSchemeFontName};

/// The rows of one kind, in the order of the table.
template <typename Setting>
consteval auto RowsOf() {
  constexpr auto isOfKind = [](const SettingRow& row) { return std::holds_alternative<const Setting*>(row); };
  std::array<const Setting*, static_cast<size_t>(std::ranges::count_if(kTable, isOfKind))> rows{};
  size_t count = 0;
  for (const SettingRow& row : kTable) {
    if (isOfKind(row)) rows[count++] = std::get<const Setting*>(row);
  }
  return rows;
}

/// In the order of the options dialog, which lists those with a bold switch in this order once more.
inline constexpr auto kColours = RowsOf<ColourSetting>();

/// The entries of a colour scheme file, in their order. The bold switches of functions and variables are
/// not among them: a file has these 26 and no others, and loading it leaves those two switches alone.
inline constexpr SettingRow kSchemeOrder[] = {
    &kSchemeFontName,   &kFontSize,      &kCommentColor,     &kCommandColor,  &kKeywordColor,
    &kStringColor,      &kPlainColor,    &kHighLightColor,   &kSelForeColor,  &kSelBackColor,
    &kBraceColor,       &kTextBold,      &kKeywordBold,      &kCommentBold,   &kStringBold,
    &kNumberBold,       &kCommandBold,   &kBackColor,        &kMarginColor,   &kNumberColor,
    &kMarginTextColor,  &kFuncFoldColor, &kIndentGuideColor, &kFunctionColor, &kVariableColor,
    &kPreProcessorColor};

}  // namespace settings
}  // namespace quill
