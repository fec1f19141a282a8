#include "intel/writing/CompletionDetail.h"

#include "base/CodePage1252.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/HelpText.h"

namespace quill {
namespace {

constexpr size_t kLongestHeading = 300;  ///< bytes; a definition may be as long as its line

/// A help text up to the end of its first sentence or paragraph.
std::string FirstSentence(std::string text) {
  const size_t end = std::min(text.find(". "), text.find('\n'));
  if (end != std::string::npos) text.resize(end + (text[end] == '.' ? 1 : 0));
  return text;
}

std::string DefinitionOf(std::string_view name, const Outline& outline) {
  for (const auto& items : outline.roots) {
    for (const OutlineItem& item : items) {
      if (cp1252::EqualNoCase(DefinedWord(item.text), name)) return item.text.substr(0, kLongestHeading);
    }
  }
  return std::string(name);
}

}  // namespace

CompletionDetail DetailOf(const CompletionList& list, size_t row, const ObjectKind* object,
                          const CommandDatabase& commands, const Outline& outline) {
  const std::string name(list.Name(row));
  if (const int32_t command = list.Command(row); command >= 0) {
    const std::string& parameters = commands.GetCommandParameters(command);
    return {parameters.empty() ? name : parameters,
            FirstSentence(SplitHelp(commands.GetCommandHelp(command)).text)};
  }
  if (object != nullptr) return {std::string(object->prefix) + name, std::string(MeaningOf(*object, name))};
  if (list.Kind(row) == CompletionKind::kKeyword) return {name, {}};
  return {DefinitionOf(name, outline), {}};
}

}  // namespace quill
