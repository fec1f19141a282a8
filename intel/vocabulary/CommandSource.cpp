#include "intel/vocabulary/CommandSource.h"

#include <algorithm>
#include <array>

#include "base/CodePage1252.h"
#include "intel/vocabulary/CommandDatabase.h"

namespace quill {
namespace {

constexpr std::string_view kFieldWord = "field ";
constexpr char kExampleHeading[] = "Example:";
constexpr int kFewestSentences = 2;
constexpr int kMostSentences = 6;
constexpr std::array<std::string_view, 14> kArgumentTypes = {
    "number", "vector", "string", "function", "bmap", "panel", "text",
    "font",   "view",   "entity", "material", "sky",  "sound", "window"};

bool IsName(std::string_view text) {
  const auto fits = [](char c) { return (c >= 'a' && c <= 'z') || cp1252::IsAsciiDigit(c) || c == '_'; };
  return !text.empty() && !cp1252::IsAsciiDigit(text.front()) && std::all_of(text.begin(), text.end(), fits);
}

bool IsPrintableAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// Full stops at the end of a word or of the text; one inside a number is none.
int CountSentences(std::string_view text) {
  int count = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '.' && (i + 1 == text.size() || text[i + 1] == ' ')) ++count;
  }
  return count;
}

/// What is wrong with one "type argument", empty when nothing is.
std::string CheckArgument(std::string_view argument) {
  std::string fault = "the argument \"";
  fault += argument;
  const size_t blank = argument.find(' ');
  if (blank == std::string_view::npos) return fault + "\" is not \"type name\"";
  const std::string_view type = argument.substr(0, blank);
  if (std::find(kArgumentTypes.begin(), kArgumentTypes.end(), type) == kArgumentTypes.end()) {
    return fault + "\" has an unknown type";
  }
  if (!IsName(argument.substr(blank + 1))) return fault + "\" has no name of a to z, 0 to 9 and \"_\"";
  return {};
}

}  // namespace

void CommandSource::AddFile(const std::string& fileName, std::string_view text) {
  m_file = fileName;
  m_line = 0;
  m_field.clear();
  while (!text.empty()) {
    const size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    ++m_line;
    ReadLine(line);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
  }
  EndCommand();
}

void CommandSource::ReadLine(std::string_view line) {
  if (line.starts_with('#')) return;
  if (cp1252::Trimmed(line).empty()) {
    EndCommand();
  } else if (!IsPrintableAscii(line)) {
    Report("the line holds a tab or a character that is not plain ASCII");
  } else if (line.front() == ' ') {
    AddHelpLine(cp1252::Trimmed(line));
  } else if (line.starts_with(kFieldWord)) {
    EndCommand();
    m_field = cp1252::Trimmed(line.substr(kFieldWord.size()));
  } else {
    EndCommand();
    BeginCommand(cp1252::Trimmed(line));
  }
}

void CommandSource::BeginCommand(std::string_view parameters) {
  CommandEntry entry;
  entry.place = Place();
  entry.field = m_field;
  entry.parameters = parameters;
  m_inCommand = true;
  m_inExample = false;
  const std::string fault = CheckParameters(parameters, entry.name);
  if (!fault.empty()) {
    Report(fault);
  } else if (m_field.empty()) {
    Report("the command stands before the first \"field\" line");
  } else if (const auto [known, isNew] = m_places.emplace(entry.name, entry.place); !isNew) {
    Report("the command \"" + entry.name + "\" is already at " + known->second);
  }
  m_commands.push_back(std::move(entry));
}

std::string CommandSource::CheckParameters(std::string_view parameters, std::string& name) const {
  const size_t open = parameters.find('(');
  if (open == std::string_view::npos || parameters.back() != ')') {
    return "expected \"name(type argument, ...)\"";
  }
  name = parameters.substr(0, open);
  if (!IsName(name)) return "the name \"" + name + "\" is not made of a to z, 0 to 9 and \"_\"";
  std::string_view rest = parameters.substr(open + 1, parameters.size() - open - 2);
  while (!rest.empty()) {
    const size_t comma = rest.find(", ");
    if (std::string fault = CheckArgument(rest.substr(0, comma)); !fault.empty()) return fault;
    if (comma == std::string_view::npos) break;
    rest.remove_prefix(comma + 2);
    if (rest.empty()) return "an argument is missing after the last comma";
  }
  return {};
}

void CommandSource::AddHelpLine(std::string_view line) {
  if (!m_inCommand) {
    Report("an indented line without a command before it");
    return;
  }
  std::string& help = m_commands.back().help;
  if (line.find(kHelpLineBreak) != std::string_view::npos) {
    Report(std::string("the line break \"") + kHelpLineBreak + "\" is written by the build, not here");
  } else if (line.starts_with('|')) {
    if (!m_inExample) help += std::string(kHelpLineBreak) + kExampleHeading;
    m_inExample = true;
    line.remove_prefix(1);
    if (line.starts_with(' ')) line.remove_prefix(1);
    (help += kHelpLineBreak) += line;
  } else if (m_inExample) {
    Report("the help text goes on after the example");
  } else {
    if (!help.empty()) help += ' ';
    help += line;
  }
}

void CommandSource::EndCommand() {
  if (!m_inCommand) return;
  m_inCommand = false;
  const CommandEntry& entry = m_commands.back();
  const std::string_view help = entry.help;
  const int sentences = CountSentences(help.substr(0, help.find(kHelpLineBreak)));
  if (sentences < kFewestSentences || sentences > kMostSentences) {
    ReportAt(entry.place, "the help text has " + std::to_string(sentences) + " sentences, wanted are " +
                              std::to_string(kFewestSentences) + " to " + std::to_string(kMostSentences));
  }
  if (!m_inExample) ReportAt(entry.place, "the help text has no example");
}

void CommandSource::ReportAt(const std::string& place, const std::string& what) {
  m_problems.push_back(place + ": " + what);
}

std::vector<std::string> CommandSource::Triples() const {
  std::vector<std::string> triples;
  triples.reserve(3 * m_commands.size());
  for (const CommandEntry& entry : m_commands) {
    triples.insert(triples.end(), {entry.name, entry.parameters, entry.help});
  }
  return triples;
}

}  // namespace quill
