#include "shell/RecoveryJournal.h"

#include <algorithm>

#include "shell/JournalFormat.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

/// A whole text is written in records of about this size, so that damage costs little of it.
constexpr size_t kLinesRecordBytes = size_t{128} << 10;
/// A longer insertion does not go into one record.
constexpr size_t kLongestInsertion = size_t{1} << 30;

}  // namespace

RecoveryJournal::RecoveryJournal(CCrystalTextBuffer& buffer, std::string folder)
    : m_buffer(buffer), m_folder(std::move(folder)) {
  m_buffer.AddView(this);
}

RecoveryJournal::~RecoveryJournal() {
  (void)Flush();
  m_buffer.RemoveView(this);
}

void RecoveryJournal::Restart(const std::string& path, const std::string& title, const FileIdentity& file) {
  Remove();
  m_path = path;
  m_title = title;
  m_fileIdentity = file;
}

void RecoveryJournal::Remove() {
  m_file.Remove();
  ForgetRecords();
  m_baseStyle = m_writtenStyle = m_buffer.LineEndStyle();
  m_changed = false;
  m_needsSnapshot = false;
}

void RecoveryJournal::ForgetRecords() {
  m_pending.clear();
  m_editBytes = 0;
  m_compactAt = kPendingBytes;
}

void RecoveryJournal::LoseFile() {
  m_changed = true;
  NeedSnapshot();
}

bool RecoveryJournal::HasChanges() const {
  return m_changed || m_buffer.LineEndStyle() != m_baseStyle;
}

void RecoveryJournal::NeedSnapshot() {
  m_needsSnapshot = true;
  ForgetRecords();
}

// Recording

void RecoveryJournal::OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t hints,
                                     int32_t) {
  // A new text came in from outside: who brought it on purpose restarts the journal.
  const bool isReset = change == nullptr;
  if (isReset && (hints & hint::kReset) == 0) return;
  m_changed = true;
  ++m_changeCount;
  if (m_folder.empty()) return;
  if (isReset) NeedSnapshot();
  if (m_needsSnapshot) return;
  if (change->inserted) {
    RecordInsertion(change->range);
  } else {
    journal::AppendDelete(m_pending, change->range);
  }
  if (m_pending.size() >= kPendingBytes && !Flush()) NeedSnapshot();
}

void RecoveryJournal::RecordInsertion(TextRange range) {
  std::vector<std::string_view> lines;
  lines.reserve(static_cast<size_t>(range.end.line - range.start.line) + 1);
  size_t size = 0;
  for (int32_t line = range.start.line; line <= range.end.line; ++line) {
    lines.push_back(m_buffer.PieceOf(range, line));
    size += lines.back().size() + sizeof(uint32_t);
  }
  if (size > kLongestInsertion) {
    NeedSnapshot();
    return;
  }
  journal::AppendInsert(m_pending, range.start, lines);
}

// Writing

IoResult RecoveryJournal::Flush() {
  if (m_folder.empty() || !HasChanges()) return IoResult::Success();
  if (m_writtenStyle != m_buffer.LineEndStyle()) {
    m_writtenStyle = m_buffer.LineEndStyle();
    journal::AppendLineEndStyle(m_pending, m_writtenStyle);
  }
  if (m_needsSnapshot) return WriteSnapshot();
  if (m_pending.empty()) return IoResult::Success();
  if (!m_file.IsOpen()) return Begin();
  return IsOvergrown() ? WriteSnapshot() : AppendPending();
}

IoResult RecoveryJournal::Sync() {
  if (IoResult flushed = Flush(); !flushed) return flushed;
  return m_file.Sync();
}

IoResult RecoveryJournal::Begin() {
  const bool baseCanBeNamed = m_path.empty() || FileIsUnchanged();
  if (!baseCanBeNamed || !TextExceeds(kSnapshotBytes)) return WriteSnapshot();
  JournalFile file;
  if (IoResult created = file.Create(m_folder, JournalFile::NewName()); !created) return created;
  const std::string keptName = m_path.empty() ? "" : file.KeepBase(m_path);
  m_file = std::move(file);
  IoResult written = WriteReference(keptName);
  if (!written) m_file.Remove();
  return written;
}

IoResult RecoveryJournal::WriteReference(const std::string& keptName) {
  journal::Header header{
      m_path,      m_title,        m_path.empty() ? journal::Base::kEmptyText : journal::Base::kFile,
      m_baseStyle, m_fileIdentity, 0,
      keptName};
  if (!m_path.empty()) header.sampleChecksum = journal::SampleChecksum(m_path);
  std::string bytes(journal::kMagic);
  journal::AppendHeader(bytes, header);
  if (IoResult written = m_file.Append(bytes); !written) return written;
  if (IoResult written = m_file.Append(m_pending); !written) return written;
  if (IoResult published = m_file.Publish(); !published) return published;
  m_editBytes = m_pending.size();
  m_pending.clear();
  return IoResult::Success();
}

IoResult RecoveryJournal::AppendPending() {
  if (IoResult written = m_file.Append(m_pending); !written) return written;
  m_editBytes += m_pending.size();
  m_pending.clear();
  return IoResult::Success();
}

IoResult RecoveryJournal::WriteSnapshot() {
  JournalFile fresh;
  const std::string name = m_file.IsOpen() ? m_file.Name() : JournalFile::NewName();
  if (IoResult created = fresh.Create(m_folder, name); !created) return created;
  std::string bytes(journal::kMagic);
  const int32_t style = m_buffer.LineEndStyle();
  journal::AppendHeader(bytes, {m_path, m_title, journal::Base::kLines, style, m_fileIdentity, 0, {}});
  std::vector<std::string_view> lines;
  size_t size = 0;
  const int32_t count = m_buffer.LineCount();
  for (int32_t line = 0; line < count; ++line) {
    lines.push_back(m_buffer.Line(line));
    size += lines.back().size() + sizeof(uint32_t);
    if (size < kLinesRecordBytes && line + 1 < count) continue;
    journal::AppendLines(bytes, lines);
    if (IoResult written = fresh.Append(bytes); !written) return written;
    bytes.clear();
    lines.clear();
    size = 0;
  }
  journal::AppendTextComplete(bytes, count);
  if (IoResult written = fresh.Append(bytes); !written) return written;
  if (IoResult published = fresh.Publish(); !published) return published;
  m_file = std::move(fresh);  // the one of the same name that it replaces is closed
  m_file.DropBase();
  m_writtenStyle = style;
  m_needsSnapshot = false;
  ForgetRecords();
  return IoResult::Success();
}

bool RecoveryJournal::TextExceeds(size_t bytes) const {
  size_t size = 0;
  const int32_t count = m_buffer.LineCount();
  for (int32_t line = 0; line < count && size <= bytes; ++line) {
    size += static_cast<size_t>(m_buffer.LineLength(line)) + 2;
  }
  return size > bytes;
}

bool RecoveryJournal::FileIsUnchanged() const {
  return m_fileIdentity.exists && FileIdentity::Of(m_path) == m_fileIdentity;
}

bool RecoveryJournal::IsOvergrown() {
  const uint64_t edits = m_editBytes + m_pending.size();
  if (edits < m_compactAt) return false;
  m_compactAt = 2 * edits;  // measuring the text each time would cost more than it saves
  return !TextExceeds(static_cast<size_t>(edits));
}

}  // namespace quill
