#include "shell/RecoveryFolder.h"

#include <algorithm>
#include <filesystem>
#include <new>

#include "base/StateFolder.h"
#include "res/Strings.h"
#include "shell/FileText.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

bool IsTheBase(const std::string& path, const journal::Header& header) {
  return FileIdentity::Of(path) == header.file && journal::SampleChecksum(path) == header.sampleChecksum;
}

ReplayResult ReplayFile(const JournalFile& file, CCrystalTextBuffer& text) {
  const MappedBytes bytes = file.Map();
  const auto loadBase = [&file](const journal::Header& header, CCrystalTextBuffer& buffer) {
    const std::string kept = (std::filesystem::path(file.Folder()) / header.keptName).string();
    for (const std::string& path : {header.path, kept}) {
      if (IsTheBase(path, header)) return buffer.LoadFile(path, header.style);
    }
    return IoResult::Failure(FormatText(StringId::kFileChangedSince, {header.path}));
  };
  return ReplayJournal(bytes.View(), loadBase, text);
}

/// Nothing would be lost without the journal.
bool IsSafeElsewhere(const ReplayResult& found, const CCrystalTextBuffer& text) {
  if (found.text == RecoveredText::kNothing) return true;
  if (found.text == RecoveredText::kTypedOnly) return false;
  const bool empty = text.LineCount() == 1 && text.LineLength(0) == 0;
  return found.header->path.empty() ? empty : FileHoldsText(found.header->path, text);
}

}  // namespace

RecoverableDocument::RecoverableDocument(JournalFile file, ReplayResult found)
    : m_file(std::move(file)), m_found(std::move(found)) {}

bool RecoverableDocument::FileChangedSince() const {
  return !Path().empty() && FileIdentity::Of(Path()) != m_found.header->file;
}

RecoveredText RecoverableDocument::Read(CCrystalTextBuffer& text) const {
  return ReplayFile(m_file, text).text;
}

std::string DefaultRecoveryFolder() {
  const std::string state = StateFolder();
  return state.empty() ? state : state + "/recovery";
}

std::vector<RecoverableDocument> FindRecoverable(const std::string& folder) {
  std::vector<RecoverableDocument> documents;
  for (const std::string& name : JournalFile::ListAndClean(folder)) {
    JournalFile file;
    if (!file.Adopt(folder, name)) continue;
    try {
      CCrystalTextBuffer text;
      ReplayResult found = ReplayFile(file, text);
      if (!found.header) continue;  // of another version, or beyond reading: not ours to delete
      if (IsSafeElsewhere(found, text)) {
        file.Remove();
      } else {
        documents.emplace_back(std::move(file), std::move(found));
      }
    } catch (const std::bad_alloc&) {
      continue;  // stays for a run with more memory
    }
  }
  std::stable_sort(documents.begin(), documents.end(),
                   [](const auto& a, const auto& b) { return a.Time() < b.Time(); });
  return documents;
}

}  // namespace quill
