#include "settings/SettingsKey.h"

#include <gtest/gtest.h>

#include "settings/MemorySettingsStore.h"
#include "settings/Settings.h"
#include "settings/SettingsBytes.h"
#include "settings/WindowPlacement.h"

namespace quill {
namespace {

using namespace std::string_literals;

constexpr std::string_view kFull = "HKEY_CURRENT_USER\\Software\\Quill\\Settings";

class SettingsKeyTest : public ::testing::Test {
 protected:
  SettingsKeyTest() { m_key.SetKey(settings::kKeyPath, true); }

  MemorySettingsStore m_store;
  SettingsKey m_key{m_store};
};

TEST_F(SettingsKeyTest, ValuesAreStoredInTheirRegistryForm) {
  EXPECT_TRUE(m_key.WriteFlag("f", true));
  EXPECT_TRUE(m_key.WriteInteger("i", -2));
  EXPECT_TRUE(m_key.WriteColour("c", Rgb(0x11, 0x22, 0x33)));
  EXPECT_TRUE(m_key.WriteText("t", "caf\xE9"));
  const struct {
    const char* name;
    RegistryType type;
    std::string bytes;
  } rows[] = {
      {"f", RegistryType::kBinary, "\x01\0\0\0"s},
      {"i", RegistryType::kBinary, "\xFE\xFF\xFF\xFF"s},
      {"c", RegistryType::kBinary, "\x11\x22\x33\0"s},
      {"t", RegistryType::kString, "caf\xE9\0"s},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(m_store.Read(kFull, row.name), (SettingsValue{row.type, row.bytes})) << row.name;
    EXPECT_EQ(m_key.ValueType(row.name), row.type) << row.name;
    EXPECT_EQ(m_key.ValueSize(row.name), row.bytes.size()) << row.name;
  }
  EXPECT_EQ(m_key.ReadInteger("i", 7), -2);
  EXPECT_EQ(m_key.ReadText("t", "x"), "caf\xE9");
  EXPECT_EQ(m_key.ValueCount(), 4u);
  EXPECT_TRUE(m_key.DeleteValue("i"));
  EXPECT_FALSE(m_key.DeleteValue("i"));
  EXPECT_FALSE(m_key.ValueExists("i"));
}

TEST_F(SettingsKeyTest, StoredBytesThatDoNotFitTheKindGiveTheDefault) {
  const struct {
    const char* what;
    RegistryType type;
    std::string bytes;
    bool flag;         // default true
    int32_t number;    // default 7
    std::string text;  // default "d"
  } rows[] = {
      {"flag 0", RegistryType::kBinary, "\0\0\0\0"s, false, 0, "d"},
      {"flag 2", RegistryType::kBinary, "\2\0\0\0"s, true, 2, "d"},
      {"double-word", RegistryType::kDword, "\0\0\0\0"s, false, 0, "d"},
      {"three bytes", RegistryType::kBinary, "\0\0\0"s, true, 7, "d"},
      {"five bytes", RegistryType::kBinary, "\0\0\0\0\0"s, true, 7, "d"},
      {"empty block", RegistryType::kBinary, "", true, 7, "d"},
      {"string", RegistryType::kString, "ab\0"s, true, 7, "ab"},
      {"expandable string", RegistryType::kExpandString, "%xx%\0"s, true, 7, "%xx%"},
      {"no terminator", RegistryType::kString, "abcde", true, 7, "abcde"},
      {"255 bytes", RegistryType::kString, std::string(254, 'x') + '\0', true, 7, std::string(254, 'x')},
      {"256 bytes", RegistryType::kString, std::string(255, 'x') + '\0', true, 7, "d"},
  };
  for (const auto& row : rows) {
    m_store.Write(kFull, "v", row.type, row.bytes);
    EXPECT_EQ(m_key.ReadFlag("v", true), row.flag) << row.what;
    EXPECT_EQ(m_key.ReadInteger("v", 7), row.number) << row.what;
    EXPECT_EQ(m_key.ReadText("v", "d"), row.text) << row.what;
  }
}

TEST_F(SettingsKeyTest, ATextOf255CharactersIsRefusedAndTheOldOneStays) {
  const std::string longest(254, 'p');
  EXPECT_TRUE(m_key.WriteText("VSLFile", longest));
  for (const std::string& refused : {std::string(255, 'q'), std::string(300, 'q'), "a\0b"s}) {
    EXPECT_FALSE(m_key.WriteText("VSLFile", refused));
    EXPECT_EQ(m_key.ReadText("VSLFile", ""), longest);
  }
}

TEST_F(SettingsKeyTest, AKeyThatCannotBeOpenedLeavesThePath) {
  using Status = SettingsKey::Status;
  EXPECT_FALSE(m_key.SetKey("Software\\Other", false));
  EXPECT_EQ(m_key.Path(), settings::kKeyPath);
  EXPECT_EQ(m_key.LastStatus(), Status::kNotFound);
  EXPECT_TRUE(m_key.SetKey("Software", false)) << "made together with the key below it";
  EXPECT_EQ(m_key.SubKeyCount(), 1u);

  EXPECT_TRUE(m_key.SetKey("", true));
  EXPECT_EQ(m_key.Path(), "");
  EXPECT_FALSE(m_key.WriteFlag("f", true));
  EXPECT_TRUE(m_key.ReadFlag("f", true));

  EXPECT_FALSE(m_key.SetRoot(static_cast<RegistryRoot>(0x80000005)));
  EXPECT_EQ(m_key.Root(), RegistryRoot::kCurrentUser);
  EXPECT_TRUE(m_key.SetRoot(RegistryRoot::kUsers));
  EXPECT_FALSE(m_key.SetKey(settings::kKeyPath, false)) << "another root is another tree";
}

TEST(Settings, DefaultsComeFromTheTableAndFromTheDesktop) {
  MemorySettingsStore store;
  const DesktopColours desktop{0x00102030, 0x00A0B0C0};
  EXPECT_EQ(ReadInt(store, settings::kTabSize), 3);
  EXPECT_EQ(ReadText(store, settings::kKsDir), "c:\\program files\\KorvelStudio6");
  EXPECT_EQ(ReadColour(store, settings::kBackColor, desktop), 0x00102030u);
  EXPECT_EQ(ReadColour(store, settings::kMarginColor, desktop), 0x00A0B0C0u);
  EXPECT_EQ(ReadColour(store, settings::kSelBackColor, desktop), 0x00C56A31u);
  EXPECT_FALSE(ReadFlag(store, settings::kAutoRefresh));
  EXPECT_TRUE(ReadFlag(store, settings::kAutoRefreshAtStart)) << "start-up has a default of its own";
  WriteFlag(store, settings::kAutoRefresh, false);
  EXPECT_FALSE(ReadFlag(store, settings::kAutoRefreshAtStart));
}

TEST(Settings, NumbersOutsideTheirRangeAreBroughtIntoIt) {
  MemorySettingsStore store;
  for (const auto& [stored, read] : {std::pair{0, 1}, {-5, 1}, {1, 1}, {100, 100}, {101, 100}}) {
    WriteInt(store, settings::kTabSize, stored);
    EXPECT_EQ(ReadInt(store, settings::kTabSize), read);
  }
}

TEST(AppProfile, KeepsTheFrameworksEncodingsBelowItsOwnKey) {
  MemorySettingsStore store;
  AppProfile profile(store);
  const WindowPlacement placement{2, WindowPlacement::kMaximised, -1, -1, -8, -8, 10, 20, 810, 620};
  profile.WriteInteger("Quill\\Find", "MatchCase", 1);
  profile.WriteText("Settings", "CurrProjFile", std::string(400, 'p'));
  profile.WriteBinary("Settings", "MainWndPos", placement.ToBytes());

  constexpr std::string_view kRoot = "HKEY_CURRENT_USER\\Software\\Quill\\Vesper Editor";
  EXPECT_EQ(store.Read(std::string(kRoot) + "\\Quill\\Find", "MatchCase"),
            (SettingsValue{RegistryType::kDword, "\1\0\0\0"s}));
  EXPECT_EQ(store.SubKeys(kRoot), (std::vector<std::string>{"Quill", "Settings"}));
  EXPECT_EQ(ReadText(profile, profile::kCurrProjFile), std::string(400, 'p')) << "no limit here";
  EXPECT_EQ(ReadInt(profile, profile::kLeftMargin), 1000);
  EXPECT_EQ(profile.ReadInteger("Settings", "MainWndPos", 5), 5) << "a value of another type is none";

  const std::string bytes = ReadBinary(profile, profile::kMainWndPos).value_or("");
  EXPECT_EQ(bytes.substr(0, 12), "\x2C\0\0\0\2\0\0\0\3\0\0\0"s);
  EXPECT_EQ(WindowPlacement::FromBytes(bytes), placement);
  EXPECT_FALSE(WindowPlacement::FromBytes(bytes.substr(1)));
  EXPECT_FALSE(WindowPlacement::FromBytes("\x2B" + bytes.substr(1)));
}

}  // namespace
}  // namespace quill
