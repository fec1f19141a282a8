#pragma once
#include <cstdint>
#include <string_view>

namespace quill {

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

}  // namespace quill
