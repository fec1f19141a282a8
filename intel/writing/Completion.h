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

/// Whether so much of a word is written, in code, that a list of what it may become helps more than it
/// disturbs. A number and a name that the line is about to define become nothing that is known.
bool OpensByItself(std::string_view line, const CompletionRequest& request);

/// One name of the list.
struct CompletionEntry {
  std::string name;
  CompletionKind kind = CompletionKind::kVariable;
  int32_t command = -1;  ///< position in the command database; -1 for what is no command
};

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
  CompletionEntry Entry(size_t row) const { return {std::string(Name(row)), Kind(row), Command(row)}; }
  const std::string& Begun() const { return m_begun; }
  /// Whether a name begins with the word begun.
  bool HasBeginnings() const;
  /// Rows with the longest names, the longest first: those that decide how wide the list has to be.
  std::vector<size_t> LongestRows(size_t most) const;

 private:
  void ShowAll();

  std::shared_ptr<const CompletionNames> m_names;
  std::string m_begun;                 ///< in lower case
  std::vector<uint32_t> m_candidates;  ///< what fits `m_begun`, in alphabetical order
  std::vector<uint32_t> m_shown;
};

/// Keys as far as the list tells them apart.
enum class CompletionKey : uint8_t {
  kDown,
  kUpOrPage,
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
  kConfirm,        ///< the row that is selected already is the one that the user chooses
  kTake,           ///< writes the selected name and closes the list
  kClose,          ///< nothing but that
  kTypeAndNarrow,  ///< goes to the text; then the list narrows
  kTypeAndClose,   ///< goes to the text as if there were no list
};

/// Decides about keys. In a list that opened by itself Enter belongs to the text until the user has chosen
/// a row with keys or mouse, so that it never swallows the end of a line.
class CompletionKeys {
 public:
  /// `asked`: the user wanted the list.
  explicit CompletionKeys(bool asked = false) : m_asked(asked) {}

  /// `idle`: taking the selected row would change nothing, or the key has something else to do here. It is
  /// the text's then, unless the row was chosen.
  CompletionStep On(CompletionKey key, bool idle = false);
  /// A row was clicked.
  void Chose() { m_chosen = true; }
  bool HasChosen() const { return m_chosen; }

 private:
  bool m_asked;
  bool m_chosen = false;
};

}  // namespace quill
