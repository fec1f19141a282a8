#include "intel/writing/CompletionDetail.h"

#include <algorithm>
#include <span>

#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/HelpText.h"
#include "intel/writing/CodeTemplates.h"

namespace quill {
namespace {

constexpr size_t kLongestHeading = 300;  ///< bytes; a definition may be as long as its line
constexpr int kMostTemplateLines = 12;

/// The lines that a template begins with, as they would be written.
std::string TextOfTemplate(const CodeTemplates& templates, const std::string& name) {
  if (!templates.Has(name)) return {};  // the file has gone meanwhile
  const std::string written = templates.Expand(name, {{}, "    "}).text;
  std::string text;
  int lines = 0;
  for (const char c : written) {
    if (c == '\n' && ++lines == kMostTemplateLines) return text + "...";
    if (c != '\r') text += c;
  }
  return text;
}

/// The first one in the Code Jumper's tree.
std::string DefinitionOf(std::string_view name, const Outline& outline) {
  const std::span<const OutlineRef> all = outline.Defining(name);
  const auto first = std::min_element(all.begin(), all.end(), [&outline](OutlineRef a, OutlineRef b) {
    return outline.RootOf(a) < outline.RootOf(b);
  });
  return std::string(first == all.end() ? name : outline.TextOf(*first).substr(0, kLongestHeading));
}

}  // namespace

std::string FirstSentence(std::string_view help) {
  std::string text = SplitHelp(help).text;
  const size_t end = std::min(text.find(". "), text.find('\n'));
  if (end != std::string::npos) text.resize(end + (text[end] == '.' ? 1 : 0));
  return text;
}

CompletionDetail DetailOf(const CompletionList& list, size_t row, const ObjectKind* object,
                          const CommandDatabase& commands, const Outline& outline,
                          const CodeTemplates& templates) {
  const std::string name(list.Name(row));
  if (list.Kind(row) == CompletionKind::kTemplate) return {name, TextOfTemplate(templates, name)};
  if (const int32_t command = list.Command(row); command >= 0) {
    const std::string& parameters = commands.GetCommandParameters(command);
    return {parameters.empty() ? name : parameters, FirstSentence(commands.GetCommandHelp(command))};
  }
  if (object != nullptr) return {std::string(object->prefix) + name, std::string(MeaningOf(*object, name))};
  if (list.Kind(row) == CompletionKind::kKeyword) return {name, {}};
  return {DefinitionOf(name, outline), {}};
}

}  // namespace quill
