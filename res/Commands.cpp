#include "res/Commands.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "res/CommandTables.h"

namespace quill {
namespace {

struct Catalogue {
  std::vector<Command> commands;
  std::unordered_map<int, const Command*> byId;
  std::unordered_map<std::string_view, const Command*> byName;

  Catalogue() {
    for (const auto& table : {FileAndEditCommands(), ScriptCommands(), DebugCommands(), WindowCommands()})
      commands.insert(commands.end(), table.begin(), table.end());
    for (const Command& command : commands) {
      byId.emplace(static_cast<int>(command.id), &command);
      byName.emplace(command.name, &command);
    }
  }
};

const Catalogue& TheCatalogue() {
  static const Catalogue catalogue;
  return catalogue;
}

template <typename Map, typename Key>
const Command* Find(const Map& map, Key key) {
  const auto found = map.find(key);
  return found == map.end() ? nullptr : found->second;
}

struct Missing {
  CommandArea area;
  StringId reason;
};

/// What is not built yet. The row of an area leaves this table when its feature arrives.
// clang-format off
constexpr Missing kMissing[] = {
    {CommandArea::kProjects, StringId::kReasonProjects},
    {CommandArea::kDebugging, StringId::kReasonDebugging},
    {CommandArea::kWatches, StringId::kReasonWatches},
    {CommandArea::kSuiteTools, StringId::kReasonSuiteTools},
    {CommandArea::kPlugins, StringId::kReasonPlugins},
    {CommandArea::kOptionsPages, StringId::kReasonOptions},
    {CommandArea::kKeyboardPage, StringId::kReasonKeyboard},
};
// clang-format on

}  // namespace

std::span<const Command> Commands() {
  return TheCatalogue().commands;
}

const Command* FindCommand(CommandId id) {
  return Find(TheCatalogue().byId, static_cast<int>(id));
}

const Command* FindCommand(std::string_view name) {
  return Find(TheCatalogue().byName, name);
}

std::string_view UnavailableReason(CommandArea area) {
  for (const Missing& missing : kMissing) {
    if (missing.area == area) return Text(missing.reason);
  }
  return {};
}

std::span<const std::string_view> ShortcutsOf(const Command& command) {
  const auto& keys = command.shortcuts;
  const auto end = std::find(keys.begin(), keys.end(), std::string_view());
  return {keys.data(), static_cast<size_t>(end - keys.begin())};
}

std::string PlainLabel(std::string_view menuText) {
  constexpr std::string_view kEllipsis = "...";
  menuText = menuText.substr(0, menuText.find('\t'));
  if (menuText.ends_with(kEllipsis)) menuText.remove_suffix(kEllipsis.size());
  std::string label;
  for (size_t i = 0; i < menuText.size(); ++i) {
    if (menuText[i] == '&' && ++i == menuText.size()) break;
    label += menuText[i];
  }
  return label;
}

}  // namespace quill
