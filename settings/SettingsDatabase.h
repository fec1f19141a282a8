#pragma once
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "settings/SettingsStore.h"
#include "settings/SqliteStatement.h"

namespace quill {

/// One connection to a settings file: schema, prepared statements, and result codes put in four words.
class SettingsDatabase {
 public:
  enum class Result {
    kDone,
    kMissing,  ///< no such row
    kLocked,   ///< another copy writes, and went on for as long as was waited
    kFailed,   ///< full, not writable
    kDamaged,  ///< the file is not, or no longer, a settings database
  };

  /// No setting comes near this; a damaged length field must not become an allocation.
  static constexpr size_t kMaxValueBytes = size_t{16} * 1024 * 1024;

  SettingsDatabase() = default;
  ~SettingsDatabase() { Close(true); }
  SettingsDatabase(const SettingsDatabase&) = delete;
  SettingsDatabase& operator=(const SettingsDatabase&) = delete;

  /// Opens `path`, creating the file and its tables when missing. A file that can be read but not
  /// written is opened for reading. Closed again unless kDone.
  Result Open(const std::string& path);
  /// `ownsPath`: the path still leads to the file that was opened. Otherwise its side files belong to
  /// another one and are left alone.
  void Close(bool ownsPath);
  bool IsOpen() const { return m_db != nullptr; }
  /// How long statements from now on wait for another copy's transaction; opening has a patience of its own.
  void SetPatience(std::chrono::milliseconds patience);

  /// A number that changes when another connection has committed something.
  Result DataVersion(int64_t& version);

  Result FindKey(std::string_view path, int64_t& id);
  Result AddKey(std::string_view path);
  /// Every key whose path begins with `path` and a backslash, sorted.
  Result ForEachKeyBelow(std::string_view path, const std::function<void(std::string_view)>& visit);

  Result ReadValue(int64_t key, std::string_view name, SettingsValue& value);
  Result WriteValue(int64_t key, std::string_view name, RegistryType type, std::string_view bytes);
  /// kMissing when there was none.
  Result DeleteValue(int64_t key, std::string_view name);
  Result ForEachValue(int64_t key, const SettingsStore::ValueVisitor& visit);

  /// Takes the write lock, waiting for other writers.
  Result Begin();
  Result Commit();
  void Rollback();
  /// Moves the log into the file and synchronises both with the disk.
  Result Checkpoint();

 private:
  struct Closer {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
  };

  int Connect(const std::string& path, int flags);
  Result Verify();
  Result OpenReadOnly(const std::string& path);
  Result CreateSchema();
  Result PrepareStatements();
  Result Run(const sqlite::Statement& statement);
  int Execute(const char* sql);
  static Result ToResult(int code);

  std::unique_ptr<sqlite3, Closer> m_db;
  sqlite::Statement m_dataVersion, m_findKey, m_addKey, m_keysBelow;
  sqlite::Statement m_readValue, m_writeValue, m_deleteValue, m_allValues;
  sqlite::Statement m_begin, m_commit, m_rollback;
};

}  // namespace quill
