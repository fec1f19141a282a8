#pragma once
#include <string>
#include <utility>

#include "res/Strings.h"

namespace quill {

/// Outcome of a file operation: true, or false with one sentence that a user can act on.
class [[nodiscard]] IoResult {
 public:
  static IoResult Success() { return IoResult(); }
  /// `message` names the file and what failed, without a final full stop.
  static IoResult Failure(std::string message) { return IoResult(std::move(message)); }
  /// `what` is a sentence of two gaps: for the path, and for the system's text of `errorNumber`.
  static IoResult FromErrno(StringId what, const std::string& path, int errorNumber);
  /// The same with a reason of our own.
  static IoResult Refusal(StringId what, const std::string& path, StringId reason);

  explicit operator bool() const { return m_ok; }
  /// Empty after success.
  const std::string& Message() const { return m_message; }

 private:
  IoResult() = default;
  explicit IoResult(std::string message) : m_ok(false), m_message(std::move(message)) {}
  bool m_ok = true;
  std::string m_message;
};

}  // namespace quill
