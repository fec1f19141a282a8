#include "intel/writing/ScriptTools.h"

#include <algorithm>
#include <array>

#include "base/CodePage1252.h"
#include "res/Strings.h"

namespace quill {
namespace {

constexpr size_t kBannerWidth = 30;

constexpr std::string_view kVariableTypes[] = {"var",       "var_nsave", "var_info", "string",  "bmap",
                                               "sound",     "font",      "define",   "entity*", "panel*",
                                               "text*",     "view*",     "bmap*",    "sky*",    "sound*",
                                               "material*", "string*",   "font*",    "window*"};

bool HasLineBreak(std::string_view text) {
  return text.find_first_of("\r\n") != std::string_view::npos;
}

bool IsIdentifier(std::string_view name) {
  return !name.empty() && !cp1252::IsAsciiDigit(name.front()) &&
         std::all_of(name.begin(), name.end(), [](char c) { return cp1252::IsWordChar(c); });
}

/// "[12]" or nothing.
bool IsArraySize(std::string_view text) {
  if (text.empty()) return true;
  if (text.size() < 3 || text.front() != '[' || text.back() != ']') return false;
  const std::string_view size = text.substr(1, text.size() - 2);
  return std::all_of(size.begin(), size.end(), cp1252::IsAsciiDigit);
}

std::string Enclosed(std::string_view value, char open, char close) {
  if (value.size() >= 2 && value.front() == open && value.back() == close) return std::string(value);
  return std::string(1, open).append(value) + close;
}

std::string ValueText(std::string_view type, std::string_view value) {
  if (type == "string") return Enclosed(value, '"', '"');
  if (type == "bmap" || type == "sound") return Enclosed(value, '<', '>');
  return std::string(value);
}

}  // namespace

std::string CommentBanner(std::string_view comment) {
  const std::string slashes(kBannerWidth, '/');
  return slashes + "\r\n// " + std::string(comment) + "\r\n" + slashes;
}

std::string ImageDefinition(std::string_view path) {
  const size_t separator = path.find_last_of("/\\");
  const std::string file =
      cp1252::ToUpper(separator == std::string_view::npos ? path : path.substr(separator + 1));
  return "BMAP IM_" + file.substr(0, file.find('.')) + " =<" + file + ">;";
}

std::span<const std::string_view> VariableTypes() {
  return kVariableTypes;
}

std::string VariableProblem(const VariableDraft& draft) {
  const std::string_view name = cp1252::Trimmed(draft.name);
  const size_t bracket = std::min(name.find('['), name.size());
  const bool isVar = draft.type.starts_with("var");
  if (std::find(std::begin(kVariableTypes), std::end(kVariableTypes), draft.type) ==
      std::end(kVariableTypes)) {
    return FormatText(StringId::kVariableNoType, {draft.type});
  }
  if (name.empty()) return std::string(Text(StringId::kVariableNoName));
  if (!IsIdentifier(name.substr(0, bracket))) {
    return std::string(Text(StringId::kVariableBadName));
  }
  if (!IsArraySize(name.substr(bracket)) || (!isVar && bracket < name.size())) {
    return std::string(Text(StringId::kVariableNoArray));
  }
  if (HasLineBreak(draft.value) || HasLineBreak(draft.comment)) {
    return std::string(Text(StringId::kVariableOneLine));
  }
  const std::string_view value = cp1252::Trimmed(draft.value);
  if (draft.type == "string") {
    const std::string text = ValueText(draft.type, value);
    if (std::count(text.begin(), text.end(), '"') != 2) return std::string(Text(StringId::kVariableNoQuote));
  } else if (value.find(';') != std::string_view::npos) {
    return std::string(Text(StringId::kVariableNoSemicolon));
  }
  if (value.empty() &&
      (draft.type == "bmap" || draft.type == "sound" || draft.type == "font" || draft.type == "define")) {
    return std::string(Text(StringId::kVariableNeedsValue));
  }
  return {};
}

std::string VariableDefinition(const VariableDraft& draft) {
  const std::string_view value = cp1252::Trimmed(draft.value);
  const std::string_view comment = cp1252::Trimmed(draft.comment);
  std::string text = draft.type + ' ' + std::string(cp1252::Trimmed(draft.name));
  if (!value.empty()) text += (draft.type == "define" ? ", " : " = ") + ValueText(draft.type, value);
  text += ';';
  if (!comment.empty()) text.append(" // ").append(comment);
  return text;
}

}  // namespace quill
