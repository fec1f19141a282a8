#include "settings/SettingsDatabase.h"

namespace quill {

using sqlite::Execution;
using sqlite::Statement;

namespace {

/// How long opening waits for another copy: it happens once, and without it nothing is kept in this run.
constexpr int kOpeningPatienceMs = 5000;
/// Files up to this size are checked as a whole when opened; damage in larger ones shows when read.
constexpr int64_t kMaxCheckedBytes = 4 * 1024 * 1024;
constexpr int64_t kSchemaVersion = 1;

/// The view is for people with the sqlite3 shell: one row a value, as the registry shows them.
constexpr const char* kSchema =
    "CREATE TABLE IF NOT EXISTS keys(id INTEGER PRIMARY KEY, path TEXT NOT NULL UNIQUE);"
    "CREATE TABLE IF NOT EXISTS entries(key INTEGER NOT NULL, name TEXT NOT NULL, type INTEGER NOT NULL,"
    " bytes BLOB NOT NULL, PRIMARY KEY(key, name)) WITHOUT ROWID;"
    "CREATE VIEW IF NOT EXISTS registry AS"
    " SELECT path, name, type, bytes FROM keys JOIN entries ON key = id;"
    "PRAGMA user_version = 1;";

/// Path as a URI that promises that nobody changes the file: readable without creating side files.
std::string ImmutableUri(const std::string& path) {
  constexpr char kHex[] = "0123456789ABCDEF";
  std::string uri = "file:";
  for (char c : path) {
    if (c == '%' || c == '?' || c == '#') {
      const auto byte = static_cast<uint8_t>(c);
      uri += {'%', kHex[byte >> 4], kHex[byte & 15]};
    } else {
      uri += c;
    }
  }
  return uri + "?immutable=1";
}

/// A write-ahead log needs side files; in a folder that cannot be written not even reading works then.
bool IsForWantOfWriting(int code) {
  const int primary = code & 0xFF;
  return primary == SQLITE_CANTOPEN || primary == SQLITE_READONLY || primary == SQLITE_PERM ||
         primary == SQLITE_IOERR;
}

}  // namespace

SettingsDatabase::Result SettingsDatabase::ToResult(int code) {
  switch (code & 0xFF) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
      return Result::kDone;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return Result::kLocked;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return Result::kDamaged;
    default:
      return Result::kFailed;
  }
}

int SettingsDatabase::Execute(const char* sql) {
  return sqlite3_exec(m_db.get(), sql, nullptr, nullptr, nullptr);
}

SettingsDatabase::Result SettingsDatabase::Run(const Statement& statement) {
  return ToResult(Execution(statement).Step());
}

void SettingsDatabase::SetPatience(std::chrono::milliseconds patience) {
  if (m_db) sqlite3_busy_timeout(m_db.get(), static_cast<int>(patience.count()));
}

int SettingsDatabase::Connect(const std::string& path, int flags) {
  sqlite3* raw = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &raw, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  m_db.reset(raw);
  if (code != SQLITE_OK) return code;
  sqlite3_busy_timeout(raw, kOpeningPatienceMs);
  sqlite3_limit(raw, SQLITE_LIMIT_LENGTH, static_cast<int>(kMaxValueBytes));
  sqlite3_db_config(raw, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  return Execute("PRAGMA trusted_schema = OFF; PRAGMA cell_size_check = ON");
}

SettingsDatabase::Result SettingsDatabase::Open(const std::string& path) {
  Close(true);
  int code = Connect(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  if (code == SQLITE_OK) {
    // A write-ahead log lets copies read while one writes, and a commit needs no wait for the disk.
    // Where it cannot be had (a network disk, another copy just opening) the file's own mode will do.
    Execute("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL");
    Execute("PRAGMA journal_size_limit = 1048576");
    code = Execute("SELECT count(*) FROM sqlite_schema");
  }
  Result result = ToResult(code);
  if (result == Result::kDone) {
    result = Verify();
  } else if (IsForWantOfWriting(code)) {
    result = OpenReadOnly(path);
  }
  // A damaged file stays as it was found: its log is not moved into it.
  if (result != Result::kDone) Close(result != Result::kDamaged);
  return result;
}

SettingsDatabase::Result SettingsDatabase::OpenReadOnly(const std::string& path) {
  Close(true);
  const int code = Connect(ImmutableUri(path), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
  // Without its log the file may look torn: nothing that should be called damage.
  const bool readable = code == SQLITE_OK && Verify() == Result::kDone;
  return readable ? Result::kDone : Result::kFailed;
}

SettingsDatabase::Result SettingsDatabase::Verify() {
  Statement statement;
  int code = statement.Prepare(m_db.get(),
                               "SELECT user_version, page_count * page_size"
                               " FROM pragma_user_version, pragma_page_count, pragma_page_size");
  if (code != SQLITE_OK) return ToResult(code);
  int64_t version = 0;
  int64_t size = 0;
  {
    Execution row(statement);
    code = row.Step();
    if (code != SQLITE_ROW) return ToResult(code);
    version = row.Number(0);
    size = row.Number(1);
  }
  if (size <= kMaxCheckedBytes) {
    code = statement.Prepare(m_db.get(), "PRAGMA quick_check(1)");
    if (code != SQLITE_OK) return ToResult(code);
    Execution row(statement);
    code = row.Step();
    if (code != SQLITE_ROW) return ToResult(code);
    if (row.Bytes(0) != "ok") return Result::kDamaged;
  }
  if (version < kSchemaVersion) {
    const Result created = CreateSchema();
    if (created != Result::kDone) return created;
  }
  return PrepareStatements();
}

SettingsDatabase::Result SettingsDatabase::CreateSchema() {
  int code = Execute("BEGIN IMMEDIATE");
  if (code == SQLITE_OK) code = Execute(kSchema);
  if (code == SQLITE_OK) code = Execute("COMMIT");
  // SQLITE_ERROR: tables of these names that are not ours.
  return code == SQLITE_ERROR ? Result::kDamaged : ToResult(code);
}

SettingsDatabase::Result SettingsDatabase::PrepareStatements() {
  const struct {
    Statement& statement;
    const char* sql;
  } all[] = {
      {m_dataVersion, "PRAGMA data_version"},
      {m_findKey, "SELECT id FROM keys WHERE path = ?1"},
      {m_addKey, "INSERT INTO keys(path) VALUES(?1) ON CONFLICT DO NOTHING"},
      {m_keysBelow, "SELECT path FROM keys WHERE path > ?1 AND path < ?2 ORDER BY path"},
      {m_readValue, "SELECT type, bytes FROM entries WHERE key = ?1 AND name = ?2"},
      {m_writeValue, "INSERT OR REPLACE INTO entries(key, name, type, bytes) VALUES(?1, ?2, ?3, ?4)"},
      {m_deleteValue, "DELETE FROM entries WHERE key = ?1 AND name = ?2"},
      {m_allValues, "SELECT name, type, bytes FROM entries WHERE key = ?1 ORDER BY name"},
      {m_begin, "BEGIN IMMEDIATE"},
      {m_commit, "COMMIT"},
      {m_rollback, "ROLLBACK"},
  };
  for (const auto& [statement, sql] : all) {
    const int code = statement.Prepare(m_db.get(), sql);
    if (code != SQLITE_OK) return code == SQLITE_ERROR ? Result::kDamaged : ToResult(code);
  }
  return Result::kDone;
}

void SettingsDatabase::Close(bool ownsPath) {
  for (Statement* statement :
       {&m_dataVersion, &m_findKey, &m_addKey, &m_keysBelow, &m_readValue, &m_writeValue, &m_deleteValue,
        &m_allValues, &m_begin, &m_commit, &m_rollback}) {
    statement->Finalize();
  }
  if (m_db && !ownsPath) sqlite3_db_config(m_db.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  m_db.reset();
}

SettingsDatabase::Result SettingsDatabase::DataVersion(int64_t& version) {
  Execution row(m_dataVersion);
  const int code = row.Step();
  if (code == SQLITE_ROW) version = row.Number(0);
  return ToResult(code);
}

SettingsDatabase::Result SettingsDatabase::FindKey(std::string_view path, int64_t& id) {
  Execution row(m_findKey);
  const int code = row.BindText(1, path).Step();
  if (code == SQLITE_ROW) id = row.Number(0);
  return code == SQLITE_DONE ? Result::kMissing : ToResult(code);
}

SettingsDatabase::Result SettingsDatabase::AddKey(std::string_view path) {
  return ToResult(Execution(m_addKey).BindText(1, path).Step());
}

SettingsDatabase::Result SettingsDatabase::ForEachKeyBelow(
    std::string_view path, const std::function<void(std::string_view)>& visit) {
  const std::string first = std::string(path) + '\\';
  const std::string last = std::string(path) + static_cast<char>('\\' + 1);
  Execution row(m_keysBelow);
  row.BindText(1, first).BindText(2, last);
  int code = SQLITE_OK;
  while ((code = row.Step()) == SQLITE_ROW) visit(row.Bytes(0));
  return ToResult(code);
}

SettingsDatabase::Result SettingsDatabase::ReadValue(int64_t key, std::string_view name,
                                                     SettingsValue& value) {
  Execution row(m_readValue);
  const int code = row.Bind(1, key).BindText(2, name).Step();
  if (code == SQLITE_ROW) {
    value.type = static_cast<RegistryType>(row.Number(0));
    value.bytes = row.Bytes(1);
  }
  return code == SQLITE_DONE ? Result::kMissing : ToResult(code);
}

SettingsDatabase::Result SettingsDatabase::WriteValue(int64_t key, std::string_view name, RegistryType type,
                                                      std::string_view bytes) {
  if (bytes.size() > kMaxValueBytes) return Result::kFailed;
  Execution row(m_writeValue);
  row.Bind(1, key).BindText(2, name).Bind(3, static_cast<int64_t>(type)).BindBlob(4, bytes);
  return ToResult(row.Step());
}

SettingsDatabase::Result SettingsDatabase::DeleteValue(int64_t key, std::string_view name) {
  const int code = Execution(m_deleteValue).Bind(1, key).BindText(2, name).Step();
  if (code == SQLITE_DONE && sqlite3_changes(m_db.get()) == 0) return Result::kMissing;
  return ToResult(code);
}

SettingsDatabase::Result SettingsDatabase::ForEachValue(int64_t key,
                                                        const SettingsStore::ValueVisitor& visit) {
  Execution row(m_allValues);
  row.Bind(1, key);
  int code = SQLITE_OK;
  while ((code = row.Step()) == SQLITE_ROW) {
    visit(row.Bytes(0), static_cast<RegistryType>(row.Number(1)), row.Bytes(2));
  }
  return ToResult(code);
}

SettingsDatabase::Result SettingsDatabase::Begin() {
  return Run(m_begin);
}

SettingsDatabase::Result SettingsDatabase::Commit() {
  // After some errors SQLite has rolled back by itself, and later statements stood alone.
  if (sqlite3_get_autocommit(m_db.get()) != 0) return Result::kFailed;
  const Result result = Run(m_commit);
  if (result != Result::kDone) Rollback();
  return result;
}

void SettingsDatabase::Rollback() {
  if (sqlite3_get_autocommit(m_db.get()) == 0) Run(m_rollback);
}

SettingsDatabase::Result SettingsDatabase::Checkpoint() {
  return ToResult(
      sqlite3_wal_checkpoint_v2(m_db.get(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr));
}

}  // namespace quill
