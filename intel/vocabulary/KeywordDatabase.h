#pragma once
#include <string>
#include <string_view>

#include "base/NameSet.h"
#include "intel/vocabulary/DatabaseResult.h"

namespace quill {

/// The keywords of Vesper and of C. Filled before the first document opens; afterwards only by
/// another `LoadKeywordSets` on the same thread.
class KeywordDatabase {
 public:
  /// Reads "Keywords.db" and then "cKeywords.db" in `folder`. The script keywords are replaced; the C
  /// keywords are only added to, so that a keyword once known stays until the program ends. Stops at
  /// the first file that is missing or unreadable.
  DatabaseResult LoadKeywordSets(const std::string& folder);

  /// The set for a document: C's when the path ends in ".c" or ".h" in any case, else the script's.
  /// The reference stays valid, and follows a reload, as long as the database lives.
  const NameSet& SetFor(std::string_view documentPath) const;

  /// The word is compared in lower case: an entry with a capital letter never matches.
  bool IsKeyword(std::string_view documentPath, std::string_view word) const;

  const NameSet& ScriptKeywords() const { return m_script; }
  const NameSet& CKeywords() const { return m_c; }

 private:
  NameSet m_script;
  NameSet m_c;
};

}  // namespace quill
