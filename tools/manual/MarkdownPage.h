#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "tools/manual/CodeHtml.h"

namespace quill::manual {

struct Heading {
  int level = 1;
  std::string anchor;
  std::string text;                ///< without markup, not escaped
  std::vector<std::string> words;  ///< set as code in the heading: what the index lists
};

/// A row of a table of members. The table's head names their kind as code that ends in a dot, "panel.", and
/// their names are the code in the first column; code like `skill1` to `skill20` stands for all between.
struct MemberRow {
  std::string anchor;
  std::vector<std::string> words;  ///< "panel.pos_x" and so on
};

/// A page written in Markdown (with tables, without HTML), as the content of an HTML body.
struct MarkdownPage {
  std::string title;  ///< of the first heading
  std::string html;
  std::vector<Heading> headings;
  std::vector<MemberRow> members;
  std::vector<std::string> links;   ///< as written: "page.md#anchor"
  std::vector<std::string> images;  ///< as written
};

/// Links to "page.md" become links to "page.html"; code in fences marked "vesper" is coloured.
MarkdownPage ReadMarkdown(std::string_view text, const Vocabulary& vocabulary, const HelpLink& link);

/// "page.html" of "page.md", with the anchor behind it kept.
std::string HtmlName(std::string_view link);

}  // namespace quill::manual
