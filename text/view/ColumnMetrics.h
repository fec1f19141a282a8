#pragma once
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quill {

/// Horizontal places within a line. Lengths are 1/64 pixel, from the line's start; a tab reaches to
/// the next multiple of the tab width.
class ColumnMetrics {
 public:
  static constexpr int64_t kUnitsPerPixel = 64;
  using Advances = std::array<int32_t, 256>;  ///< by byte; the tab's entry is not used

  /// `tabSize` in blanks, at least 1.
  void Set(const Advances& advances, int32_t tabSize);

  /// True when all characters are equally wide: then a place is a column times `Cell`.
  bool IsUniform() const { return m_uniform; }
  int64_t Cell() const { return m_advances[' ']; }
  int64_t TabWidth() const { return m_tabWidth; }
  int32_t Advance(char c) const { return m_advances[static_cast<uint8_t>(c)]; }
  int32_t WidestAdvance() const { return m_widest; }

  /// The place behind `text` when it starts at `x`.
  int64_t Walk(std::string_view text, int64_t x) const;
  /// Number of characters of `text`, starting at `x`, that end at or before `target`. With `nearest` a
  /// character counts from its middle on. `x` becomes the place behind them.
  int32_t CountUpTo(std::string_view text, int64_t& x, int64_t target, bool nearest) const;

 private:
  int64_t NextTab(int64_t x) const { return (x / m_tabWidth + 1) * m_tabWidth; }
  int64_t AfterCharacter(char c, int64_t x) const { return c == '\t' ? NextTab(x) : x + Advance(c); }

  Advances m_advances{};
  int64_t m_tabWidth = 1;
  int32_t m_widest = 1;
  bool m_uniform = false;
};

/// Places in long lines, kept for every few thousand characters, so that a step within a line of
/// millions of characters does not walk over all of it. Holds the lines used last.
class LongLinePlaces {
 public:
  static constexpr int32_t kStep = 4096;  ///< characters between kept places

  explicit LongLinePlaces(const ColumnMetrics& metrics) : m_metrics(metrics) {}

  /// Place of a character.
  int64_t XOf(int32_t line, std::string_view text, int32_t character);
  /// Character at or nearest to a place.
  int32_t CharacterAt(int32_t line, std::string_view text, int64_t x, bool nearest);
  int64_t Width(int32_t line, std::string_view text) {
    return XOf(line, text, static_cast<int32_t>(text.size()));
  }
  /// A line's text changed from `character` on.
  void OnLineChanged(int32_t line, int32_t character);
  /// Lines came or went, or the metrics changed.
  void Clear() { m_entries.clear(); }

 private:
  struct Entry {
    int32_t line;
    std::vector<int64_t> places;  ///< of character n * kStep
  };
  static constexpr size_t kMostEntries = 64;
  Entry& EntryOf(int32_t line);
  void Extend(Entry& entry, std::string_view text, size_t count) const;

  const ColumnMetrics& m_metrics;
  std::vector<Entry> m_entries;  ///< the one used last in front
};

}  // namespace quill
