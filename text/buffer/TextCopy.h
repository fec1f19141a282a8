#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quill {

class CCrystalTextBuffer;

/// The lines of a text as they were at one moment, whatever becomes of it since. Throws `std::bad_alloc`.
class TextCopy {
 public:
  explicit TextCopy(const CCrystalTextBuffer& buffer);

  int32_t LineCount() const { return static_cast<int32_t>(m_starts.size()) - 1; }
  /// 16 characters after the last one may be read.
  std::string_view Line(int32_t line) const {
    const size_t start = m_starts[static_cast<size_t>(line)];
    return {m_text.data() + start, m_starts[static_cast<size_t>(line) + 1] - start};
  }
  int32_t LineLength(int32_t line) const { return static_cast<int32_t>(Line(line).size()); }

 private:
  std::string m_text;
  std::vector<size_t> m_starts;  ///< of each line, and the end of the last one
};

}  // namespace quill
