#pragma once
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// The readable source of the command database, from which the build makes "KVSTCommands.db".
///
///     # A line that begins with "#" is a comment.
///     field Sound
///
///     snd_stop(number handle)
///       Ends the sound that was started with this handle. A handle whose sound is over does
///       nothing.
///       | snd_stop(engine_handle);
///
/// A `field` line is the heading for the commands that follow. A command is its parameter text,
/// "name(type argument, ...)", in column 0, then its help in indented lines: two to six sentences,
/// joined with blanks, and last an example, whose lines begin with "|". A blank line ends the command.
namespace quill {

struct CommandEntry {
  std::string field;
  std::string name;
  std::string parameters;  ///< "name(type argument, ...)"
  std::string help;        ///< as stored in the database, with "#10#13" for line breaks
  std::string place;       ///< "file:line" of the parameter text
};

/// Reads source files one after the other and collects their commands and every fault found in them.
class CommandSource {
 public:
  /// `fileName` is for messages only.
  void AddFile(const std::string& fileName, std::string_view text);

  /// In the order of reading; complete only when there are no problems.
  const std::vector<CommandEntry>& Commands() const { return m_commands; }
  /// "file:line: what is wrong", in the order of reading.
  const std::vector<std::string>& Problems() const { return m_problems; }
  /// Name, parameter text and help text of each command, as the database stores them.
  std::vector<std::string> Triples() const;

 private:
  void ReadLine(std::string_view line);
  void BeginCommand(std::string_view parameters);
  void AddHelpLine(std::string_view line);
  void EndCommand();
  std::string CheckParameters(std::string_view parameters, std::string& name) const;
  void Report(const std::string& what) { ReportAt(Place(), what); }
  void ReportAt(const std::string& place, const std::string& what);
  std::string Place() const { return m_file + ":" + std::to_string(m_line); }

  std::vector<CommandEntry> m_commands;
  std::vector<std::string> m_problems;
  std::unordered_map<std::string, std::string> m_places;  ///< of each name

  std::string m_file;
  int m_line = 0;
  std::string m_field;
  bool m_inCommand = false;
  bool m_inExample = false;
};

}  // namespace quill
