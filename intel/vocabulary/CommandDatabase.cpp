#include "intel/vocabulary/CommandDatabase.h"

#include <stdexcept>

#include "base/CodePage1252.h"
#include "base/InputFile.h"
#include "intel/vocabulary/StringListArchive.h"
#include "res/Strings.h"

namespace quill {
namespace {

constexpr size_t kStringsPerCommand = 3;

}  // namespace

DatabaseResult CommandDatabase::LoadCommandDatabase(const std::string& folder) {
  const std::string path = folder + "/" + kCommandsFileName;
  if (!PathExists(path))
    return {DatabaseResult::State::kMissing, std::string(Text(StringId::kCommandDatabaseMissing))};
  std::vector<std::string> list;
  if (ArchiveStatus read = ReadStringListFile(path, list); !read) {
    return {DatabaseResult::State::kUnreadable, read.message};
  }
  Append(list);
  return {};
}

void CommandDatabase::Append(std::span<const std::string> triples) {
  if (triples.size() % kStringsPerCommand != 0) {
    throw std::invalid_argument("the command list ends inside a command");
  }
  m_commands.reserve(m_commands.size() + triples.size() / kStringsPerCommand);
  for (size_t i = 0; i < triples.size(); i += kStringsPerCommand) {
    m_names.Insert(triples[i]);
    m_commands.push_back({triples[i], triples[i + 1], triples[i + 2]});
  }
}

bool CommandDatabase::IsCommand(std::string_view word) const {
  return m_names.Contains(cp1252::ToLower(word));
}

int32_t CommandDatabase::FindCommandIndex(std::string_view name) const {
  const int32_t count = Count();
  for (int32_t step = 1; step <= count; ++step) {
    const int32_t index = step % count;
    if (cp1252::EqualNoCase(m_commands[static_cast<size_t>(index)].name, name)) return index;
  }
  return -1;
}

const CommandDatabase::Command& CommandDatabase::At(int32_t index) const {
  if (index < 0 || index >= Count()) throw std::invalid_argument("no such command position");
  return m_commands[static_cast<size_t>(index)];
}

}  // namespace quill
