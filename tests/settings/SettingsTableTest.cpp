#include "settings/SettingsTable.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "settings/MemorySettingsStore.h"
#include "settings/Settings.h"

namespace quill {
namespace {

constexpr DesktopColours kDesktop{0x00102030, 0x00A0B0C0};

template <typename Handle>
void ForEachRow(const Handle& handle) {
  for (const SettingRow& row : settings::kTable) {
    SCOPED_TRACE(NameOf(row));
    std::visit([&](const auto* setting) { handle(*setting); }, row);
  }
}

/// Reads a row of any kind; writes another value than the one it has, and tells it.
struct RowIo {
  MemorySettingsStore store;

  bool Read(const FlagSetting& setting) { return ReadFlag(store, setting); }
  int32_t Read(const IntegerSetting& setting) { return ReadInt(store, setting); }
  std::string Read(const TextSetting& setting) { return ReadText(store, setting); }
  uint32_t Read(const ColourSetting& setting) { return ReadColour(store, setting, kDesktop); }

  static bool Default(const FlagSetting& setting) { return setting.fallback; }
  static int32_t Default(const IntegerSetting& setting) { return setting.fallback; }
  static std::string Default(const TextSetting& setting) { return std::string(setting.fallback); }
  static uint32_t Default(const ColourSetting& setting) { return setting.Fallback(kDesktop); }

  bool WriteOther(const FlagSetting& setting) {
    EXPECT_TRUE(WriteFlag(store, setting, !Read(setting)));
    return !Default(setting);
  }
  int32_t WriteOther(const IntegerSetting& setting) {
    EXPECT_TRUE(WriteInt(store, setting, setting.fallback + 1));
    return setting.fallback + 1;
  }
  std::string WriteOther(const TextSetting& setting) {
    EXPECT_TRUE(WriteText(store, setting, "of " + std::string(setting.name)));
    return "of " + std::string(setting.name);
  }
  uint32_t WriteOther(const ColourSetting& setting) {
    EXPECT_TRUE(WriteColour(store, setting, Default(setting) ^ 0x00FFFFFF));
    return Default(setting) ^ 0x00FFFFFF;
  }
};

TEST(SettingsTable, EachRowReadsItsDefaultUntilAValueIsStored) {
  RowIo io;
  ForEachRow([&](const auto& setting) { EXPECT_EQ(io.Read(setting), RowIo::Default(setting)); });
  ForEachRow([&](const auto& setting) {
    RowIo one;
    const auto written = one.WriteOther(setting);
    EXPECT_EQ(one.Read(setting), written);
  });
}

TEST(SettingsTable, AValueHasOneRowButForItsSecondDefault) {
  std::map<std::string_view, int> rows;
  for (const SettingRow& row : settings::kTable) ++rows[NameOf(row)];
  for (const SettingRow& row : settings::kSecondDefaults) {
    EXPECT_EQ(rows[NameOf(row)]--, 2) << NameOf(row);
  }
  for (const auto& [name, count] : rows) EXPECT_EQ(count, 1) << name;
}

TEST(SettingsTable, DefaultsAreValuesThatCanBeStored) {
  ForEachRow([](const auto& setting) {
    using Setting = std::decay_t<decltype(setting)>;
    if constexpr (std::is_same_v<Setting, IntegerSetting>) {
      EXPECT_LE(setting.min, setting.fallback);
      EXPECT_LE(setting.fallback, setting.max);
    } else if constexpr (std::is_same_v<Setting, TextSetting>) {
      EXPECT_LT(setting.fallback.size(), 255u);
    } else if constexpr (std::is_same_v<Setting, ColourSetting>) {
      EXPECT_EQ(setting.fallback >> 24, 0u);
    }
  });
}

TEST(SettingsTable, ColoursAreListedByTheirLabels) {
  std::string all, bold;
  std::set<int32_t> indices;
  std::set<const FlagSetting*> switches;
  for (const ColourSetting* setting : settings::kColours) {
    std::string line = std::string(Text(setting->label)) + '=' + std::string(setting->name) + '\n';
    all += line;
    if (setting->bold != nullptr) {
      bold += std::string(Text(setting->label)) + '=' + std::string(setting->bold->name) + '\n';
      EXPECT_TRUE(switches.insert(setting->bold).second) << line;
    }
    EXPECT_TRUE(indices.insert(setting->index).second) << line;
  }
  EXPECT_EQ(all,
            "Background=BackColor\nHighlight=HighLightColor\nSelection foreground=SelForeColor\n"
            "Selection background=SelBackColor\nText=PlainColor\nKeyword=KeywordColor\nString=StringColor\n"
            "Number=NumberColor\nCommand=CommandColor\nComment=CommentColor\nMargin=MarginColor\n"
            "Brace highlight=BraceColor\nMargin text=MarginTextColor\nFunction folding=FuncFoldColor\n"
            "Indentation guide=IndentGuideColor\nFunction=FunctionColor\nVariable=VariableColor\n"
            "Preprocessor=PreProcessorColor\n");
  EXPECT_EQ(bold,
            "Text=TextBold\nKeyword=KeywordBold\nString=StringBold\nNumber=NumberBold\nCommand=CommandBold\n"
            "Comment=CommentBold\nFunction=FuncBold\nVariable=VarBold\n");
}

TEST(SettingsTable, SchemeFilesHaveTheirOwnOrderAndLeaveTwoBoldSwitchesOut) {
  std::string order;
  std::set<std::string_view> left;
  for (const ColourSetting* setting : settings::kColours) {
    left.insert(setting->name);
    if (setting->bold != nullptr) left.insert(setting->bold->name);
  }
  for (const SettingRow& row : settings::kSchemeOrder) {
    order += std::string(NameOf(row)) + ' ';
    left.erase(NameOf(row));
  }
  EXPECT_EQ(order,
            "FontName FontSize CommentColor CommandColor KeywordColor StringColor PlainColor HighLightColor "
            "SelForeColor SelBackColor BraceColor TextBold KeywordBold CommentBold StringBold NumberBold "
            "CommandBold BackColor MarginColor NumberColor MarginTextColor FuncFoldColor IndentGuideColor "
            "FunctionColor VariableColor PreProcessorColor ");
  EXPECT_EQ(left, (std::set<std::string_view>{"FuncBold", "VarBold"}));
}

}  // namespace
}  // namespace quill
