#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace quill {

class CommandDatabase;

/// Text as HTML that shows it as it is; plain ASCII, other characters as numeric references.
std::string EscapeHtml(std::string_view text);

/// The target of a link to a command; empty for no link.
using HelpLink = std::function<std::string(std::string_view command)>;
/// "command:name", which the pane answers itself.
std::string CommandLink(std::string_view command);
/// The command of such a link, or empty.
std::string_view LinkedCommand(std::string_view link);

/// A script's text as HTML in which the names of commands, but for `except`, are links.
std::string HtmlWithLinks(std::string_view text, const CommandDatabase& commands, std::string_view except,
                          const HelpLink& link);

/// A help text in its two parts, with "\n" for line breaks.
struct HelpParts {
  std::string text;
  std::string example;  ///< what follows a line "Example:"
};
HelpParts SplitHelp(std::string_view help);

/// The help of a command as the content of an HTML body: its parameters as heading, its text, and the
/// example, which follows a line "Example:", as a code block. Nothing of the text is taken as markup.
/// Throws std::invalid_argument for a position that the database does not have.
std::string CommandHelpHtml(const CommandDatabase& commands, int32_t index,
                            const HelpLink& link = CommandLink);

}  // namespace quill
