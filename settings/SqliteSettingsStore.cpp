#include "settings/SqliteSettingsStore.h"

#include <utility>

#include "res/Strings.h"

namespace quill {

namespace {
/// Far above the number of settings; keeps a walk over many keys from filling the memory.
constexpr size_t kMaxCachedItems = 4096;
/// For values that would be lost otherwise; nobody works with the program any more.
constexpr std::chrono::seconds kLastPatience{5};
}  // namespace

SqliteSettingsStore::SqliteSettingsStore(const std::string& path, std::chrono::milliseconds patience)
    : m_path(settings_file::ResolveLinks(path)), m_patience(patience) {
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
  if (!m_kept.Empty()) {
    m_locked = false;
    m_patience = kLastPatience;
    StoreKept();
  }
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
  m_db.SetPatience(m_patience);
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
  const Result result = m_db.DataVersion(version);
  if (result == Result::kLocked) return;  // what was read before is better than nothing
  if (!Note(result) || version != m_dataVersion || m_cachedItems > kMaxCachedItems) ForgetAll();
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
  if (m_kept.HasKey(key)) return true;
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
  bool ok = BeginTransaction();
  if (m_deferred) {
    m_kept.AddKey(key);
  } else {
    ok = ok && AddKeys(key);
  }
  return EndTransaction(ok);
}

std::vector<std::string> SqliteSettingsStore::SubKeys(std::string_view key) {
  m_thread.AssertHere();
  std::vector<std::string> names;
  CloseIfReplaced();
  OpenIfThere();
  if (m_db.IsOpen()) {
    Note(m_db.ForEachKeyBelow(key, [&](std::string_view path) {
      const std::string_view name = path.substr(key.size() + 1);
      if (name.find('\\') == std::string_view::npos) names.emplace_back(name);
    }));
  }
  RepairIfDamaged();
  if (!m_kept.Empty()) m_kept.AddSubKeys(key, names);
  return names;
}

std::optional<SettingsValue> SqliteSettingsStore::Read(std::string_view key, std::string_view name) {
  m_thread.AssertHere();
  if (const KeptWrites::Value* kept = m_kept.Find(key, name)) return *kept;
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
  const SettingsValue value{type, std::string(bytes)};
  bool ok = BeginTransaction();
  if (m_deferred) {
    ok = bytes.size() <= SettingsDatabase::kMaxValueBytes;  // what could never be stored must not be kept
    if (ok) m_kept.Put(key, name, value);
  } else {
    ok = ok && WriteNow(key, name, value);
  }
  return EndTransaction(ok) && ok;
}

bool SqliteSettingsStore::WriteNow(std::string_view key, std::string_view name, const SettingsValue& value) {
  CachedKey* cached = FindKey(key);
  if (cached == nullptr && AddKeys(key)) cached = FindKey(key);
  if (cached == nullptr || !Note(m_db.WriteValue(cached->id, name, value.type, value.bytes))) return false;
  cached->values.erase(std::string(name));
  return true;
}

bool SqliteSettingsStore::Delete(std::string_view key, std::string_view name) {
  m_thread.AssertHere();
  bool ok = BeginTransaction();
  bool deleted = false;
  if (m_deferred) {
    deleted = Read(key, name).has_value();
    m_kept.Put(key, name, std::nullopt);
  } else if (ok) {
    const Result result = DeleteNow(key, name);
    deleted = result == Result::kDone;
    ok = deleted || result == Result::kMissing;
  }
  return EndTransaction(ok) && deleted;
}

SqliteSettingsStore::Result SqliteSettingsStore::DeleteNow(std::string_view key, std::string_view name) {
  CachedKey* const cached = FindKey(key);
  if (cached == nullptr) return Result::kMissing;
  const Result result = m_db.DeleteValue(cached->id, name);
  Note(result);
  cached->values.erase(std::string(name));
  return result;
}

void SqliteSettingsStore::ForEachValue(std::string_view key, const ValueVisitor& visit) {
  m_thread.AssertHere();
  CachedKey* const cached = FindKey(key);
  if (m_kept.Empty()) {
    if (cached != nullptr) Note(m_db.ForEachValue(cached->id, visit));
  } else {
    std::map<std::string, SettingsValue> values;
    const auto add = [&](std::string_view name, RegistryType type, std::string_view bytes) {
      values[std::string(name)] = {type, std::string(bytes)};
    };
    if (cached != nullptr) Note(m_db.ForEachValue(cached->id, add));
    m_kept.PutOver(key, values);
    for (const auto& [name, value] : values) visit(name, value.type, value.bytes);
  }
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
  if (m_depth == 0) TakeLock();
  ++m_depth;
  if (m_depth == 1 && !m_failed && !m_deferred) m_failed = !StoreKeptNow();
  return !m_failed;
}

void SqliteSettingsStore::TakeLock() {
  CloseIfReplaced();
  OpenOrCreate();
  m_keptBefore = m_kept;
  m_failed = !m_db.IsOpen();
  if (m_failed) return;
  // Waiting for one that is known to hold on would hold up the window with each write.
  m_db.SetPatience(m_locked ? std::chrono::milliseconds(0) : m_patience);
  const Result begun = m_db.Begin();
  m_locked = m_deferred = begun == Result::kLocked;
  m_failed = !m_deferred && !Note(begun);
  if (!m_deferred && !m_failed) Validate();
}

/// In an open transaction. What is kept is forgotten when it ends well.
bool SqliteSettingsStore::StoreKeptNow() {
  const bool stored =
      m_kept.ForEach([this](const std::string& key) { return FindKey(key) != nullptr || AddKeys(key); },
                     [this](const std::string& key, const std::string& name, const KeptWrites::Value& value) {
                       if (value) return WriteNow(key, name, *value);
                       const Result result = DeleteNow(key, name);
                       return result == Result::kDone || result == Result::kMissing;
                     });
  m_kept.Clear();
  return stored;
}

bool SqliteSettingsStore::StoreKept() {
  m_thread.AssertHere();
  if (m_kept.Empty()) return true;
  const bool begun = BeginTransaction();
  EndTransaction(begun);
  return m_kept.Empty();
}

bool SqliteSettingsStore::EndTransaction(bool commit) {
  m_thread.AssertHere();
  m_failed = m_failed || !commit;
  if (--m_depth > 0) return !m_failed;
  if (!m_deferred && m_db.IsOpen()) {
    if (m_failed || !Note(m_db.Commit())) {
      m_failed = true;
      m_db.Rollback();
      ForgetAll();
    }
  }
  m_deferred = false;
  if (m_failed) m_kept = m_keptBefore;
  m_keptBefore.Clear();
  RepairIfDamaged();
  return !m_failed;
}

}  // namespace quill
