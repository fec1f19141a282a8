#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "base/CodePage1252.h"
#include "intel/manual/ManualSearch.h"

namespace quill {
namespace {

/// What belongs to no section.
constexpr std::pair<std::string_view, std::string_view> kLeftOut[] = {{"<div class=\"related\">", "</div>"},
                                                                      {"<thead>", "</thead>"}};
constexpr size_t kLongestEntity = 8;  ///< bytes, "&" and ";" included

std::string Utf8(uint32_t c) {
  std::string bytes;
  if (c < 0x80) {
    bytes += static_cast<char>(c);
  } else if (c < 0x800) {
    bytes += static_cast<char>(0xC0 | c >> 6);
    bytes += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    bytes += static_cast<char>(0xE0 | (c >> 12 & 0xF));
    bytes += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    bytes += static_cast<char>(0x80 | (c & 0x3F));
  }
  return bytes;
}

/// The character of an entity without "&" and ";".
std::optional<std::string> EntityText(std::string_view entity) {
  static constexpr std::pair<std::string_view, char> kNamed[] = {
      {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"amp", '&'}};
  for (const auto& [name, c] : kNamed) {
    if (entity == name) return std::string(1, c);
  }
  uint32_t number = 0;
  if (!entity.starts_with('#')) return std::nullopt;
  const auto [end, error] = std::from_chars(entity.data() + 1, entity.data() + entity.size(), number);
  if (error != std::errc() || end != entity.data() + entity.size() || number == 0 || number > 0xFFFF)
    return std::nullopt;
  return Utf8(number);
}

std::string_view Between(std::string_view text, std::string_view open, std::string_view close) {
  const size_t start = text.find(open);
  if (start == std::string_view::npos) return {};
  text.remove_prefix(start + open.size());
  return text.substr(0, text.find(close));
}

class SectionReader {
 public:
  SectionReader(std::string_view name, std::string_view html) : m_name(name), m_rest(html) {}

  std::vector<ManualSection> Run() {
    std::string title;
    AppendText(Between(m_rest, "<title>", "</title>"), title);
    m_rest.remove_prefix(std::min(m_rest.find("<body>"), m_rest.size()));
    m_sections.push_back({m_name, title, title, {}});
    while (!m_rest.empty()) {
      LeaveOut();
      if (m_rest.starts_with('<') && m_rest.find('>') != std::string_view::npos) {
        TakeTag();
      } else {
        const std::string_view text = m_rest.substr(0, m_rest.find('<', 1));
        AppendText(text, m_inHeading ? m_sections.back().heading : m_sections.back().text);
        m_rest.remove_prefix(text.size());
      }
    }
    for (ManualSection& section : m_sections) {
      Trim(section.heading);
      Trim(section.text);
    }
    return std::move(m_sections);
  }

 private:
  void LeaveOut() {
    for (const auto& [open, close] : kLeftOut) {
      if (m_rest.starts_with(open)) m_rest.remove_prefix(std::min(m_rest.find(close), m_rest.size()));
    }
  }
  static void Trim(std::string& text) {
    while (text.ends_with(' ')) text.pop_back();
  }
  /// White space of any length becomes one blank, none at the beginning.
  static void AppendBlank(std::string& text) {
    if (!text.empty() && text.back() != ' ') text += ' ';
  }
  static void AppendText(std::string_view html, std::string& text) {
    while (!html.empty()) {
      const size_t end = html.front() == '&' ? html.find(';') : std::string_view::npos;
      const auto entity = end < kLongestEntity ? EntityText(html.substr(1, end - 1)) : std::nullopt;
      if (entity) {
        text += *entity;
      } else if (html.front() == ' ' || html.front() == '\n' || html.front() == '\r' ||
                 html.front() == '\t') {
        AppendBlank(text);
      } else {
        text += html.front();
      }
      html.remove_prefix(entity ? end + 1 : 1);
    }
  }
  static bool IsInline(std::string_view tag) {
    static constexpr std::string_view kInline[] = {"a", "code", "em", "strong", "span"};
    if (tag.starts_with('/')) tag.remove_prefix(1);
    const std::string_view name = tag.substr(0, tag.find(' '));
    return std::find(std::begin(kInline), std::end(kInline), name) != std::end(kInline);
  }
  void TakeTag() {
    const std::string_view tag = m_rest.substr(1, m_rest.find('>') - 1);
    m_rest.remove_prefix(tag.size() + 2);
    ManualSection& section = m_sections.back();
    if (tag == "h1" || tag == "h2" || tag == "h3") {
      BeginSection(tag == "h1");
    } else if (tag == "/h1" || tag == "/h2" || tag == "/h3") {
      m_inHeading = false;
    } else if (!IsInline(tag)) {
      AppendBlank(m_inHeading ? section.heading : section.text);
    }
  }
  void BeginSection(bool isTitle) {
    m_inHeading = true;
    std::string anchor(m_rest.starts_with("<a name=\"") ? Between(m_rest, "\"", "\"") : std::string_view());
    if (isTitle || anchor.empty()) {
      if (isTitle) m_sections.back().heading.clear();
      m_inHeading = isTitle;
      return;
    }
    m_sections.push_back({m_name + "#" + anchor, m_sections.front().page, {}, {}});
  }

  std::string m_name;
  std::string_view m_rest;
  std::vector<ManualSection> m_sections;
  bool m_inHeading = false;
};

}  // namespace

std::vector<ManualSection> SectionsOf(std::string_view name, std::string_view html) {
  return SectionReader(name, html).Run();
}

}  // namespace quill
