#pragma once
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "settings/AppProfile.h"
#include "settings/SettingsStore.h"

/// The one table of every setting: name, kind, default and range. Nothing is cached by the readers: each
/// reads a value when it needs it.
namespace quill {

/// A colour reference 0x00BBGGRR.
constexpr uint32_t Rgb(uint32_t red, uint32_t green, uint32_t blue) {
  return red | green << 8 | blue << 16;
}

/// Colours of the desktop that stand in as defaults; whoever has a window hands them in.
struct DesktopColours {
  uint32_t window = Rgb(255, 255, 255);
  uint32_t buttonFace = Rgb(240, 240, 240);
};

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
  uint32_t fallback = 0;
  uint32_t DesktopColours::*system = nullptr;  ///< when set, this colour is the default

  constexpr uint32_t Fallback(const DesktopColours& colours) const {
    return system == nullptr ? fallback : colours.*system;
  }
};

/// Values of the settings key, below the current user.
namespace settings {

inline constexpr std::string_view kKeyPath = "Software\\Quill\\Settings";

// Paths and running.
inline constexpr TextSetting kKsDir{"KSDir", "c:\\program files\\KorvelStudio6"};
inline constexpr TextSetting kVslFile{"VSLFile", ""};
inline constexpr TextSetting kParamStr{"ParamStr", "-eq"};
inline constexpr FlagSetting kCurrFileRun{"CurrFileRun", false};
inline constexpr TextSetting kOnlyElements{"OnlyElements", ""};
inline constexpr TextSetting kLanguage{"Language", "English"};

// Editing and display.
inline constexpr IntegerSetting kTabSize{"TabSize", 3, 1, 100};
inline constexpr FlagSetting kAutoIndent{"AutoIndent", true};
inline constexpr FlagSetting kAutoBrackets{"AutoBrackets", true};
inline constexpr FlagSetting kBraceMatch{"BraceMatch", true};
inline constexpr FlagSetting kKeepSpaces{"KeepSpaces", false};
inline constexpr FlagSetting kShowLineNumbers{"ShowLineNumbers", true};
inline constexpr FlagSetting kShowFolding{"ShowFolding", true};
inline constexpr FlagSetting kIndentionGuide{"IndentionGuide", true};
inline constexpr FlagSetting kHighlightLine{"Highlightline", true};
/// Read only: nothing in the program writes it.
inline constexpr FlagSetting kSortCodeJumper{"SortCodeJumper", true};
inline constexpr FlagSetting kHintsWhileWriting{"HintsWhileWriting", true};
inline constexpr FlagSetting kDotComplete{"DotComplete", true};
inline constexpr FlagSetting kLoadIncluded{"LoadIncluded", false};
inline constexpr FlagSetting kAutoRefresh{"AutoRefresh", false};
/// The main frame's read at start-up takes another default than every other read; kept deliberately.
inline constexpr FlagSetting kAutoRefreshAtStart{kAutoRefresh.name, true};
inline constexpr FlagSetting kShowFullPathTitle{"ShowFullPathTitle", false};
inline constexpr TextSetting kFontName{"FontName", "Courier"};
/// What a colour scheme saves for a missing font name, and what "Defaults" writes.
inline constexpr TextSetting kSchemeFontName{kFontName.name, "COURIER"};
inline constexpr IntegerSetting kFontSize{"FontSize", 12, 1};  ///< points

// Start-up, backups, timers.
inline constexpr FlagSetting kStartBlank{"StartBlank", true};
inline constexpr FlagSetting kAutoProj{"AutoProj", true};
inline constexpr FlagSetting kEnableBackups{"EnableBackups", true};
inline constexpr IntegerSetting kBackupRemoveDays{"BackupRemoveDays", 30, 1, 999};
inline constexpr IntegerSetting kAutoSaveTimer{"AutoSaveTimer", 1, 1, 100};  ///< minutes
inline constexpr IntegerSetting kWatchUpdate{"WatchUpdate", 500, 1, 10000};  ///< milliseconds

// Colours.
inline constexpr ColourSetting kPlainColor{"PlainColor", Rgb(0, 0, 0)};
inline constexpr ColourSetting kBackColor{"BackColor", 0, &DesktopColours::window};
inline constexpr ColourSetting kCommentColor{"CommentColor", Rgb(0, 128, 0)};
inline constexpr ColourSetting kCommandColor{"CommandColor", Rgb(136, 0, 0)};
inline constexpr ColourSetting kKeywordColor{"KeywordColor", Rgb(0, 0, 255)};
inline constexpr ColourSetting kStringColor{"StringColor", Rgb(104, 104, 104)};
inline constexpr ColourSetting kNumberColor{"NumberColor", Rgb(160, 0, 160)};
inline constexpr ColourSetting kFunctionColor{"FunctionColor", Rgb(81, 81, 81)};
inline constexpr ColourSetting kVariableColor{"VariableColor", Rgb(81, 81, 81)};
inline constexpr ColourSetting kPreProcessorColor{"PreProcessorColor", Rgb(0, 128, 192)};
inline constexpr ColourSetting kHighLightColor{"HighLightColor", Rgb(255, 255, 0)};
inline constexpr ColourSetting kSelForeColor{"SelForeColor", Rgb(255, 255, 255)};
inline constexpr ColourSetting kSelBackColor{"SelBackColor", Rgb(49, 106, 197)};
inline constexpr ColourSetting kBraceColor{"BraceColor", Rgb(0, 0, 0)};
inline constexpr ColourSetting kMarginColor{"MarginColor", 0, &DesktopColours::buttonFace};
inline constexpr ColourSetting kMarginTextColor{"MarginTextColor", Rgb(0, 0, 0)};
inline constexpr ColourSetting kIndentGuideColor{"IndentGuideColor", Rgb(128, 128, 128)};
inline constexpr ColourSetting kFuncFoldColor{"FuncFoldColor", Rgb(128, 128, 128)};

// Bold switches of the syntax classes.
inline constexpr FlagSetting kTextBold{"TextBold", false};
inline constexpr FlagSetting kKeywordBold{"KeywordBold", false};
inline constexpr FlagSetting kCommentBold{"CommentBold", false};
inline constexpr FlagSetting kStringBold{"StringBold", false};
inline constexpr FlagSetting kNumberBold{"NumberBold", false};
inline constexpr FlagSetting kCommandBold{"CommandBold", false};
inline constexpr FlagSetting kFuncBold{"FuncBold", false};
inline constexpr FlagSetting kVarBold{"VarBold", false};

}  // namespace settings

bool ReadFlag(SettingsStore& store, const FlagSetting& setting);
/// A stored number outside the setting's range gives the nearest end of it.
int32_t ReadInt(SettingsStore& store, const IntegerSetting& setting);
uint32_t ReadColour(SettingsStore& store, const ColourSetting& setting, const DesktopColours& colours);
std::string ReadText(SettingsStore& store, const TextSetting& setting);

/// False when the value was not stored. Put a SettingsTransaction around several.
bool WriteFlag(SettingsStore& store, const FlagSetting& setting, bool value);
bool WriteInt(SettingsStore& store, const IntegerSetting& setting, int32_t value);
bool WriteColour(SettingsStore& store, const ColourSetting& setting, uint32_t value);
/// False as well for a text of 255 characters or more; the old one stays.
bool WriteText(SettingsStore& store, const TextSetting& setting, std::string_view text);

struct ProfileInteger {
  std::string_view section;
  std::string_view name;
  int32_t fallback;
};
struct ProfileText {
  std::string_view section;
  std::string_view name;
};
struct ProfileBinary {
  std::string_view section;
  std::string_view name;
};
/// Section and prefix of a HistoryList.
struct ProfileHistory {
  std::string_view section;
  std::string_view prefix;
};

/// Values of the application profile.
namespace profile {

inline constexpr std::string_view kSettingsSection = "Settings";
inline constexpr std::string_view kFindSection = "Quill\\Find";
inline constexpr std::string_view kReplaceSection = "Quill\\Replace";
inline constexpr std::string_view kPageSetupSection = "Quill\\PageSetup";

inline constexpr ProfileBinary kMainWndPos{kSettingsSection, "MainWndPos"};  ///< WindowPlacement
inline constexpr ProfileBinary kBarPositions{kSettingsSection, "BarPositions"};
/// How the Code Jumper's bar is divided.
inline constexpr ProfileBinary kCodeJumperPanes{kSettingsSection, "CodeJumperPanes"};
inline constexpr ProfileBinary kKeyboard{kSettingsSection, "Keyboard"};
/// Newest first.
inline constexpr ProfileText kRecentProj[] = {{kSettingsSection, "RecentProj1"},
                                              {kSettingsSection, "RecentProj2"},
                                              {kSettingsSection, "RecentProj3"},
                                              {kSettingsSection, "RecentProj4"}};
inline constexpr ProfileText kCurrProjFile{kSettingsSection, "CurrProjFile"};

inline constexpr ProfileHistory kKvstDirectories{kSettingsSection, "KVSTDirectories"};
inline constexpr ProfileHistory kVslFiles{kSettingsSection, "VSLFiles"};
inline constexpr ProfileHistory kGrepDirectories{kSettingsSection, "GrepDirectories"};
inline constexpr ProfileHistory kTextsToFind{kSettingsSection, "TextsToFind"};

inline constexpr ProfileInteger kFindMatchCase{kFindSection, "MatchCase", 0};
inline constexpr ProfileInteger kFindWholeWord{kFindSection, "WholeWord", 0};
inline constexpr ProfileText kFindWhat{kFindSection, "FindWhat"};
inline constexpr ProfileInteger kReplaceMatchCase{kReplaceSection, "MatchCase", 0};
inline constexpr ProfileInteger kReplaceWholeWord{kReplaceSection, "WholeWord", 0};
inline constexpr ProfileText kReplaceFindWhat{kReplaceSection, "FindWhat"};
inline constexpr ProfileText kReplaceWith{kReplaceSection, "ReplaceWith"};

/// Hundredths of a millimetre.
inline constexpr ProfileInteger kLeftMargin{kPageSetupSection, "LeftMargin", 1000};
inline constexpr ProfileInteger kRightMargin{kPageSetupSection, "RightMargin", 1000};
inline constexpr ProfileInteger kTopMargin{kPageSetupSection, "TopMargin", 1000};
inline constexpr ProfileInteger kBottomMargin{kPageSetupSection, "BottomMargin", 1000};

/// Percent; pixels of the contents beside the page.
inline constexpr ProfileInteger kManualZoom{"Quill\\Manual", "Zoom", 100};
inline constexpr ProfileInteger kManualSideWidth{"Quill\\Manual", "SideWidth", 260};

/// A WindowPlacement under a section named by a child window's title.
inline constexpr std::string_view kChildPlacementName = "WP";

/// Newest first.
inline constexpr ProfileText kRecentFiles[] = {{"Recent File List", "File1"},
                                               {"Recent File List", "File2"},
                                               {"Recent File List", "File3"},
                                               {"Recent File List", "File4"}};

}  // namespace profile

inline int32_t ReadInt(const AppProfile& profile, const ProfileInteger& entry) {
  return profile.ReadInteger(entry.section, entry.name, entry.fallback);
}
/// Empty when missing.
inline std::string ReadText(const AppProfile& profile, const ProfileText& entry) {
  return profile.ReadText(entry.section, entry.name);
}
inline std::optional<std::string> ReadBinary(const AppProfile& profile, const ProfileBinary& entry) {
  return profile.ReadBinary(entry.section, entry.name);
}
inline bool WriteInt(AppProfile& profile, const ProfileInteger& entry, int32_t value) {
  return profile.WriteInteger(entry.section, entry.name, value);
}
inline bool WriteText(AppProfile& profile, const ProfileText& entry, std::string_view text) {
  return profile.WriteText(entry.section, entry.name, text);
}
inline bool WriteBinary(AppProfile& profile, const ProfileBinary& entry, std::string_view bytes) {
  return profile.WriteBinary(entry.section, entry.name, bytes);
}

}  // namespace quill
