#pragma once

/// What the compiled manual calls its parts, for who makes it and who shows it.
namespace quill::manual {

inline constexpr char kHelpNamespace[] = "quill.manual";
inline constexpr char kHelpFolder[] = "manual";
inline constexpr char kCompiledName[] = "quill.qch";
inline constexpr char kCollectionName[] = "quill.qhc";
inline constexpr char kStartPageName[] = "index.html";
inline constexpr char kStyleSheet[] = "manual.css";
/// Shown instead on a dark desktop.
inline constexpr char kDarkStyleSheet[] = "manual-dark.css";

}  // namespace quill::manual
