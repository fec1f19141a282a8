#include "intel/writing/HoverText.h"

#include <algorithm>

#include "base/CodePage1252.h"
#include "intel/outline/CodeWalk.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/writing/CompletionDetail.h"
#include "res/Strings.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "text/buffer/FileLines.h"

namespace quill {
namespace {

constexpr size_t kLongestHeading = 300;            ///< bytes
constexpr size_t kLargestFile = size_t{64} << 20;  ///< bytes of an included file
constexpr size_t kMostColumns = 65536;             ///< further to the right nothing is looked at

std::string_view LineOf(std::string_view text, int32_t number) {
  const std::string_view lineEnd = line_end::Bytes(DetectLineEndStyle(text));
  for (; number > 0; --number) {
    const size_t end = text.find(lineEnd);
    if (end == std::string_view::npos) return {};
    text.remove_prefix(end + lineEnd.size());
  }
  return text.substr(0, text.find(lineEnd));
}

std::string Heading(std::string_view line) {
  while (!line.empty() && cp1252::IsSpace(line.front())) line.remove_prefix(1);
  line = line.substr(0, kLongestHeading);
  while (!line.empty() && cp1252::IsSpace(line.back())) line.remove_suffix(1);
  return std::string(line);
}

bool IsAt(std::string_view line, int32_t column, std::string_view name) {
  return cp1252::EqualNoCase(IdentifierAt(line, column).In(line), name);
}

std::optional<HoverText> AboutDefinition(const CCrystalTextBuffer& buffer, int32_t line,
                                         std::string_view name, const HoverSource& source) {
  const auto function = source.facts.functions.Around(buffer, line);
  const auto place = source.definitions.Find(name, line, function ? function->at.line : -1);
  if (!place) return std::nullopt;
  const std::string number = std::to_string(place->at.line + 1);
  if (place->file == 0) {
    if (place->at.line >= buffer.LineCount()) return std::nullopt;
    const std::string_view defining = buffer.Line(place->at.line);
    if (!IsAt(defining, place->at.character, name)) return std::nullopt;
    return HoverText{{}, Heading(defining), {}, FormatText(StringId::kPlaceInScript, {number})};
  }
  const std::string& path = source.facts.includedPaths[static_cast<size_t>(place->file) - 1];
  const std::optional<std::string> text = source.read(path, kLargestFile);
  if (!text) return std::nullopt;
  const std::string_view defining = LineOf(*text, place->at.line);
  if (!IsAt(defining, place->at.character, name)) return std::nullopt;
  const std::string file = path.substr(path.rfind('/') + 1);
  return HoverText{{}, Heading(defining), {}, FormatText(StringId::kPlaceInFile, {file, number})};
}

std::optional<HoverText> AboutMember(const MemberAccess& access, std::string_view name,
                                     const Outline& outline) {
  const ObjectKind* kind = FindObjectKind(access.object, outline);
  if (kind == nullptr) return std::nullopt;
  const std::string_view meaning = MeaningOf(*kind, name);
  if (meaning.empty()) return std::nullopt;
  return HoverText{{}, std::string(kind->prefix).append(name), std::string(meaning), {}};
}

}  // namespace

std::optional<HoverText> HoverTextAt(const CCrystalTextBuffer& buffer, TextPosition place, uint32_t state,
                                     const HoverSource& source) {
  if (place.line < 0 || place.line >= buffer.LineCount()) return std::nullopt;
  const std::string_view line = buffer.Line(place.line);
  const Identifier word = IdentifierAt(line, place.character);
  const std::string_view name = word.In(line);
  const auto end = static_cast<size_t>(word.end);
  if (name.empty() || end > kMostColumns || !EndsInCode(line.substr(0, end), state)) return std::nullopt;
  std::optional<HoverText> about;
  if (const auto access = MemberAccessAt(line, word.end)) {
    about = AboutMember(*access, name, source.facts.outline);
  } else if (const int32_t command = source.commands.FindCommandIndex(name); command >= 0) {
    const std::string& parameters = source.commands.GetCommandParameters(command);
    about = HoverText{{},
                      parameters.empty() ? source.commands.GetCommandName(command) : parameters,
                      FirstSentence(source.commands.GetCommandHelp(command)),
                      {}};
  } else {
    about = AboutDefinition(buffer, place.line, name, source);
  }
  if (about) about->word = word;
  return about;
}

}  // namespace quill
