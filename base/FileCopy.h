#pragma once
#include <string>

/// What a file takes over from another one.
namespace quill::file_copy {

/// Puts the bytes of `from` into the file `to`, which stays the same file with all its names, and flushes
/// them. Room is made first, so that a full disk changes nothing. Returns 0, or the system's error number:
/// then `to` may hold a mixture, unless `untouched` was set.
int InPlace(const std::string& from, const std::string& to, bool& untouched);

/// Copies extended attributes, access lists among them, as far as the system lets us.
void Attributes(const std::string& from, int toDescriptor);

}  // namespace quill::file_copy
