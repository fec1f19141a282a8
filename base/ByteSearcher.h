#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quill {

/// Finds one string of bytes in many texts. What depends on the string alone is prepared once, so that
/// a call costs little even when the texts are short lines. Case goes by Windows-1252.
///
/// The two bytes of the string that are rarest in scripts are compared at sixteen or more places at
/// once; only where both agree is the whole string compared.
class ByteSearcher {
 public:
  static constexpr size_t kNone = static_cast<size_t>(-1);

  ByteSearcher(std::string_view what, bool matchCase);

  size_t Length() const { return m_what.size(); }
  /// Index of the first occurrence in `text`, or kNone. The empty string occurs nowhere.
  size_t Find(std::string_view text) const {
    return text.size() < m_shortestText ? kNone : FindIn(text.data(), text.size() - m_what.size() + 1);
  }
  /// The first occurrence at or after `from` in `size` bytes that may be read up to the next multiple of
  /// `kReadable` of them: faster, as no short line needs a path of its own.
  size_t FindPadded(const char* text, size_t size, size_t from) const;
  static constexpr size_t kReadable = 16;

 private:
  /// A byte of the string to look for first: `(byte | mask) == value` holds for it in either case.
  struct Probe {
    size_t offset = 0;
    uint8_t mask = 0;
    uint8_t value = 0;
    bool Fits(const char* at) const { return (static_cast<uint8_t>(at[offset]) | mask) == value; }
  };

  Probe MakeProbe(size_t offset) const;
  /// `places` is the number of places, at least 1, at which the string could begin.
  size_t FindIn(const char* text, size_t places) const;
  size_t FindBytewise(const char* text, size_t places) const;
  size_t FindBy32(const char* text, size_t places) const;
  /// The first of the places `text` + bit number at which the whole string stands.
  size_t FirstMatch(const char* text, uint64_t candidates) const;
  bool Matches(const char* at) const;

  std::string m_what;  ///< upper-cased when case does not matter
  size_t m_shortestText;
  bool m_matchCase;
  Probe m_first;
  Probe m_second;
};

}  // namespace quill
