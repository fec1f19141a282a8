#include "shell/BackupCopies.h"

#include <ctime>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <vector>

#include "base/LocalTime.h"
#include "shell/FileIdentity.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

namespace fs = std::filesystem;

constexpr int64_t kSecondsADay = 86400;
constexpr int kTmYearBase = 1900;

constexpr auto kAnyWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

/// An empty file for the copy, which nobody may read who may not read the script.
void Prepare(const fs::path& copy, const std::string& script) {
  std::error_code failed;
  if (fs::is_symlink(copy, failed)) fs::remove(copy, failed);
  if (!fs::exists(copy, failed)) std::ofstream(copy, std::ios::binary);
  const fs::file_status status = fs::status(script, failed);
  if (failed || !fs::exists(status)) {
    fs::permissions(copy, fs::perms::owner_write, fs::perm_options::add, failed);
  } else {
    fs::permissions(copy, (status.permissions() & ~kAnyWrite) | fs::perms::owner_write, failed);
  }
}

/// A file's time by way of the local calendar, which knows no years before 1900: those count as 0.
int64_t CalendarTime(int64_t seconds) {
  const std::optional<std::tm> local = LocalTime(static_cast<std::time_t>(seconds));
  if (!local) throw std::invalid_argument("the time of a backup copy has no calendar date");
  return local->tm_year + kTmYearBase < 1900 ? 0 : seconds;
}

/// While it lives, the buffer keeps no ".bak" of what it writes over: in the backup folder that would
/// be a copy of a copy.
class NoBakFile {
 public:
  explicit NoBakFile(CCrystalTextBuffer& buffer) : m_buffer(buffer), m_before(buffer.CreatesBackup()) {
    m_buffer.SetCreateBackup(false);
  }
  NoBakFile(const NoBakFile&) = delete;
  NoBakFile& operator=(const NoBakFile&) = delete;
  ~NoBakFile() { m_buffer.SetCreateBackup(m_before); }

 private:
  CCrystalTextBuffer& m_buffer;
  bool m_before;
};

}  // namespace

BackupCopies::BackupCopies(const std::string& programFolder, Clock clock)
    : m_folder((fs::path(programFolder) / "qil_backup").string()), m_clock(std::move(clock)) {}

void BackupCopies::BackUp(CCrystalTextBuffer& buffer, std::span<const std::string> viewPaths,
                          const Settings& settings) const {
  if (!settings.enabled) return;
  std::error_code ignored;
  fs::create_directory(m_folder, ignored);
  for (const std::string& path : viewPaths) {
    if (fs::path(path).has_filename()) Copy(buffer, path);  // a text without a file has no name here either
    Prune(settings.removeDays);
  }
}

void BackupCopies::Copy(CCrystalTextBuffer& buffer, const std::string& path) const {
  const fs::path copy = fs::path(m_folder) / fs::path(path).filename();
  std::error_code ignored;
  if (fs::is_directory(fs::symlink_status(copy, ignored))) return;
  Prepare(copy, path);
  const NoBakFile guard(buffer);
  (void)buffer.SaveFile(copy.string());
  fs::permissions(copy, kAnyWrite, fs::perm_options::remove, ignored);
}

void BackupCopies::Prune(int32_t removeDays) const {
  std::error_code ignored;
  std::vector<fs::path> files;
  for (fs::directory_iterator entry(m_folder, ignored), end; entry != end; entry.increment(ignored)) {
    if (ignored) break;
    if (!entry->is_directory(ignored)) files.push_back(entry->path());
  }
  const int64_t now = m_clock();
  for (const fs::path& file : files) {
    const FileIdentity identity = FileIdentity::Of(file.string());
    if (!identity.exists) continue;
    const int64_t ageInDays = (now - CalendarTime(identity.modifiedSeconds)) / kSecondsADay;
    if (ageInDays > removeDays) fs::remove(file, ignored);
  }
}

}  // namespace quill
