#include "engine/language/Suggest.h"

#include <algorithm>

namespace korvel {
namespace {

constexpr size_t kLongest = 40;

// Edits that turn one word into the other: a letter more, fewer, another, or two exchanged.
size_t Distance(std::string_view a, std::string_view b) {
  size_t rows[3][kLongest + 1];
  size_t* before = rows[0];
  size_t* last = rows[1];
  size_t* row = rows[2];
  for (size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const bool same = LowerOf(a[i - 1]) == LowerOf(b[j - 1]);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
      if (i > 1 && j > 1 && LowerOf(a[i - 1]) == LowerOf(b[j - 2]) &&
          LowerOf(a[i - 2]) == LowerOf(b[j - 1])) {
        row[j] = std::min(row[j], before[j - 2] + 1);
      }
    }
    std::swap(before, last);
    std::swap(last, row);
  }
  return last[b.size()];
}

}  // namespace

Suggestion::Suggestion(std::string_view wrong)
    : wrong_(wrong), distance_(wrong.size() < 4 ? 2 : wrong.size() / 3 + 1) {}

void Suggestion::Consider(std::string_view known) {
  if (wrong_.size() > kLongest || known.size() > kLongest || known.empty()) return;
  const size_t lengths =
      wrong_.size() > known.size() ? wrong_.size() - known.size() : known.size() - wrong_.size();
  if (lengths >= distance_) return;
  const size_t distance = Distance(wrong_, known);
  if (distance >= distance_) return;
  distance_ = distance;
  best_ = known.data();
}

}  // namespace korvel
