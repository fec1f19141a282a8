#pragma once
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quill {

/// What the program was asked to do.
struct CommandLine {
  enum class Action { kRun, kShowHelp, kShowVersion, kRefuse };
  struct File {
    std::string path;
    int32_t line = 0;  ///< from 1; 0 when none was given
    friend bool operator==(const File&, const File&) = default;
  };

  Action action = Action::kRun;
  std::vector<File> files;
  std::string error;  ///< when refused: one sentence

  /// `arguments` without the program's name. FILE:LINE names a line unless `fileExists` knows a file of
  /// that very name; after "--" everything is a file. The first of several options counts.
  static CommandLine Parse(std::span<const std::string> arguments,
                           const std::function<bool(const std::string&)>& fileExists);
};

/// The process's command line as one text: the program's name without its folder, a blank, and the
/// arguments with blanks between.
std::string JoinCommandLine(std::span<const std::string> programAndArguments);

/// Everything after the first blank, which ends the program's name; the whole text when it has none.
/// The last project is reopened at start when nothing remains.
std::string_view DropProgramName(std::string_view commandLine);

}  // namespace quill
