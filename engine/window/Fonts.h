// Letters of the system's fonts, each in a cell of fixed size.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/window/Canvas.h"

namespace korvel::window {

/// A game measures its texts without a window, so each letter of a font takes the same width. Faces that the
/// system does not have are drawn with its own fixed one; without any, nothing is drawn.
class Fonts {
 public:
  Fonts();
  ~Fonts();
  Fonts(const Fonts&) = delete;
  Fonts& operator=(const Fonts&) = delete;

  /// A letter of code page 1252 in a cell of this size in pixels, at most 1,000 each. It stays valid until
  /// the next call.
  Mask Letter(std::string_view face, int width, int height, uint8_t letter);

 private:
  struct Face;
  struct Cells {
    std::vector<uint8_t> letters[256];
    bool drawn[256] = {};
  };

  Face* Find(std::string_view name);
  void Draw(Face& face, int width, int height, uint8_t letter, std::vector<uint8_t>& cell);
  void List(const std::string& folder, int depth);

  bool works_ = false;
  std::map<std::string, std::string> files_;  ///< by name: lower case, without blanks and marks
  std::map<std::string, std::unique_ptr<Face>, std::less<>> faces_;
  std::map<std::string, std::unique_ptr<Cells>> cells_;
};

}  // namespace korvel::window
