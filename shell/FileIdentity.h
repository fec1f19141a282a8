#pragma once
#include <compare>
#include <cstdint>
#include <string>

namespace quill {

/// What tells one state of a file from another without reading it.
struct FileIdentity {
  bool exists = false;  ///< and is a regular file
  int64_t size = 0;
  int64_t modifiedSeconds = 0;  ///< last write, since 1970, UTC
  int32_t modifiedNanoseconds = 0;

  /// Follows symbolic links.
  static FileIdentity Of(const std::string& path);
  static FileIdentity OfDescriptor(int descriptor);
  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// Whether two paths lead to one file that is there.
bool IsSameFile(const std::string& a, const std::string& b);

}  // namespace quill
