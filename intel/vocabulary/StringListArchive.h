#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/IoResult.h"

/// The archive form of a list of strings, which the command database and the colour schemes use. It
/// has no header: a 16-bit count (0xFFFF: a 32-bit count follows), then each string as a length
/// prefix and its bytes. The prefix is one byte below 255; else 0xFF and a 16-bit length below
/// 0xFFFE; else 0xFF, 0xFFFF and a 32-bit length. All numbers are little-endian. The 16-bit value
/// 0xFFFE marks a string of 16-bit characters, whose own prefix follows it; such a string is read
/// (converted to Windows-1252, "?" for what the code page lacks) but never written.
namespace quill {

/// How the reading of an archive ended.
enum class ArchiveCode {
  kOk,
  kCannotRead,  ///< the file cannot be opened or read
  kTruncated,   ///< the bytes end inside the count or inside a string, or cannot hold what they announce
  kMalformed,   ///< the bytes contradict the form
};

struct [[nodiscard]] ArchiveStatus {
  ArchiveCode code = ArchiveCode::kOk;
  std::string message;  ///< one sentence without full stop, empty after success

  explicit operator bool() const { return code == ArchiveCode::kOk; }
};

/// Reads a list from memory. Bytes after the list are ignored. `list` is empty after a failure.
ArchiveStatus ReadStringList(std::string_view bytes, std::vector<std::string>& list);

/// Reads a list from a file; the message names the file.
ArchiveStatus ReadStringListFile(const std::string& path, std::vector<std::string>& list);

/// The bytes of a list. Throws std::invalid_argument when a string or the list has more than
/// 4,294,967,295 elements.
std::string WriteStringList(std::span<const std::string> list);

/// Replaces the file by the bytes of the list.
IoResult WriteStringListFile(const std::string& path, std::span<const std::string> list);

}  // namespace quill
