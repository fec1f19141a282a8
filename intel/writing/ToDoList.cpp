#include "intel/writing/ToDoList.h"

#include "base/AtomicFile.h"
#include "base/InputFile.h"
#include "res/Strings.h"

namespace quill {
namespace {

/// Bytes; more than this is no list that somebody typed.
constexpr uint64_t kLargestList = uint64_t{1} << 30;

/// Drops the CR of line ends, in place; a lone CR ends a line as well.
void MakeLineFeeds(std::string& text) {
  size_t kept = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool isCr = text[i] == '\r';
    if (isCr && i + 1 < text.size() && text[i + 1] == '\n') continue;
    text[kept++] = isCr ? '\n' : text[i];
  }
  text.resize(kept);
}

}  // namespace

std::string ToDoList::Load() {
  m_unreadable = PathExists(m_path);
  InputFile file;
  if (!file.Open(m_path) || file.Size() > kLargestList) return {};
  std::string text(static_cast<size_t>(file.Size()), '\0');
  size_t got = 0;
  if (!file.Read(text.data(), text.size(), got)) return {};
  text.resize(got);
  MakeLineFeeds(text);
  m_unreadable = false;
  return text;
}

IoResult ToDoList::Save(std::string_view text) {
  if (m_unreadable && text.empty()) return IoResult::Failure(std::string(Text(StringId::kToDoListKept)));
  AtomicFile file(m_path);
  if (IoResult open = file.Open(); !open) return open;
  while (!text.empty()) {
    const size_t end = text.find('\n');
    if (IoResult written = file.Write(text.substr(0, end)); !written) return written;
    if (end == std::string_view::npos) break;
    if (IoResult written = file.Write("\r\n"); !written) return written;
    text.remove_prefix(end + 1);
  }
  return file.Commit();
}

}  // namespace quill
