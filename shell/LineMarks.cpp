#include "shell/LineMarks.h"

#include <filesystem>
#include <map>

#include "text/buffer/CrystalTextBuffer.h"
#include "text/buffer/LineFlagStore.h"

namespace quill::line_marks {

void Save(const CCrystalTextBuffer& buffer, const std::string& path, LineFlagStore& store) {
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return;
  const int32_t count = buffer.LineCount();
  std::map<int32_t, uint32_t> stored;
  for (const auto& [line, flags] : store.ReadAll(path)) {
    if (line >= 0 && line < count) stored[line] = flags;
  }
  std::vector<LineFlagStore::Word> changed;
  for (int32_t line = 0; line < count; ++line) {
    const uint32_t flags = buffer.LineFlags(line);
    if (flags == 0) continue;
    const auto before = stored.find(line);
    if (before == stored.end() || before->second != flags) changed.emplace_back(line, flags);
    if (before != stored.end()) stored.erase(before);
  }
  for (const auto& [line, flags] : stored) changed.emplace_back(line, 0);
  if (!changed.empty()) store.Write(path, changed);
}

void Restore(CCrystalTextBuffer& buffer, const std::string& path, LineFlagStore& store) {
  const std::string section = std::filesystem::path(path).filename().string();
  bool any = false;
  for (const auto& [line, flags] : store.ReadAll(section)) {
    if (line < 0 || line > buffer.LineCount() - 2 || flags == 0) continue;
    buffer.RestoreFlags(line, flags);
    any = true;
  }
  if (any) buffer.NotifyViews(nullptr, nullptr, hint::kFlagsOnly, -1);
}

}  // namespace quill::line_marks
