#pragma once
#include <functional>
#include <optional>
#include <string_view>

#include "base/IoResult.h"
#include "shell/JournalFormat.h"

namespace quill {

class CCrystalTextBuffer;

/// How much of a document a journal gave back.
enum class RecoveredText {
  kNothing,    ///< not a journal, or nothing in it
  kWhole,      ///< the text as it was when the last whole record was written
  kBeginning,  ///< the journal breaks off within the text: its first lines
  kTypedOnly,  ///< the file that the changes apply to is not as it was: only what was typed
};

struct ReplayResult {
  RecoveredText text = RecoveredText::kNothing;
  std::optional<journal::Header> header;
  /// Bytes remain that are no whole record: the last one was cut short, or the file is damaged.
  bool cutShort = false;
};

/// Loads the file that a journal refers to; refuses one that is not as the header says.
using BaseLoader = std::function<IoResult(const journal::Header&, CCrystalTextBuffer&)>;

/// Plays a journal, or any prefix of one, into a buffer, whose text is replaced. Takes any bytes.
ReplayResult ReplayJournal(std::string_view bytes, const BaseLoader& loadBase, CCrystalTextBuffer& text);

}  // namespace quill
