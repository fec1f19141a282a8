#include "tools/manual/MarkdownPage.h"

#include <md4c-html.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/CodePage1252.h"
#include "intel/CommandDatabase.h"

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
        const size_t end = m_rest.find('>', m_rest.find("<code")) + 1;
        m_page.html += CodeBox(Between(m_rest.substr(0, end), kCodeClose));
      } else if (m_rest.starts_with("<h") && m_rest.size() > 3 && m_rest[3] == '>' && m_rest[2] != 'r') {
        CopyHeading();
      } else if (m_rest.starts_with("<a href=\"")) {
        CopyLink();
      } else if (m_rest.starts_with("<code>")) {
        CopyInlineCode();
      } else if (m_rest.starts_with("<img src=\"")) {
        m_page.images.emplace_back(m_rest.substr(10, m_rest.find('"', 10) - 10));
        Copy(1);
      } else if (m_rest.starts_with("<table>")) {
        m_page.html += "<table class=\"grid\" border=\"0\" cellspacing=\"0\" cellpadding=\"5\">";
        m_rest.remove_prefix(7);
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
  void CopyLink() {
    const std::string link(Between("<a href=\"", "\""));
    m_page.html += "<a href=\"" + HtmlName(link) + "\"";
    if (HtmlName(link) != link) m_page.links.push_back(link);
  }

  std::string_view m_rest;
  const Vocabulary& m_vocabulary;
  const HelpLink& m_link;
  MarkdownPage m_page;
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
