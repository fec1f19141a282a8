#pragma once
#include "settings/AppProfile.h"
#include "text/buffer/LineFlagStore.h"

namespace quill {

/// Line flags in the application profile: double-words under a section named after the file, each named
/// by its line index in decimal.
class ProfileLineFlagStore final : public LineFlagStore {
 public:
  explicit ProfileLineFlagStore(AppProfile profile) : m_profile(profile) {}

  std::vector<Word> ReadAll(const std::string& section) override;
  void Write(const std::string& section, const std::vector<Word>& words) override;

 private:
  AppProfile m_profile;
};

}  // namespace quill
