#include "base/StateFolder.h"

#include <cstdlib>
#include <filesystem>

namespace quill {

std::string StateFolder() {
  namespace fs = std::filesystem;
  const char* state = std::getenv("XDG_STATE_HOME");
  const char* home = std::getenv("HOME");
  if (state != nullptr && fs::path(state).is_absolute()) {  // relative ones are to be ignored
    return (fs::path(state) / "quill").string();
  }
  return home == nullptr || *home == '\0' ? std::string()
                                          : (fs::path(home) / ".local" / "state" / "quill").string();
}

}  // namespace quill
