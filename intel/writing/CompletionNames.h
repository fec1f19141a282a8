#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/NameSet.h"
#include "intel/outline/Outline.h"
#include "intel/writing/ObjectMembers.h"

namespace quill {

class CommandDatabase;

/// What a name in the completion list stands for. Where one name is several things, the first counts; a
/// template stands beside what else has its name.
enum class CompletionKind : uint8_t {
  kTemplate,
  kVariable,
  kObject,
  kFunction,
  kAction,
  kMember,
  kCommand,
  kKeyword
};
/// The base name of the kind's icon in res/icons.
std::string_view CompletionIcon(CompletionKind kind);
/// Of what the script defines.
CompletionKind KindOfRoot(OutlineRoot root);

/// Names to complete from, in alphabetical order, each once, ignoring case. Does not change any more.
class CompletionNames {
 public:
  /// A longer name is left out: nobody reads it in a list.
  static constexpr size_t kLongestName = 1024;

  CompletionNames() = default;
  /// Everything that a word may be: what the script and its includes define, commands, keywords, and of
  /// the templates those whose names are words.
  CompletionNames(const Outline& outline, const CommandDatabase& commands, const NameSet& keywords,
                  const std::vector<std::string>& templates = {});
  /// What may follow an object's name and ".".
  explicit CompletionNames(const ObjectKind& kind);

  size_t Count() const { return m_names.size(); }
  std::string_view Name(size_t index) const { return Text(m_text, index); }
  /// The same in lower case.
  std::string_view LowerName(size_t index) const { return Text(m_lower, index); }
  CompletionKind Kind(size_t index) const { return m_names[index].kind; }
  /// Position in the command database; -1 for what is no command.
  int32_t Command(size_t index) const { return m_names[index].command; }

 private:
  struct Entry {
    size_t start;
    size_t length;
    CompletionKind kind;
    int32_t command;
  };
  std::string_view Text(const std::string& all, size_t index) const {
    return std::string_view(all).substr(m_names[index].start, m_names[index].length);
  }
  void Add(std::string_view name, CompletionKind kind, int32_t command = -1);
  void Sort();

  std::string m_text;  ///< all names in one piece
  std::string m_lower;
  std::vector<Entry> m_names;
};

}  // namespace quill
