// Loading and saving of CCrystalTextBuffer.

#include <limits>
#include <new>

#include "base/AtomicFile.h"
#include "base/InputFile.h"
#include "base/UiThread.h"
#include "res/Strings.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "text/buffer/FileLines.h"
#include "text/buffer/LineFlagStore.h"

namespace quill {
namespace {

constexpr size_t kMostLines = std::numeric_limits<int32_t>::max();

}  // namespace

IoResult CCrystalTextBuffer::LoadFile(const std::string& path, int32_t style) {
  AssertUiThread();
  std::string section = path;  // `path` may be our own section, which clearing empties
  ClearBuffer();
  IoResult loaded = IoResult::Success();
  try {
    loaded = LoadLines(section, style);
  } catch (const std::bad_alloc&) {
    loaded = IoResult::Refusal(StringId::kCannotOpen, section, StringId::kReasonNoMemory);
  }
  if (loaded) {
    m_profileSection = std::move(section);
    RestoreStoredFlags();
    m_initialised = true;
  } else {
    ClearBuffer();
  }
  SetModified(false);
  NotifyViews(nullptr, nullptr, hint::kReset, -1);
  return loaded;
}

IoResult CCrystalTextBuffer::LoadLines(const std::string& path, int32_t style) {
  InputFile file;
  if (IoResult opened = file.Open(path); !opened) return opened;
  FileLines lines(m_pool, file);
  IoResult read = lines.Read(style, [this](char* text, int32_t length) {
    if (m_lines.Size() >= kMostLines) return false;
    m_lines.PushBack({text, length, 0, 0});
    return true;
  });
  m_style = m_savedStyle = lines.Style();
  m_readOnly = file.IsReadOnly();
  return read;
}

void CCrystalTextBuffer::TakeLoaded(CCrystalTextBuffer& other) {
  AssertUiThread();
  std::string section = other.m_profileSection;
  const bool readOnly = other.m_readOnly;
  ClearBuffer();
  m_lines.Swap(other.m_lines);
  m_pool.Swap(other.m_pool);
  other.ClearBuffer();
  m_style = m_savedStyle = other.m_style;
  m_readOnly = readOnly;
  m_profileSection = std::move(section);
  RestoreStoredFlags();
  m_initialised = true;
  SetModified(false);
  NotifyViews(nullptr, nullptr, hint::kReset, -1);
}

void CCrystalTextBuffer::RestoreStoredFlags() {
  if (m_store == nullptr) return;
  for (const auto& [line, flags] : m_store->ReadAll(m_profileSection)) {
    if (line >= 0 && line < LineCount()) Record(line).flags = flags;
  }
}

IoResult CCrystalTextBuffer::SaveFile(const std::string& path, int32_t style, bool clearModified) {
  AssertUiThread();
  const std::string_view end = line_end::Bytes(style == line_end::kAutomatic ? m_style : style);
  if (!m_initialised) return IoResult::Refusal(StringId::kCannotWrite, path, StringId::kReasonNoText);
  AtomicFile file(path);
  if (IoResult opened = file.Open(); !opened) return opened;
  const int32_t count = LineCount();
  for (int32_t line = 0; line < count; ++line) {
    if (IoResult written = file.Write(Line(line)); !written) return written;
    if (line + 1 == count) break;
    if (IoResult written = file.Write(end); !written) return written;
  }
  if (IoResult committed = file.Commit(m_createBackup ? ".bak" : ""); !committed) return committed;
  if (clearModified) {
    m_history.MarkSaved();
    m_savedStyle = m_style;
    SetModified(false);
  }
  return IoResult::Success();
}

}  // namespace quill
