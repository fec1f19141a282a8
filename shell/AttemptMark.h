#pragma once
#include <string>

namespace quill {

/// A file that stands while something is tried that may end or hang the process: whoever finds one left by a
/// process that is gone knows that it failed there. While it is tried the file is locked, so that a second
/// copy of the program takes nothing for a failure.
class AttemptMark {
 public:
  /// Sets the mark. Where that is not possible, nothing is known to have failed.
  explicit AttemptMark(const std::string& path);
  AttemptMark(const AttemptMark&) = delete;
  AttemptMark& operator=(const AttemptMark&) = delete;
  /// What was tried has gone well, or was left out.
  ~AttemptMark();

  bool FailedBefore() const { return m_failedBefore; }

 private:
  std::string m_path;
  int m_file = -1;
  bool m_failedBefore = false;
};

}  // namespace quill
