#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace quill::bench {

/// Stands in one of three lines of every generated script, so that 300,000 lines have 100,000 hits.
inline constexpr std::string_view kCommonWord = "old_speed";
/// Stands in no generated script.
inline constexpr std::string_view kAbsentText = "There_Is_No_Such_Text";
/// Stands once in some files of a generated tree.
inline constexpr std::string_view kRareText = "hidden_treasure";

struct ScriptOptions {
  int64_t lines = 0;
  /// Without block comments a comment opened in line 1 runs to the end of the text.
  bool blockComments = true;
  uint32_t seed = 1;
};

/// A script in Vesper as people write it: definitions, functions and actions with nested blocks,
/// comments, strings, numbers and preprocessor lines, 34 bytes a line with its CR LF. The same options
/// give the same bytes on every machine.
std::string GenerateScript(const ScriptOptions& options);

/// Statements without a line end, at least `bytes` of them.
std::string GenerateLongLine(int64_t bytes);

}  // namespace quill::bench
