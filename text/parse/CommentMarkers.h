#pragma once
#include <string_view>

namespace quill {

/// How a language writes comments; an empty marker stands for none.
struct CommentMarkers {
  std::string_view open;   ///< of a block comment
  std::string_view close;  ///< of a block comment
  std::string_view line;   ///< of a comment up to the line's end
};

inline constexpr CommentMarkers kScriptCommentMarkers{"/*", "*/", "//"};

}  // namespace quill
