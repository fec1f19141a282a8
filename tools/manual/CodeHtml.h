#pragma once
#include <span>
#include <string>
#include <string_view>

#include "intel/vocabulary/HelpText.h"

namespace quill {
class CommandDatabase;
class KeywordDatabase;
struct ObjectKind;
}  // namespace quill

namespace quill::manual {

/// What the manual knows of the language.
struct Vocabulary {
  const KeywordDatabase& keywords;
  const CommandDatabase& commands;
  std::span<const ObjectKind> kinds;  ///< whose members the manual must explain
};

/// A piece of Vesper as the content of a <pre>, coloured as the editor does: spans with the classes
/// keyword, command, comment, number, string and directive. Commands are links. `code` is ASCII.
std::string CodeHtml(std::string_view code, const Vocabulary& vocabulary, const HelpLink& link);

/// The same in a box of its own.
std::string CodeBox(std::string_view codeHtml);

}  // namespace quill::manual
