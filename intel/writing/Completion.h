#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "intel/outline/Outline.h"
#include "intel/writing/CompletionNames.h"
#include "intel/writing/ObjectMembers.h"

namespace quill {

/// What can be completed at a place of a line.
struct CompletionRequest {
  int32_t start = 0;  ///< of the word begun, which ends at the caret
  int32_t end = 0;    ///< of the whole word: taking a name replaces [start, end)
  std::string_view begun;
  /// Its members are wanted; null for names of every kind.
  const ObjectKind* object = nullptr;
  bool inCode = true;  ///< no comment, string or preprocessor line: where a list may open by itself
};
/// `state` holds the parse_state bits at the line's start. Nothing behind a "." whose object is not known.
std::optional<CompletionRequest> CompletionAt(std::string_view line, int32_t column, uint32_t state,
                                              const Outline& outline);

/// The list as it narrows: the names that begin with the word begun, then those that contain it, then those
/// that have its characters in their order; each group in alphabetical order, case ignored.
class CompletionList {
 public:
  /// Opens with the names that fit `begun`.
  CompletionList(std::shared_ptr<const CompletionNames> names, std::string_view begun);

  /// The word grew, shrank or changed. An empty list is to be closed.
  void Narrow(std::string_view begun);

  size_t Count() const { return m_shown.size(); }
  std::string_view Name(size_t row) const { return m_names->Name(m_shown[row]); }
  CompletionKind Kind(size_t row) const { return m_names->Kind(m_shown[row]); }
  int32_t Command(size_t row) const { return m_names->Command(m_shown[row]); }
  const std::string& Begun() const { return m_begun; }

 private:
  void ShowAll();

  std::shared_ptr<const CompletionNames> m_names;
  std::string m_begun;                 ///< in lower case
  std::vector<uint32_t> m_candidates;  ///< what fits `m_begun`, in alphabetical order
  std::vector<uint32_t> m_shown;
};

/// Keys as far as the list tells them apart.
enum class CompletionKey : uint8_t {
  kUpOrDown,  ///< a line or a page
  kTab,
  kEnter,
  kEscape,
  kWordCharacter,
  kBackspace,
  kOther,  ///< any other character, motion or command
};

/// What a key does while the list is visible.
enum class CompletionStep : uint8_t {
  kMove,           ///< selects another row
  kTake,           ///< writes the selected name and closes the list
  kClose,          ///< nothing but that
  kTypeAndNarrow,  ///< goes to the text; then the list narrows
  kTypeAndClose,   ///< goes to the text as if there were no list
};

/// Decides about keys. Enter belongs to the text until the user has chosen a row with keys or mouse, so
/// that a list which opened by itself never swallows the end of a line.
class CompletionKeys {
 public:
  CompletionStep On(CompletionKey key);
  /// A row was clicked.
  void Chose() { m_chosen = true; }
  bool HasChosen() const { return m_chosen; }

 private:
  bool m_chosen = false;
};

}  // namespace quill
