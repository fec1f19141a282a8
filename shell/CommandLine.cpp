#include "shell/CommandLine.h"

#include <charconv>

#include "res/Strings.h"

namespace quill {
namespace {

CommandLine::File ParseFile(const std::string& argument,
                            const std::function<bool(const std::string&)>& fileExists) {
  const size_t colon = argument.rfind(':');
  if (colon == std::string::npos || colon == 0 || fileExists(argument)) return {argument, 0};
  int32_t line = 0;
  const char* const end = argument.data() + argument.size();
  const auto [rest, error] = std::from_chars(argument.data() + colon + 1, end, line);
  if (error != std::errc() || rest != end || line < 1) return {argument, 0};
  return {argument.substr(0, colon), line};
}

}  // namespace

CommandLine CommandLine::Parse(std::span<const std::string> arguments,
                               const std::function<bool(const std::string&)>& fileExists) {
  CommandLine result;
  bool optionsEnded = false;
  for (const std::string& argument : arguments) {
    if (argument.empty()) continue;
    if (optionsEnded || argument.front() != '-') {
      result.files.push_back(ParseFile(argument, fileExists));
    } else if (argument == "--") {
      optionsEnded = true;
    } else if (argument == "-h" || argument == "--help") {
      return {Action::kShowHelp, {}, {}};
    } else if (argument == "-v" || argument == "--version") {
      return {Action::kShowVersion, {}, {}};
    } else {
      return {Action::kRefuse, {}, FormatText(StringId::kUnknownOption, {argument})};
    }
  }
  return result;
}

std::string JoinCommandLine(std::span<const std::string> programAndArguments) {
  if (programAndArguments.empty()) return {};
  const std::string& program = programAndArguments.front();
  std::string line = program.substr(program.rfind('/') + 1) + ' ';
  for (size_t i = 1; i < programAndArguments.size(); ++i) {
    if (i > 1) line += ' ';
    line += programAndArguments[i];
  }
  return line;
}

std::string_view DropProgramName(std::string_view commandLine) {
  const size_t blank = commandLine.find(' ');
  return blank == std::string_view::npos ? commandLine : commandLine.substr(blank + 1);
}

}  // namespace quill
