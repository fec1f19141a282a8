#pragma once
#include <array>
#include <cstddef>
#include <cstdint>

namespace quill {

/// Turns away most hashes that were never added, with one load and no branch. Up to `kGoodFor` hashes it
/// lets fewer than one strange hash in twenty through; with more it only gets less useful.
class HashFilter {
 public:
  static constexpr size_t kGoodFor = 3000;

  void Clear() { m_words.fill(0); }
  void Add(uint64_t hash) { m_words[hash >> kShift] |= uint64_t{1} << (hash & 63); }
  bool MayHave(uint64_t hash) const { return (m_words[hash >> kShift] >> (hash & 63) & 1) != 0; }

 private:
  static constexpr int kShift = 54;

  std::array<uint64_t, size_t{1} << (64 - kShift)> m_words{};
};

}  // namespace quill
