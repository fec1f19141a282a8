#pragma once
#include <string>
#include <string_view>

#include "shell/Clock.h"

namespace quill {

/// The log of one run, "qil.log" in the program folder. The log of the run before goes away at
/// construction. A log that cannot be written is no reason to stop or to complain.
class RunLog {
 public:
  explicit RunLog(const std::string& programFolder, Clock clock = SystemTime);

  /// Appends the local time, the message and a line end; the file is open only meanwhile, so that it
  /// is complete whenever the program ends.
  void Line(std::string_view message) const;
  const std::string& Path() const { return m_path; }

 private:
  std::string m_path;
  Clock m_clock;
};

}  // namespace quill
