#pragma once
#include <map>

#include "settings/SettingsStore.h"

namespace quill {

/// A settings store that lives as long as the object: for tests, and for a run without a home folder.
class MemorySettingsStore final : public SettingsStore {
 public:
  bool KeyExists(std::string_view key) override;
  bool CreateKey(std::string_view key) override;
  std::vector<std::string> SubKeys(std::string_view key) override;
  std::optional<SettingsValue> Read(std::string_view key, std::string_view name) override;
  bool Write(std::string_view key, std::string_view name, RegistryType type, std::string_view bytes) override;
  bool Delete(std::string_view key, std::string_view name) override;
  void ForEachValue(std::string_view key, const ValueVisitor& visit) override;
  bool Flush() override { return true; }

 protected:
  bool BeginTransaction() override;
  bool EndTransaction(bool commit) override;

 private:
  using Values = std::map<std::string, SettingsValue, std::less<>>;
  using Keys = std::map<std::string, Values, std::less<>>;

  Keys m_keys;
  Keys m_before;  ///< state at the outermost begin
  int m_depth = 0;
  bool m_rollback = false;
};

}  // namespace quill
