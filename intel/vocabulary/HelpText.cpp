#include "intel/vocabulary/HelpText.h"

#include "base/CodePage1252.h"
#include "intel/vocabulary/CommandDatabase.h"

namespace quill {
namespace {

constexpr std::string_view kLinkScheme = "command:";
constexpr std::string_view kExampleLine = "Example:\n";

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

HelpParts SplitHelp(std::string_view help) {
  const std::string_view lineBreak = kHelpLineBreak;
  std::string text;
  for (size_t end; (end = help.find(lineBreak)) != std::string_view::npos;) {
    text.append(help.substr(0, end)) += '\n';
    help.remove_prefix(end + lineBreak.size());
  }
  text += help;
  const size_t example = text.starts_with(kExampleLine) ? 0 : text.find('\n' + std::string(kExampleLine));
  if (example == std::string::npos) return {text, {}};
  return {text.substr(0, example), text.substr(text.find(kExampleLine, example) + kExampleLine.size())};
}

std::string CommandHelpHtml(const CommandDatabase& commands, int32_t index, const HelpLink& link) {
  const std::string& name = commands.GetCommandName(index);
  const std::string& parameters = commands.GetCommandParameters(index);
  std::string html = "<h2>" + EscapeHtml(parameters.empty() ? name : parameters) + "</h2>\n";
  const HelpParts help = SplitHelp(commands.GetCommandHelp(index));
  html += "<p>";
  for (const char c : HtmlWithLinks(help.text, commands, name, link)) {
    html += c == '\n' ? std::string("<br>\n") : std::string(1, c);
  }
  html += "</p>\n";
  if (help.example.empty()) return html;
  return html + "<h3>Example</h3>\n<pre>" + HtmlWithLinks(help.example, commands, name, link) + "</pre>\n";
}

}  // namespace quill
