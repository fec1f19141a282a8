#include "intel/manual/ManualSearch.h"

#include <algorithm>
#include <stdexcept>

#include "base/CodePage1252.h"

namespace quill {
namespace {

constexpr int kWholeTitle = 1000;  ///< points for a heading that is nothing but the query
constexpr int kTitleWord = 100;
constexpr int kHeadingBegins = 30;
constexpr int kMostCounted = 20;     ///< places of a word in a text
constexpr size_t kBeforeMatch = 40;  ///< bytes of an excerpt
constexpr size_t kWholeExcerpt = 180;

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}
/// Bytes of UTF-8 beyond ASCII are letters.
bool IsWordByte(char c) {
  return cp1252::IsAsciiAlnum(c) || static_cast<unsigned char>(c) >= 0x80;
}
bool IsQueryByte(char c) {
  return IsWordByte(c) || c == '_' || c == '#';
}

/// The next place from `from` on where `word`, in lower case, begins a word.
size_t FindWord(std::string_view text, std::string_view word, size_t from) {
  for (;;) {
    const auto found =
        std::search(text.begin() + static_cast<std::ptrdiff_t>(std::min(from, text.size())), text.end(),
                    word.begin(), word.end(), [](char a, char b) { return Lower(a) == b; });
    if (found == text.end()) return std::string_view::npos;
    const auto at = static_cast<size_t>(found - text.begin());
    if (at == 0 || !IsWordByte(text[at - 1]) || !IsWordByte(word.front())) return at;
    from = at + 1;
  }
}

int CountWord(std::string_view text, std::string_view word) {
  int count = 0;
  for (size_t at = FindWord(text, word, 0); at != std::string_view::npos && count < kMostCounted;
       at = FindWord(text, word, at + word.size())) {
    ++count;
  }
  return count;
}

/// 0 when the section does not have the word.
int Points(const ManualSection& section, std::string_view word) {
  int points = CountWord(section.text, word);
  const size_t inHeading = FindWord(section.heading, word, 0);
  if (inHeading != std::string_view::npos) points += kTitleWord;
  if (inHeading == 0) points += kHeadingBegins;
  return points;
}

bool IsWhole(std::string_view heading, std::string_view query) {
  return std::equal(heading.begin(), heading.end(), query.begin(), query.end(),
                    [](char a, char b) { return Lower(a) == Lower(b); });
}

/// What a section earns for all words together; 0 when it is not to be found. A word of the page's title
/// holds for all of the page's sections, but earns nothing and is not enough.
int Points(const ManualSection& section, const std::vector<std::string>& words) {
  int sum = 0;
  for (const std::string& word : words) {
    const int points = Points(section, word);
    if (points == 0 && FindWord(section.page, word, 0) == std::string_view::npos) return 0;
    sum += points;
  }
  if (sum > 0 && words.size() == 1 && IsWhole(section.heading, words.front())) sum += kWholeTitle;
  return sum;
}

size_t CharacterStart(std::string_view text, size_t at) {
  while (at > 0 && at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) --at;
  return at;
}

}  // namespace

std::vector<std::string> QueryWords(std::string_view query) {
  std::vector<std::string> words;
  bool inWord = false;
  for (const char c : query) {
    const bool belongs = IsQueryByte(c);
    if (belongs && !inWord) words.emplace_back();
    if (belongs) words.back() += Lower(c);
    inWord = belongs;
  }
  return words;
}

void ManualSearch::Add(std::vector<ManualSection> sections) {
  m_sections.insert(m_sections.end(), std::make_move_iterator(sections.begin()),
                    std::make_move_iterator(sections.end()));
}

std::vector<size_t> ManualSearch::Find(std::string_view query) const {
  struct Hit {
    size_t position;
    int points;
  };
  const std::vector<std::string> words = QueryWords(query);
  std::vector<Hit> hits;
  for (size_t i = 0; i < m_sections.size(); ++i) {
    const int points = Points(m_sections[i], words);
    if (points > 0) hits.push_back({i, points});
  }
  std::stable_sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) { return a.points > b.points; });
  std::vector<size_t> positions;
  positions.reserve(hits.size());
  for (const Hit& hit : hits) positions.push_back(hit.position);
  return positions;
}

ManualExcerpt ManualSearch::Excerpt(size_t position, std::string_view query) const {
  // A title without words of its own is told by what follows it.
  const bool isBare = Section(position).text.empty() && position + 1 < m_sections.size() &&
                      m_sections[position + 1].page == Section(position).page;
  const std::string& text = Section(isBare ? position + 1 : position).text;
  const std::vector<std::string> words = QueryWords(query);
  size_t first = std::string::npos;
  for (const std::string& word : words) first = std::min(first, FindWord(text, word, 0));
  size_t start = 0;
  if (first != std::string::npos && first > kBeforeMatch) {
    start = text.find(' ', first - kBeforeMatch);
    start = start < first ? start + 1 : CharacterStart(text, first);
  }
  size_t end = text.size();
  if (end - start > kWholeExcerpt) end = CharacterStart(text, start + kWholeExcerpt);
  ManualExcerpt excerpt{text.substr(start, end - start), {}};
  for (const std::string& word : words) {
    for (size_t at = FindWord(excerpt.text, word, 0); at != std::string::npos;
         at = FindWord(excerpt.text, word, at + word.size())) {
      excerpt.matches.push_back({at, at + word.size()});
    }
  }
  std::sort(excerpt.matches.begin(), excerpt.matches.end(),
            [](const auto& a, const auto& b) { return a.start < b.start; });
  return excerpt;
}

}  // namespace quill
