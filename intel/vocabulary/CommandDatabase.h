#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/NameSet.h"
#include "intel/vocabulary/DatabaseResult.h"

namespace quill {

inline constexpr char kCommandsFileName[] = "KVSTCommands.db";
/// What a help text holds where its author wants a line break.
inline constexpr char kHelpLineBreak[] = "#10#13";

/// The engine's commands with their parameter and help texts, loaded once at start-up. Positions
/// follow the file and never shift.
class CommandDatabase {
 public:
  /// Reads "KVSTCommands.db" in `folder` and appends its commands. Throws std::invalid_argument when
  /// the file's number of strings is not a multiple of three.
  DatabaseResult LoadCommandDatabase(const std::string& folder);

  /// Appends commands given as name, parameter text, help text, and so on. Throws
  /// std::invalid_argument, and appends nothing, when the last triple is incomplete.
  void Append(std::span<const std::string> triples);

  /// The word is compared in lower case: a name stored with a capital letter never matches.
  bool IsCommand(std::string_view word) const;
  /// The names as stored.
  const NameSet& Names() const { return m_names; }

  /// Position of a name, ignoring case, or -1. The search starts at position 1 and wraps, so a
  /// duplicate is found before the command at position 0.
  int32_t FindCommandIndex(std::string_view name) const;

  int32_t Count() const { return static_cast<int32_t>(m_commands.size()); }
  /// These throw std::invalid_argument for a position outside 0 to Count() - 1.
  const std::string& GetCommandName(int32_t index) const { return At(index).name; }
  const std::string& GetCommandParameters(int32_t index) const { return At(index).parameters; }
  /// With `kHelpLineBreak` as stored; the pane that shows the text breaks its lines.
  const std::string& GetCommandHelp(int32_t index) const { return At(index).help; }

 private:
  struct Command {
    std::string name, parameters, help;
  };
  const Command& At(int32_t index) const;

  NameSet m_names;
  std::vector<Command> m_commands;
};

}  // namespace quill
