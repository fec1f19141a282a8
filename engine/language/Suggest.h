// "Did you mean ...?": the known word that is nearest to a wrong one.
#pragma once

#include <string_view>

#include "engine/language/Names.h"

namespace korvel {

/// Collects candidates and keeps the nearest one.
class Suggestion {
 public:
  explicit Suggestion(std::string_view wrong);

  /// Looks at a known word.
  void Consider(std::string_view known);

  /// The nearest word, or null when none is near enough.
  const char* best() const { return best_; }

 private:
  std::string_view wrong_;
  const char* best_ = nullptr;
  size_t distance_;
};

}  // namespace korvel
