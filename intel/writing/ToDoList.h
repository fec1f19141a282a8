#pragma once
#include <string>
#include <string_view>

#include "base/IoResult.h"

namespace quill {

inline constexpr char kToDoFileName[] = "todo.dat";

/// The to-do list: one text, kept in "todo.dat" beside the program.
class ToDoList {
 public:
  explicit ToDoList(const std::string& programFolder) : m_path(programFolder + '/' + kToDoFileName) {}

  /// The whole text with "\n" between lines; empty when the file is missing or cannot be read.
  std::string Load();
  /// Replaces the file, with CR LF between lines. A file that could not be read is not replaced by an
  /// empty text.
  IoResult Save(std::string_view text);

 private:
  std::string m_path;
  bool m_unreadable = false;
};

}  // namespace quill
