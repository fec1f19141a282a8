#include "tools/manual/Manual.h"

#include <algorithm>

#include "base/CodePage1252.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/KeywordDatabase.h"
#include "intel/writing/ObjectMembers.h"
#include "res/Commands.h"
#include "res/Menus.h"

namespace quill::manual {
namespace {

constexpr char kProjectName[] = "quill.qhp";
constexpr char kCollectionProjectName[] = "quill.qhcp";
constexpr size_t kLargestPicture = 60 * 1024;  ///< bytes
constexpr uint32_t kWidestPicture = 1440;      ///< pixels of the file
constexpr uint32_t kPictureScale = 2;          ///< pixels of the file for one of the page
constexpr std::string_view kTableOpen =
    "<table class=\"grid\" border=\"0\" cellspacing=\"0\" cellpadding=\"5\">\n";

/// Around what only leads elsewhere, so that a search leaves it out.
const std::string kRelatedOpen = "<div class=\"related\">";
const std::string kRelatedClose = "</div>\n";

std::string PageShell(std::string_view title, std::string_view body) {
  return "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" + EscapeHtml(title) +
         "</title>\n<link rel=\"stylesheet\" type=\"text/css\" href=\"" + kStyleSheet +
         "\">\n</head>\n<body>\n" + std::string(body) + "</body></html>\n";
}

std::string CommandPageLink(std::string_view command) {
  return CommandPageName(cp1252::ToLower(command));
}

std::string Link(std::string_view target, std::string_view text) {
  return "<a href=\"" + EscapeHtml(target) + "\">" + EscapeHtml(text) + "</a>";
}

/// The first sentence of a help text.
std::string_view Summary(std::string_view help) {
  help = help.substr(0, help.find(kHelpLineBreak));
  return help.substr(0, std::min(help.find(". "), help.size() - 1) + 1);
}

std::string FieldAnchor(std::string_view field) {
  std::string anchor;
  for (const char c : field) anchor += cp1252::IsAsciiAlnum(c) ? cp1252::ToLower(c) : '-';
  return anchor;
}

/// The commands of each field, fields in the order of the sources.
std::vector<std::pair<std::string, std::vector<const CommandEntry*>>> ByField(
    const std::vector<CommandEntry>& commands) {
  std::vector<std::pair<std::string, std::vector<const CommandEntry*>>> fields;
  for (const CommandEntry& command : commands) {
    auto at =
        std::find_if(fields.begin(), fields.end(), [&](const auto& f) { return f.first == command.field; });
    if (at == fields.end()) at = fields.insert(at, {command.field, {}});
    at->second.push_back(&command);
  }
  return fields;
}

std::string KeyTexts(const Command& command) {
  std::string keys;
  for (const std::string_view shortcut : ShortcutsOf(command)) {
    if (!keys.empty()) keys += ", ";
    keys += shortcut;
  }
  return keys;
}

/// "Ctrl+1: Go to Bookmark 1" and what is alike but for the number differ only in this digit at the end.
bool IsNextOfSeries(const Command& command, const Command& previous) {
  const auto alike = [](std::string_view a, std::string_view b) {
    return a.size() == b.size() && !a.empty() && cp1252::IsAsciiDigit(a.back()) &&
           cp1252::IsAsciiDigit(b.back()) && a.substr(0, a.size() - 1) == b.substr(0, b.size() - 1);
  };
  return alike(KeyTexts(command), KeyTexts(previous)) &&
         alike(PlainLabel(command.menuText), PlainLabel(previous.menuText));
}

/// A row for each command of a menu that has keys; a series is one row.
std::string KeyRows(const std::string& menu) {
  std::vector<const Command*> commands;
  for (const Command& command : Commands()) {
    const std::string path = MenuPath(command.id);
    if ((path == menu || path.starts_with(menu + " > ")) && !ShortcutsOf(command).empty())
      commands.push_back(&command);
  }
  std::string rows;
  for (size_t i = 0; i < commands.size(); ++i) {
    const Command& first = *commands[i];
    while (i + 1 < commands.size() && IsNextOfSeries(*commands[i + 1], *commands[i])) ++i;
    const Command& last = *commands[i];
    const bool isSeries = &first != &last;
    const std::string label = PlainLabel(first.menuText);
    const std::string keys = KeyTexts(first) + (isSeries ? " to " + KeyTexts(last) : std::string());
    const std::string name =
        isSeries ? label + " to " + PlainLabel(last.menuText).substr(label.size() - 1) : label;
    rows += "<tr><td>" + EscapeHtml(keys) + "</td><td>" + EscapeHtml(name) + "</td><td>" +
            EscapeHtml(first.help) + "</td></tr>\n";
  }
  return rows;
}

}  // namespace

std::string CommandPageName(std::string_view command) {
  return "command-" + std::string(command) + ".html";
}

Manual::Manual(const Vocabulary& vocabulary, const std::vector<CommandEntry>& commands)
    : m_vocabulary(vocabulary), m_commands(commands) {}

void Manual::AddPage(const std::string& name, std::string_view markdown) {
  m_pages[name] = ReadMarkdown(markdown, m_vocabulary, CommandPageLink);
}

void Manual::AddPicture(const std::string& name, std::string_view png) {
  const std::optional<PictureSize> size = PngSize(png);
  if (!size) return m_problems.push_back(name + ": this is no PNG file"), void();
  if (png.size() > kLargestPicture || size->width > kWidestPicture)
    m_problems.push_back(name + ": the picture is too large");
  m_pictures[name] = *size;
}

void Manual::Finish() {
  MakeCommandPages();
  MakeCommandList();
  MakeKeyList();
  CheckLinks();
  CheckPictures();
  CheckWords();
  for (const auto& [name, page] : m_pages) {
    m_files[HtmlName(name)] = PageShell(page.title, WithPictureSizes(page));
  }
  MakeProject();
}

void Manual::MakeCommandPages() {
  for (const auto& [field, commands] : ByField(m_commands)) {
    for (const CommandEntry* command : commands) {
      const HelpParts help = SplitHelp(command->help);
      std::string others;
      for (const CommandEntry* other : commands) {
        if (other == command) continue;
        if (!others.empty()) others += ", ";
        others += Link(CommandPageName(other->name), other->name);
      }
      m_files[CommandPageName(command->name)] = PageShell(
          command->name,
          kRelatedOpen + Link(HtmlName(kCommandsPage) + "#" + FieldAnchor(field), field) + kRelatedClose +
              "<h1>" + EscapeHtml(command->name) + "</h1>\n<p class=\"signature\"><code>" +
              EscapeHtml(command->parameters) + "</code></p>\n<p>" +
              HtmlWithLinks(help.text, m_vocabulary.commands, command->name, CommandPageLink) +
              "</p>\n<h3>Example</h3>\n" + CodeBox(CodeHtml(help.example, m_vocabulary, CommandPageLink)) +
              kRelatedOpen + "<h3>In the same field</h3>\n<p>" + others + "</p>" + kRelatedClose);
    }
  }
}

void Manual::MakeCommandList() {
  MarkdownPage page;
  page.title = "Commands";
  page.headings.push_back({1, "", page.title, {}});
  page.html = "<h1>Commands</h1>\n<p>Each name leads to the command's own page.</p>\n";
  for (const auto& [field, commands] : ByField(m_commands)) {
    page.headings.push_back({2, FieldAnchor(field), field, {}});
    page.html += "<h2><a name=\"" + FieldAnchor(field) + "\"></a>" + EscapeHtml(field) + "</h2>\n";
    page.html += kTableOpen;
    for (const CommandEntry* command : commands) {
      page.html += "<tr><td><a href=\"" + CommandPageName(command->name) + "\">" + EscapeHtml(command->name) +
                   "</a>" + EscapeHtml(std::string_view(command->parameters).substr(command->name.size())) +
                   "</td><td>" + EscapeHtml(Summary(command->help)) + "</td></tr>\n";
    }
    page.html += "</table>\n";
  }
  m_pages[kCommandsPage] = page;
}

void Manual::MakeKeyList() {
  MarkdownPage page;
  page.title = "Keys";
  page.headings.push_back({1, "", page.title, {}});
  page.html =
      "<h1>Keys</h1>\n<p>The keys of the menu commands as they are set at first. Those that move the caret "
      "are on "
      "the page about editing.</p>\n";
  for (const Menu& menu : MenuBar()) {
    const std::string title = PlainLabel(menu.text);
    const std::string rows = KeyRows(title);
    if (rows.empty()) continue;
    page.headings.push_back({2, FieldAnchor(title), title, {}});
    page.html += "<h2><a name=\"" + FieldAnchor(title) + "\"></a>" + EscapeHtml(title) + "</h2>\n";
    (page.html += kTableOpen) += rows + "</table>\n";
  }
  m_pages[kKeysPage] = page;
}

void Manual::CheckLinks() {
  if (!m_pages.contains(kStartPage))
    return m_problems.emplace_back("there is no start page index.md"), void();
  std::set<std::string> linked{kStartPage};
  for (const auto& [name, page] : m_pages) {
    for (const std::string& link : page.links) {
      CheckLink(name, link);
      if (name == kStartPage) linked.insert(link.substr(0, link.find('#')));
    }
  }
  for (const auto& [name, page] : m_pages) {
    if (!linked.contains(name)) m_problems.push_back(name + ": the start page does not lead there");
  }
}

void Manual::CheckLink(const std::string& page, const std::string& link) {
  const size_t hash = std::min(link.find('#'), link.size());
  const auto target = m_pages.find(link.substr(0, hash));
  const std::string anchor = hash < link.size() ? link.substr(hash + 1) : std::string();
  const bool found =
      target != m_pages.end() &&
      (anchor.empty() || std::any_of(target->second.headings.begin(), target->second.headings.end(),
                                     [&](const Heading& h) { return h.anchor == anchor; }));
  if (!found) m_problems.push_back(page + ": the link to " + link + " leads nowhere");
}

void Manual::CheckPictures() {
  std::set<std::string> shown;
  for (const auto& [name, page] : m_pages) {
    for (const std::string& image : page.images) {
      shown.insert(image);
      if (!m_pictures.contains(image)) m_problems.push_back(name + ": there is no picture " + image);
    }
  }
  for (const auto& [name, size] : m_pictures) {
    if (!shown.contains(name)) m_problems.push_back("no page shows the picture " + name);
  }
}

void Manual::CheckWords() {
  std::set<std::string> explained;
  for (const IndexWord& entry : MakeIndex()) {
    if (!explained.insert(cp1252::ToLower(entry.word)).second)
      m_problems.push_back("two places explain " + entry.word);
  }
  for (const std::string& keyword : m_vocabulary.keywords.ScriptKeywords().Words()) {
    if (!explained.contains(keyword)) m_problems.push_back("no heading explains the keyword " + keyword);
  }
  for (const ObjectKind& kind : m_vocabulary.kinds) {
    for (const ObjectMember& member : kind.members) {
      const std::string word = std::string(kind.prefix).append(member.name);
      if (!explained.contains(word)) m_problems.push_back("no table explains the member " + word);
    }
  }
}

/// Every picture gets the size that it has on the page.
std::string Manual::WithPictureSizes(const MarkdownPage& page) const {
  std::string html = page.html;
  for (const std::string& image : page.images) {
    const auto picture = m_pictures.find(image);
    const std::string tag = "<img src=\"" + image + "\"";
    const size_t at = html.find(tag);
    if (picture == m_pictures.end() || at == std::string::npos) continue;
    html.insert(at + tag.size(), " width=\"" + std::to_string(picture->second.width / kPictureScale) +
                                     "\" height=\"" + std::to_string(picture->second.height / kPictureScale) +
                                     "\"");
  }
  return html;
}

Section Manual::SectionOf(const std::string& name) const {
  const MarkdownPage& page = m_pages.at(name);
  Section section{page.title, HtmlName(name), {}};
  for (const Heading& heading : page.headings) {
    if (heading.level != 2) continue;
    Section part{heading.text, HtmlName(name) + "#" + heading.anchor, {}};
    if (name == kCommandsPage) {
      for (const CommandEntry& command : m_commands) {
        if (command.field == heading.text)
          part.sections.push_back({command.name, CommandPageName(command.name), {}});
      }
    }
    section.sections.push_back(std::move(part));
  }
  return section;
}

std::vector<IndexWord> Manual::MakeIndex() const {
  std::vector<IndexWord> index;
  for (const auto& [name, page] : m_pages) {
    for (const Heading& heading : page.headings) {
      for (const std::string& word : heading.words)
        index.push_back({word, HtmlName(name) + "#" + heading.anchor});
    }
    for (const MemberRow& row : page.members) {
      for (const std::string& word : row.words) index.push_back({word, HtmlName(name) + "#" + row.anchor});
    }
  }
  for (const CommandEntry& command : m_commands)
    index.push_back({command.name, CommandPageName(command.name)});
  return index;
}

void Manual::MakeProject() {
  HelpProject project;
  if (m_pages.contains(kStartPage)) {
    const MarkdownPage& start = m_pages.at(kStartPage);
    Section root{start.title, HtmlName(kStartPage), {}};
    std::set<std::string> listed;
    for (const std::string& link : start.links) {
      const std::string name = link.substr(0, link.find('#'));
      if (m_pages.contains(name) && listed.insert(name).second) root.sections.push_back(SectionOf(name));
    }
    project.contents.push_back(std::move(root));
  }
  project.index = MakeIndex();
  for (const auto& [name, content] : m_files) project.files.push_back(name);
  project.files.insert(project.files.end(), {kStyleSheet, kDarkStyleSheet});
  for (const auto& [name, size] : m_pictures) project.files.push_back(name);
  m_files[kProjectName] = ProjectXml(project);
  m_files[kCollectionProjectName] = CollectionXml(kProjectName);
}

}  // namespace quill::manual
