#pragma once
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "intel/vocabulary/CommandSource.h"
#include "tools/manual/HelpProject.h"
#include "tools/manual/MarkdownPage.h"
#include "tools/manual/Picture.h"

namespace quill::manual {

/// The pages that are made, not written. Other pages link to them under these names.
inline constexpr char kStartPage[] = "index.md";
inline constexpr char kKeysPage[] = "keys.md";
inline constexpr char kCommandsPage[] = "commands.md";

/// The manual: written pages, a page for each command, a list of the commands by field and one of the keys,
/// with contents and index. The start page's links to pages are the table of contents, in their order.
class Manual {
 public:
  /// `commands` are those of the vocabulary, with their fields.
  Manual(const Vocabulary& vocabulary, const std::vector<CommandEntry>& commands);

  /// `name` is "page.md".
  void AddPage(const std::string& name, std::string_view markdown);
  /// A file below the manual's folder that pages show, as they name it: "images/window.png". It has two
  /// pixels for each one of a page.
  void AddPicture(const std::string& name, std::string_view png);
  /// Makes all pages. `Problems` is complete afterwards.
  void Finish();

  /// HTML pages and help projects by file name.
  const std::map<std::string, std::string>& Files() const { return m_files; }
  /// Links that lead nowhere, pages that nothing leads to, keywords and members that nothing explains,
  /// pictures that do not fit.
  const std::vector<std::string>& Problems() const { return m_problems; }

 private:
  void MakeCommandPages();
  void MakeCommandList();
  void MakeKeyList();
  void CheckLinks();
  void CheckLink(const std::string& page, const std::string& link);
  void CheckPictures();
  void CheckWords();
  std::string WithPictureSizes(const MarkdownPage& page) const;
  Section SectionOf(const std::string& page) const;
  std::vector<IndexWord> MakeIndex() const;
  void MakeProject();

  Vocabulary m_vocabulary;
  const std::vector<CommandEntry>& m_commands;
  std::map<std::string, MarkdownPage> m_pages;  ///< by Markdown name, made ones included
  std::map<std::string, PictureSize> m_pictures;
  std::map<std::string, std::string> m_files;
  std::vector<std::string> m_problems;
};

/// "command-name.html".
std::string CommandPageName(std::string_view command);

}  // namespace quill::manual
