#pragma once
#include <string>

namespace quill {

/// How the loading of a database file ended. The window that asked shows `message`; a program whose
/// database is missing cannot go on and ends with exit status 0.
struct [[nodiscard]] DatabaseResult {
  enum class State {
    kLoaded,
    kMissing,     ///< the file does not exist; `message` is the fixed text for the user
    kUnreadable,  ///< it exists, but cannot be read or is damaged; `message` says why
  };
  State state = State::kLoaded;
  std::string message;

  explicit operator bool() const { return state == State::kLoaded; }
};

}  // namespace quill
