#pragma once
#include <string>

namespace quill {

/// What the program's other parts may know of the project that is open.
class OpenProject {
 public:
  virtual ~OpenProject() = default;
  /// For the title of the main window; empty while no project is open.
  virtual std::string Name() const = 0;
};

}  // namespace quill
