#include "intel/vocabulary/KeywordDatabase.h"

#include "base/CodePage1252.h"
#include "intel/vocabulary/KeywordFile.h"

namespace quill {
namespace {

DatabaseResult AddFile(const std::string& path, NameSet& set) {
  return ReadKeywordFile(path, [&set](const std::string& entry) { set.Insert(entry); });
}

}  // namespace

DatabaseResult KeywordDatabase::LoadKeywordSets(const std::string& folder) {
  m_script.Clear();
  if (DatabaseResult result = AddFile(folder + "/" + kKeywordsFileName, m_script); !result) return result;
  return AddFile(folder + "/" + kCKeywordsFileName, m_c);
}

const NameSet& KeywordDatabase::SetFor(std::string_view documentPath) const {
  const size_t dot = documentPath.rfind('.');
  if (dot == std::string_view::npos) return m_script;
  const std::string_view extension = documentPath.substr(dot);
  return cp1252::EqualNoCase(extension, ".c") || cp1252::EqualNoCase(extension, ".h") ? m_c : m_script;
}

bool KeywordDatabase::IsKeyword(std::string_view documentPath, std::string_view word) const {
  return SetFor(documentPath).Contains(cp1252::ToLower(word));
}

}  // namespace quill
