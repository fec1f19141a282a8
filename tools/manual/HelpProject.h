#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "intel/manual/ManualNames.h"

namespace quill::manual {

/// One line of the table of contents.
struct Section {
  std::string title;
  std::string target;  ///< "page.html" or "page.html#anchor"
  std::vector<Section> sections;
};

/// One entry of the index. The viewer finds an entry's page by its word in lower case.
struct IndexWord {
  std::string word;
  std::string target;
};

/// The parts of a help project of the window toolkit.
struct HelpProject {
  std::vector<Section> contents;
  std::vector<IndexWord> index;
  std::vector<std::string> files;
};

/// The project file (.qhp), from which the compiled help (.qch) is generated.
std::string ProjectXml(const HelpProject& project);
/// The collection project (.qhcp): generates the compiled help from `projectName` and registers it.
std::string CollectionXml(std::string_view projectName);

}  // namespace quill::manual
