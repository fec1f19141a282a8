#include "intel/HelpText.h"

#include <algorithm>
#include <vector>

#include "base/CodePage1252.h"
#include "intel/CommandDatabase.h"

namespace quill {
namespace {

constexpr std::string_view kLinkScheme = "command:";
constexpr std::string_view kExampleLine = "Example:";

std::vector<std::string_view> Lines(std::string_view help) {
  std::vector<std::string_view> lines;
  const std::string_view lineBreak = kHelpLineBreak;
  for (size_t end; (end = help.find(lineBreak)) != std::string_view::npos;) {
    lines.push_back(help.substr(0, end));
    help.remove_prefix(end + lineBreak.size());
  }
  lines.push_back(help);
  return lines;
}

}  // namespace

std::string EscapeHtml(std::string_view text) {
  std::string html;
  html.reserve(text.size() + text.size() / 8);
  for (const char c : text) {
    switch (c) {
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '&':
        html += "&amp;";
        break;
      case '"':
        html += "&quot;";
        break;
      default:
        if (const char16_t unicode = cp1252::ToUnicode(c); unicode >= 0x80) {
          html += "&#" + std::to_string(static_cast<int>(unicode)) + ';';
        } else if (c != '\0') {  // which no document may hold
          html += c;
        }
    }
  }
  return html;
}

std::string CommandLink(std::string_view command) {
  return std::string(kLinkScheme).append(command);
}

std::string_view LinkedCommand(std::string_view link) {
  return link.starts_with(kLinkScheme) ? link.substr(kLinkScheme.size()) : std::string_view();
}

std::string HtmlWithLinks(std::string_view text, const CommandDatabase& commands, std::string_view except,
                          const HelpLink& link) {
  std::string html;
  for (size_t i = 0; i < text.size();) {
    size_t end = i;
    while (end < text.size() && cp1252::IsWordChar(text[end]) == cp1252::IsWordChar(text[i])) ++end;
    const std::string_view part = text.substr(i, end - i);
    const bool isCommand = cp1252::IsWordChar(text[i]) && commands.IsCommand(part);
    const std::string target =
        isCommand && !cp1252::EqualNoCase(part, except) ? link(cp1252::ToLower(part)) : std::string();
    if (target.empty()) {
      html += EscapeHtml(part);
    } else {
      html += "<a href=\"" + EscapeHtml(target) + "\">" + EscapeHtml(part) + "</a>";
    }
    i = end;
  }
  return html;
}

std::string CommandHelpHtml(const CommandDatabase& commands, int32_t index, const HelpLink& link) {
  const std::string& name = commands.GetCommandName(index);
  const std::string& parameters = commands.GetCommandParameters(index);
  std::string html = "<h2>" + EscapeHtml(parameters.empty() ? name : parameters) + "</h2>\n";
  const std::vector<std::string_view> lines = Lines(commands.GetCommandHelp(index));
  const auto example = std::find(lines.begin(), lines.end(), kExampleLine);
  html += "<p>";
  for (auto line = lines.begin(); line != example; ++line) {
    if (line != lines.begin()) html += "<br>\n";
    html += HtmlWithLinks(*line, commands, name, link);
  }
  html += "</p>\n";
  if (example == lines.end()) return html;
  html += "<h3>Example</h3>\n<pre>";
  for (auto line = example + 1; line != lines.end(); ++line) {
    html += HtmlWithLinks(*line, commands, name, link) + '\n';
  }
  return html + "</pre>\n";
}

}  // namespace quill
