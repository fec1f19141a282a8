#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quill {

/// Registry types of a value; the numbers are the platform's and are persisted.
enum class RegistryType : uint32_t {
  kString = 1,        ///< single-byte text with a terminating NUL
  kExpandString = 2,  ///< the same, with environment references
  kBinary = 3,
  kDword = 4,  ///< 32 bits, little-endian
};

struct SettingsValue {
  RegistryType type = RegistryType::kBinary;
  std::string bytes;  ///< exactly as stored; texts include their terminator
  bool operator==(const SettingsValue&) const = default;
};

/// A registry: keys in a tree, each with named, typed values. A key is given by its full path from a
/// root, parts separated by backslashes; paths and names are compared byte by byte, because sections
/// are named after files and files may differ in case alone. Failures are silent: a read finds nothing,
/// a write returns false. For one thread, its maker's.
class SettingsStore {
 public:
  using ValueVisitor = std::function<void(std::string_view name, RegistryType, std::string_view bytes)>;

  virtual ~SettingsStore() = default;

  virtual bool KeyExists(std::string_view key) = 0;
  /// Creates a key and the keys above it; true as well when it is there already.
  virtual bool CreateKey(std::string_view key) = 0;
  /// Names of the keys directly below a key, sorted.
  virtual std::vector<std::string> SubKeys(std::string_view key) = 0;

  virtual std::optional<SettingsValue> Read(std::string_view key, std::string_view name) = 0;
  /// Sets a value; creates the key when missing.
  virtual bool Write(std::string_view key, std::string_view name, RegistryType type,
                     std::string_view bytes) = 0;
  /// False when there was no such value.
  virtual bool Delete(std::string_view key, std::string_view name) = 0;
  /// Calls `visit` with every value of a key, sorted by name, in one query. `visit` must not call the
  /// store.
  virtual void ForEachValue(std::string_view key, const ValueVisitor& visit) = 0;

  /// Makes written values survive a power cut, as far as the storage can.
  virtual bool Flush() = 0;

 protected:
  friend class SettingsTransaction;
  /// Transactions nest; only the outermost end stores. Every begin is followed by one end, even when it
  /// returned false.
  virtual bool BeginTransaction() = 0;
  /// False when nothing was stored: `commit` is false here or was in a nested transaction, or a write
  /// failed.
  virtual bool EndTransaction(bool commit) = 0;
};

/// Groups writes: all of them are stored by `Commit`, or none of them. Use it around more than one
/// write, it is also much faster. When the transaction cannot begin, its writes fail at once.
class SettingsTransaction {
 public:
  explicit SettingsTransaction(SettingsStore& store) : m_store(store) { m_store.BeginTransaction(); }
  ~SettingsTransaction() {
    if (m_open) m_store.EndTransaction(false);
  }
  SettingsTransaction(const SettingsTransaction&) = delete;
  SettingsTransaction& operator=(const SettingsTransaction&) = delete;

  bool Commit() {
    m_open = false;
    return m_store.EndTransaction(true);
  }

 private:
  SettingsStore& m_store;
  bool m_open = true;
};

}  // namespace quill
