#pragma once
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>

#include "base/UiThread.h"
#include "settings/KeptWrites.h"
#include "settings/SettingsDatabase.h"
#include "settings/SettingsFile.h"
#include "settings/SettingsStore.h"

namespace quill {

/// The settings store of a system without a registry: one SQLite file, which any number of copies of
/// the program read and write at once. What was read is kept until another copy writes, so that a read
/// costs one look at the file's change counter, and one whether it is the same file still: one that was
/// removed or put in its place counts at once.
///
/// A missing folder or file is created by the first write, not before: making a database costs more
/// than the rest of a start. Where that is not possible the store is silently empty and takes nothing. A file
/// that is damaged, at the start or found so later, is set aside under another name and a new one begun;
/// `TakeMessage` tells once.
///
/// While another copy holds the lock for longer than the patience, written values are kept here, and reads
/// find them; the first transaction that gets through stores them, too.
class SqliteSettingsStore final : public SettingsStore {
 public:
  /// `path` of the database file, see settings_file::DefaultPath; an empty one gives an empty store.
  /// `patience`: how long a write waits for another copy, once; it waits no more until one got through.
  explicit SqliteSettingsStore(const std::string& path,
                               std::chrono::milliseconds patience = std::chrono::seconds(5));
  ~SqliteSettingsStore() override;

  /// A sentence for the user about what happened to the file since the last call; empty normally.
  std::string TakeMessage();

  /// Stores what is kept, without waiting. False when something still is.
  bool StoreKept();

  bool KeyExists(std::string_view key) override;
  bool CreateKey(std::string_view key) override;
  std::vector<std::string> SubKeys(std::string_view key) override;
  std::optional<SettingsValue> Read(std::string_view key, std::string_view name) override;
  bool Write(std::string_view key, std::string_view name, RegistryType type, std::string_view bytes) override;
  bool Delete(std::string_view key, std::string_view name) override;
  void ForEachValue(std::string_view key, const ValueVisitor& visit) override;
  bool Flush() override;

 protected:
  bool BeginTransaction() override;
  bool EndTransaction(bool commit) override;

 private:
  using Result = SettingsDatabase::Result;
  struct StringHash {
    using is_transparent = void;
    size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
  };
  template <typename T>
  using StringMap = std::unordered_map<std::string, T, StringHash, std::equal_to<>>;
  struct CachedKey {
    int64_t id = kNoKey;
    StringMap<std::optional<SettingsValue>> values;  ///< nothing: known to be missing
  };
  static constexpr int64_t kNoKey = 0;

  /// Both once in a run at most, and once more when the file has been replaced.
  void OpenIfThere();
  void OpenOrCreate();
  void Open();
  void Close();
  void CloseIfReplaced();
  void Repair();
  /// Remembers damage; it is repaired once no statement and no transaction is open.
  bool Note(Result result);
  void RepairIfDamaged();
  /// Forgets what was read when another copy has written since.
  void Validate();
  void ForgetAll();
  CachedKey* FindKey(std::string_view key);
  bool AddKeys(std::string_view key);
  bool WriteNow(std::string_view key, std::string_view name, const SettingsValue& value);
  Result DeleteNow(std::string_view key, std::string_view name);
  void TakeLock();
  bool StoreKeptNow();

  MakersThread m_thread;
  std::string m_path;
  SettingsDatabase m_db;
  std::optional<settings_file::Identity> m_identity;  ///< of the file that is open, or last was
  std::string m_message;
  bool m_damaged = false;
  bool m_tried = false;  ///< to open the file

  StringMap<CachedKey> m_cache;
  size_t m_cachedItems = 0;
  int64_t m_dataVersion = -1;

  int m_depth = 0;
  bool m_failed = false;  ///< the open transaction cannot be stored any more

  std::chrono::milliseconds m_patience;
  bool m_locked = false;    ///< at the last attempt
  bool m_deferred = false;  ///< the open transaction goes to `m_kept`
  KeptWrites m_kept;
  KeptWrites m_keptBefore;  ///< what is kept if the open transaction is given up
};

}  // namespace quill
