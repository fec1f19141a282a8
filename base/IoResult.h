#pragma once
#include <string>
#include <utility>

namespace quill {

/// Outcome of a file operation: true, or false with one sentence that a user can act on.
class [[nodiscard]] IoResult {
 public:
  static IoResult Success() { return IoResult(); }
  /// `message` names the file and what failed, without a final full stop.
  static IoResult Failure(std::string message) { return IoResult(std::move(message)); }
  /// "`what` “`path`”: `system text of errorNumber`".
  static IoResult FromErrno(const std::string& what, const std::string& path, int errorNumber);

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
