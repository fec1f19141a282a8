#include "tools/manual/MarkdownPage.h"

#include <md4c-html.h>

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <utility>

#include "base/CodePage1252.h"
#include "intel/vocabulary/CommandDatabase.h"

namespace quill::manual {
namespace {

constexpr std::string_view kCodeOpen = "<pre><code class=\"language-vesper\">";
constexpr std::string_view kCodeClose = "</code></pre>";
constexpr std::string_view kPageExtension = ".md";

void Append(const MD_CHAR* text, MD_SIZE size, void* target) {
  static_cast<std::string*>(target)->append(text, size);
}

std::string Unescaped(std::string_view html) {
  static constexpr std::pair<std::string_view, char> kEntities[] = {
      {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&amp;", '&'}};
  std::string text;
  while (!html.empty()) {
    const auto* entity = std::find_if(std::begin(kEntities), std::end(kEntities),
                                      [html](const auto& e) { return html.starts_with(e.first); });
    const bool found = entity != std::end(kEntities);
    text += found ? entity->second : html.front();
    html.remove_prefix(found ? entity->first.size() : 1);
  }
  return text;
}

std::string WithoutTags(std::string_view html) {
  std::string text;
  bool inTag = false;
  for (const char c : html) {
    if (c == '<') inTag = true;
    if (!inTag) text += c;
    if (c == '>') inTag = false;
  }
  return Unescaped(text);
}

/// Lower-case letters and digits, "-" for whatever is between them.
std::string AnchorOf(std::string_view text) {
  std::string anchor;
  for (const char c : text) {
    if (cp1252::IsAsciiAlnum(c) || c == '_') {
      anchor += cp1252::ToLower(c);
    } else if (!anchor.empty() && anchor.back() != '-') {
      anchor += '-';
    }
  }
  while (anchor.ends_with('-')) anchor.pop_back();
  return anchor;
}

std::vector<std::string> CodeWords(std::string_view html) {
  static constexpr std::string_view kOpen = "<code>";
  std::vector<std::string> words;
  for (size_t at = html.find(kOpen); at != std::string_view::npos; at = html.find(kOpen, at + 1)) {
    const size_t start = at + kOpen.size();
    words.push_back(Unescaped(html.substr(start, html.find('<', start) - start)));
  }
  return words;
}

/// What `word` and a number end in: "skill" and 12 of "skill12". The number is 0 when there is none.
std::pair<std::string_view, int> NumberedWord(std::string_view word) {
  size_t digits = word.size();
  while (digits > 0 && cp1252::IsAsciiDigit(word[digits - 1])) --digits;
  int number = 0;
  std::from_chars(word.data() + digits, word.data() + word.size(), number);
  return {word.substr(0, digits), number};
}

/// The members that the first cell of a row names.
std::vector<std::string> MembersOf(std::string_view cell, std::string_view prefix) {
  constexpr int kMostInARow = 100;
  std::vector<std::string> members;
  const std::vector<std::string> words = CodeWords(cell);
  for (size_t i = 0; i < words.size(); ++i) {
    // An index in brackets is no part of the name.
    const std::string word = words[i].substr(0, words[i].find('['));
    const auto [name, number] = NumberedWord(word);
    const bool isRange = i > 0 && cell.find("</code> to <code>" + words[i]) != std::string_view::npos;
    const int first = isRange ? NumberedWord(words[i - 1]).second + 1 : number;
    for (int n = first; isRange && n < number && number - n < kMostInARow; ++n)
      members.push_back(std::string(prefix).append(name) + std::to_string(n));
    members.push_back(std::string(prefix) + word);
  }
  return members;
}

/// What stands above code that is no script: what a script prints, or its errors.
std::string_view CaptionOf(std::string_view code) {
  if (code.starts_with("<pre><code class=\"language-output\">")) return "<p class=\"caption\">It prints:</p>";
  if (code.starts_with("<pre><code class=\"language-errors\">"))
    return "<p class=\"caption\">The error list has:</p>";
  return {};
}

/// Copies HTML and changes some of its tags on the way.
class Rewriter {
 public:
  Rewriter(std::string_view html, const Vocabulary& vocabulary, const HelpLink& link)
      : m_rest(html), m_vocabulary(vocabulary), m_link(link) {}

  MarkdownPage Run() {
    while (!m_rest.empty()) {
      if (m_rest.starts_with(kCodeOpen)) {
        const std::string code = Unescaped(Between(kCodeOpen, kCodeClose));
        const std::string_view lines = std::string_view(code).substr(0, code.find_last_not_of('\n') + 1);
        m_page.html += CodeBox(CodeHtml(lines, m_vocabulary, m_link));
      } else if (m_rest.starts_with("<pre><code")) {
        m_page.html += CaptionOf(m_rest);
        const size_t end = m_rest.find('>', m_rest.find("<code")) + 1;
        m_page.html += CodeBox(Between(m_rest.substr(0, end), kCodeClose));
      } else if (m_rest.starts_with("<h") && m_rest.size() > 3 && m_rest[3] == '>' && m_rest[2] != 'r') {
        CopyHeading();
      } else if (m_rest.starts_with("<a href=\"")) {
        CopyLink();
      } else if (m_rest.starts_with("<code>")) {
        CopyInlineCode();
      } else if (m_rest.starts_with("<p><img ")) {
        m_page.html += "<p class=\"picture\">";
        m_rest.remove_prefix(3);
      } else if (m_rest.starts_with("<img src=\"")) {
        m_page.images.emplace_back(m_rest.substr(10, m_rest.find('"', 10) - 10));
        Copy(1);
      } else if (m_rest.starts_with("<table>")) {
        m_page.html += "<table class=\"grid\" border=\"0\" cellspacing=\"0\" cellpadding=\"5\">";
        m_rest.remove_prefix(7);
      } else if (m_rest.starts_with("</table>")) {
        m_memberPrefix.clear();
        Copy(1);
      } else if (m_rest.starts_with("<th>")) {
        NoteTableHead();
      } else if (m_rest.starts_with("<tr>")) {
        m_inFirstCell = true;
        Copy(4);
      } else if (m_rest.starts_with("<td>") && m_inFirstCell) {
        CopyFirstCell();
      } else {
        Copy(std::min(m_rest.find('<', 1), m_rest.size()));
      }
    }
    if (!m_page.headings.empty()) m_page.title = m_page.headings.front().text;
    return std::move(m_page);
  }

 private:
  void Copy(size_t size) {
    m_page.html += m_rest.substr(0, size);
    m_rest.remove_prefix(size);
  }
  /// Takes `open`, what follows up to `close`, and `close`; returns the middle.
  std::string_view Between(std::string_view open, std::string_view close) {
    const size_t end = m_rest.find(close, open.size());
    if (end == std::string_view::npos) throw std::logic_error("unbalanced HTML");
    const std::string_view middle = m_rest.substr(open.size(), end - open.size());
    m_rest.remove_prefix(end + close.size());
    return middle;
  }
  void CopyHeading() {
    const std::string level(1, m_rest[2]);
    const std::string_view content = Between("<h1>", "</h" + level + ">");
    Heading heading{level[0] - '0', "", WithoutTags(content), CodeWords(content)};
    heading.anchor = AnchorOf(heading.text);
    m_page.html += "<h" + level + "><a name=\"" + heading.anchor + "\"></a>" + std::string(content) + "</h" +
                   level + ">";
    m_page.headings.push_back(std::move(heading));
  }
  /// Commands lead to their pages.
  void CopyInlineCode() {
    const std::string content(Between("<code>", "</code>"));
    const bool isCommand = m_vocabulary.commands.IsCommand(content);
    if (isCommand) m_page.html += "<a href=\"" + m_link(content) + "\">";
    m_page.html += "<code>" + content + "</code>";
    if (isCommand) m_page.html += "</a>";
  }
  void NoteTableHead() {
    const std::vector<std::string> words = CodeWords(m_rest.substr(0, m_rest.find("</th>")));
    if (words.size() == 1 && words.front().ends_with('.')) m_memberPrefix = words.front();
    Copy(4);
  }
  /// The row of a member is a place that the index leads to.
  void CopyFirstCell() {
    m_inFirstCell = false;
    Copy(4);
    if (m_memberPrefix.empty()) return;
    MemberRow row{"", MembersOf(m_rest.substr(0, m_rest.find("</td>")), m_memberPrefix)};
    if (row.words.empty()) return;
    row.anchor = AnchorOf(row.words.front());
    m_page.html += "<a name=\"" + row.anchor + "\"></a>";
    m_page.members.push_back(std::move(row));
  }
  void CopyLink() {
    const std::string link(Between("<a href=\"", "\""));
    m_page.html += "<a href=\"" + HtmlName(link) + "\"";
    m_page.links.push_back(link);
  }

  std::string_view m_rest;
  const Vocabulary& m_vocabulary;
  const HelpLink& m_link;
  MarkdownPage m_page;
  std::string m_memberPrefix;  ///< of the table, "panel."; empty when it does not list members
  bool m_inFirstCell = false;
};

}  // namespace

MarkdownPage ReadMarkdown(std::string_view text, const Vocabulary& vocabulary, const HelpLink& link) {
  std::string html;
  if (md_html(text.data(), static_cast<MD_SIZE>(text.size()), Append, &html, MD_FLAG_TABLES | MD_FLAG_NOHTML,
              0) != 0) {
    throw std::runtime_error("the Markdown cannot be read");
  }
  return Rewriter(html, vocabulary, link).Run();
}

std::string HtmlName(std::string_view link) {
  const size_t hash = std::min(link.find('#'), link.size());
  const std::string_view page = link.substr(0, hash);
  if (!page.ends_with(kPageExtension) || page.find(':') != std::string_view::npos) return std::string(link);
  return std::string(page.substr(0, page.size() - kPageExtension.size()))
      .append(".html")
      .append(link.substr(hash));
}

}  // namespace quill::manual
