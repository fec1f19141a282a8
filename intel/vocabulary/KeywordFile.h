#pragma once
#include <functional>
#include <span>
#include <string>

#include "base/IoResult.h"
#include "intel/vocabulary/DatabaseResult.h"

/// Reading and writing of a keyword file: plain text, one entry a line, CR LF line ends, no comments.
namespace quill {

inline constexpr char kKeywordsFileName[] = "Keywords.db";
inline constexpr char kCKeywordsFileName[] = "cKeywords.db";

/// Hands each entry to `add`, in file order. The reader takes at most 1023 characters at a time and
/// drops the last one of each piece, which is the line feed of an ordinary line. So a last line
/// without a line break loses its last character, and a longer line arrives in pieces; users' files
/// have come to rely on what that gives.
DatabaseResult ReadKeywordFile(const std::string& path, const std::function<void(std::string)>& add);

/// Replaces the file by the entries, each followed by CR LF.
IoResult WriteKeywordFile(const std::string& path, std::span<const std::string> entries);

}  // namespace quill
