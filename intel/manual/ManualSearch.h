#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace quill {

/// A page of the manual from one heading to the next.
struct ManualSection {
  std::string target;  ///< page name, and "#anchor" for what is not its beginning
  std::string page;    ///< title of the page
  std::string heading;
  std::string text;  ///< what follows the heading: UTF-8, one blank between words
};

/// The sections of a page. Level 1 to 3 headings begin one; their anchors stand right behind the tag. The
/// heads of tables and what is in a <div class="related"> belong to none. Markup of any kind is read; what is
/// broken is taken as text.
std::vector<ManualSection> SectionsOf(std::string_view name, std::string_view html);

/// A piece of a section's text, in which [start, end) are the bytes that were found.
struct ManualExcerpt {
  struct Match {
    size_t start;
    size_t end;
  };
  std::string text;
  std::vector<Match> matches;
};

/// Finds sections by words.
class ManualSearch {
 public:
  void Add(std::vector<ManualSection> sections);

  /// Positions of the sections in which every word of `query` begins a word, the best ones first: those with
  /// the words in their heading, then those that have them more often. Upper and lower case are the same,
  /// and "_" separates words. Empty for a query without words.
  std::vector<size_t> Find(std::string_view query) const;
  const ManualSection& Section(size_t position) const { return m_sections.at(position); }
  /// Text around the first place of a section that has a word of the query, else its beginning.
  ManualExcerpt Excerpt(size_t position, std::string_view query) const;

 private:
  std::vector<ManualSection> m_sections;
};

/// The words of a query in lower case.
std::vector<std::string> QueryWords(std::string_view query);

}  // namespace quill
