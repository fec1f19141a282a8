#include "settings/SqliteSettingsStore.h"

#include <utility>

#include "res/Strings.h"

namespace quill {

namespace {
/// Far above the number of settings; keeps a walk over many keys from filling the memory.
constexpr size_t kMaxCachedItems = 4096;
}  // namespace

SqliteSettingsStore::SqliteSettingsStore(const std::string& path)
    : m_path(settings_file::ResolveLinks(path)) {
  OpenIfThere();
}

void SqliteSettingsStore::OpenIfThere() {
  if (m_path.empty() || m_db.IsOpen() || m_tried || !settings_file::IdentityOf(m_path)) return;
  m_tried = true;
  Open();
  RepairIfDamaged();
}

void SqliteSettingsStore::OpenOrCreate() {
  if (m_path.empty() || m_db.IsOpen() || m_tried) return;
  m_tried = true;
  settings_file::MakeFolderFor(m_path);
  Open();
  RepairIfDamaged();
}

SqliteSettingsStore::~SqliteSettingsStore() {
  Close();
}

std::string SqliteSettingsStore::TakeMessage() {
  m_thread.AssertHere();
  return std::exchange(m_message, {});
}

void SqliteSettingsStore::Open() {
  ForgetAll();
  const Result result = m_db.Open(m_path);
  m_identity = settings_file::IdentityOf(m_path);
  Note(result);
}

void SqliteSettingsStore::Close() {
  ForgetAll();
  m_db.Close(settings_file::IdentityOf(m_path) == m_identity);
}

void SqliteSettingsStore::CloseIfReplaced() {
  // Another copy set the file aside, or the user removed it: writing on would be writing into nothing.
  if (m_depth > 0 || !m_db.IsOpen() || settings_file::IdentityOf(m_path) == m_identity) return;
  Close();
  m_tried = false;
}

void SqliteSettingsStore::Repair() {
  ForgetAll();
  // Nothing of a damaged file is to be moved from its log into it: it stays as it was found.
  m_db.Close(false);
  if (m_identity) {
    const settings_file::SetAsideResult moved = settings_file::SetAside(m_path, *m_identity);
    if (moved.outcome == settings_file::SetAsideOutcome::kDone) {
      m_message = FormatText(StringId::kSettingsSetAside, {m_path, moved.newPath});
    } else if (moved.outcome == settings_file::SetAsideOutcome::kFailed) {
      m_message = FormatText(StringId::kSettingsDamaged, {m_path});
      return;
    }
  }
  Open();
}

bool SqliteSettingsStore::Note(Result result) {
  m_damaged = m_damaged || result == Result::kDamaged;
  return result == Result::kDone;
}

void SqliteSettingsStore::RepairIfDamaged() {
  if (!m_damaged || m_depth > 0) return;
  Repair();
  m_damaged = false;  // once: a new file that is damaged again is given up
}

void SqliteSettingsStore::ForgetAll() {
  m_cache.clear();
  m_cachedItems = 0;
}

void SqliteSettingsStore::Validate() {
  if (m_depth > 0) return;  // nobody else can write
  int64_t version = -1;
  if (!Note(m_db.DataVersion(version)) || version != m_dataVersion || m_cachedItems > kMaxCachedItems) {
    ForgetAll();
  }
  m_dataVersion = version;
}

SqliteSettingsStore::CachedKey* SqliteSettingsStore::FindKey(std::string_view key) {
  CloseIfReplaced();
  OpenIfThere();
  if (!m_db.IsOpen()) return nullptr;
  Validate();
  auto it = m_cache.find(key);
  if (it == m_cache.end()) {
    int64_t id = kNoKey;
    const Result result = m_db.FindKey(key, id);
    if (!Note(result) && result != Result::kMissing) return nullptr;
    it = m_cache.emplace(std::string(key), CachedKey{id, {}}).first;
    ++m_cachedItems;
  }
  return it->second.id == kNoKey ? nullptr : &it->second;
}

bool SqliteSettingsStore::KeyExists(std::string_view key) {
  m_thread.AssertHere();
  // No copy ever deletes a key: one that was there needs no second look at the file.
  const auto known = m_cache.find(key);
  if (known != m_cache.end() && known->second.id != kNoKey) return true;
  const bool exists = FindKey(key) != nullptr;
  RepairIfDamaged();
  return exists;
}

bool SqliteSettingsStore::AddKeys(std::string_view key) {
  for (size_t end = key.find('\\'); end != std::string_view::npos; end = key.find('\\', end + 1)) {
    if (!Note(m_db.AddKey(key.substr(0, end)))) return false;
  }
  if (!Note(m_db.AddKey(key))) return false;
  ForgetAll();
  return true;
}

bool SqliteSettingsStore::CreateKey(std::string_view key) {
  m_thread.AssertHere();
  if (KeyExists(key)) return true;
  if (key.empty() || key.find('\0') != std::string_view::npos) return false;
  const bool begun = BeginTransaction();
  return EndTransaction(begun && AddKeys(key));
}

std::vector<std::string> SqliteSettingsStore::SubKeys(std::string_view key) {
  m_thread.AssertHere();
  std::vector<std::string> names;
  CloseIfReplaced();
  OpenIfThere();
  if (!m_db.IsOpen()) return names;
  Note(m_db.ForEachKeyBelow(key, [&](std::string_view path) {
    const std::string_view name = path.substr(key.size() + 1);
    if (name.find('\\') == std::string_view::npos) names.emplace_back(name);
  }));
  RepairIfDamaged();
  return names;
}

std::optional<SettingsValue> SqliteSettingsStore::Read(std::string_view key, std::string_view name) {
  m_thread.AssertHere();
  std::optional<SettingsValue> found;
  if (CachedKey* const cached = FindKey(key)) {
    const auto it = cached->values.find(name);
    if (it != cached->values.end()) return it->second;
    SettingsValue value;
    const Result result = m_db.ReadValue(cached->id, name, value);
    if (Note(result)) found = std::move(value);
    if (result == Result::kDone || result == Result::kMissing) {
      cached->values.emplace(std::string(name), found);
      ++m_cachedItems;
    }
  }
  RepairIfDamaged();
  return found;
}

bool SqliteSettingsStore::Write(std::string_view key, std::string_view name, RegistryType type,
                                std::string_view bytes) {
  m_thread.AssertHere();
  if (key.empty() || key.find('\0') != std::string_view::npos || name.find('\0') != std::string_view::npos) {
    return false;
  }
  bool ok = BeginTransaction();
  if (ok) {
    CachedKey* cached = FindKey(key);
    if (cached == nullptr && AddKeys(key)) cached = FindKey(key);
    ok = cached != nullptr && Note(m_db.WriteValue(cached->id, name, type, bytes));
    if (ok) cached->values.erase(std::string(name));
  }
  return EndTransaction(ok) && ok;
}

bool SqliteSettingsStore::Delete(std::string_view key, std::string_view name) {
  m_thread.AssertHere();
  bool ok = BeginTransaction();
  bool deleted = false;
  if (ok) {
    CachedKey* const cached = FindKey(key);
    if (cached != nullptr) {
      const Result result = m_db.DeleteValue(cached->id, name);
      deleted = Note(result);
      ok = deleted || result == Result::kMissing;
      cached->values.erase(std::string(name));
    }
  }
  return EndTransaction(ok) && deleted;
}

void SqliteSettingsStore::ForEachValue(std::string_view key, const ValueVisitor& visit) {
  m_thread.AssertHere();
  if (CachedKey* const cached = FindKey(key)) Note(m_db.ForEachValue(cached->id, visit));
  RepairIfDamaged();
}

bool SqliteSettingsStore::Flush() {
  m_thread.AssertHere();
  const bool ok = m_db.IsOpen() && Note(m_db.Checkpoint());
  RepairIfDamaged();
  return ok;
}

bool SqliteSettingsStore::BeginTransaction() {
  m_thread.AssertHere();
  if (m_depth == 0) {
    CloseIfReplaced();
    OpenOrCreate();
    m_failed = !m_db.IsOpen() || !Note(m_db.Begin());
    if (!m_failed) Validate();
  }
  ++m_depth;
  return !m_failed;
}

bool SqliteSettingsStore::EndTransaction(bool commit) {
  m_thread.AssertHere();
  m_failed = m_failed || !commit;
  if (--m_depth > 0) return !m_failed;
  if (m_db.IsOpen()) {
    if (m_failed || !Note(m_db.Commit())) {
      m_failed = true;
      m_db.Rollback();
      ForgetAll();
    }
  }
  RepairIfDamaged();
  return !m_failed;
}

}  // namespace quill
