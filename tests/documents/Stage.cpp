// From a piece to a script: what it needs around it, taken from the stage.
#include <algorithm>
#include <cctype>
#include <set>
#include <sstream>

#include "tests/documents/Sample.h"

namespace documents {
namespace {

bool IsWordChar(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

/// The words of the code, in lower case; not those in comments and quotes.
std::vector<std::string> WordsOf(std::string_view text) {
  std::vector<std::string> words;
  for (size_t i = 0; i < text.size();) {
    if (text.substr(i, 2) == "//") {
      i = std::min(text.find('\n', i), text.size());
    } else if (text.substr(i, 2) == "/*") {
      const size_t end = text.find("*/", i);
      i = end == std::string_view::npos ? text.size() : end + 2;
    } else if (text[i] == '"') {
      i = std::min(text.find('"', i + 1), text.size() - 1) + 1;
    } else if (IsWordChar(text[i])) {
      std::string word;
      for (; i < text.size() && IsWordChar(text[i]); ++i) {
        word += static_cast<char>(std::tolower(static_cast<unsigned char>(text[i])));
      }
      words.push_back(word);
    } else {
      ++i;
    }
  }
  return words;
}

/// A definition at the begin of a line.
struct Definition {
  std::string word;  ///< that it begins with
  std::string name;
  bool has_parameters = false;
};

std::optional<Definition> DefinitionIn(const std::string& line) {
  static const std::set<std::string> kBegins = {
      "var",   "var_nsave", "var_info", "string", "bmap",     "sound", "font",   "define",   "skill",  "text",
      "panel", "view",      "entity",   "window", "material", "sky",   "action", "function", "starter"};
  if (line.empty() || !(IsWordChar(line[0]) || line[0] == '#')) return std::nullopt;
  const std::vector<std::string> words = WordsOf(line);
  if (words.size() < 2 || !kBegins.contains(words[0])) return std::nullopt;
  const std::string head = line.substr(0, line.find_first_of("{;="));
  const size_t open = head.find('(');
  const bool empty =
      open == std::string::npos || head.find_first_not_of(" ", open + 1) == head.find(')', open);
  return Definition{words[0], words[1], !empty};
}

std::vector<Definition> DefinitionsIn(const std::string& text) {
  std::vector<Definition> found;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (const auto definition = DefinitionIn(line)) found.push_back(*definition);
  }
  return found;
}

/// The definitions of the stage that the text uses and does not make itself; defines apart, since they hold
/// only from their place on.
struct Props {
  std::string defines;
  std::string others;
};

Props PropsFor(const std::string& text, const std::string& stage) {
  std::vector<std::pair<Definition, std::string>> store;
  std::istringstream lines(stage);
  for (std::string line; std::getline(lines, line);) {
    const auto definition = DefinitionIn(line);
    if (definition && definition->word != "starter") store.push_back({*definition, ""});
    if (!store.empty() && !line.starts_with("//")) store.back().second += line + " ";
  }
  std::set<std::string> known, wanted;
  for (const Definition& definition : DefinitionsIn(text)) known.insert(definition.name);
  for (const std::string& word : WordsOf(text)) wanted.insert(word);
  Props props;
  for (bool again = true; again;) {
    again = false;
    for (const auto& [definition, lines_of] : store) {
      if (!wanted.contains(definition.name) || !known.insert(definition.name).second) continue;
      (definition.word == "define" ? props.defines : props.others) += lines_of;
      for (const std::string& word : WordsOf(lines_of)) wanted.insert(word);
      again = true;
    }
  }
  return props;
}

/// A main that begins what nothing else in the text names.
std::string MainFor(const std::string& text) {
  std::string starts;
  const std::vector<std::string> words = WordsOf(text);
  for (const Definition& definition : DefinitionsIn(text)) {
    if (std::count(words.begin(), words.end(), definition.name) != 1 || definition.has_parameters) continue;
    if (definition.word == "function") starts += "fn_start(" + definition.name + "); ";
    if (definition.word == "action") {
      starts += "ent_create(\"sample_actor.bmp\", sample_place, " + definition.name + "); ";
    }
  }
  return "var_nsave sample_place[3]; function main() { " + starts + "}";
}

}  // namespace

std::string WholeScript(const Sample& sample, const std::string& stage) {
  if (sample.kind == "script") return sample.text;
  const Props props = PropsFor(sample.text, stage);
  if (sample.kind == "definitions") {
    return props.defines + sample.text + props.others + MainFor(sample.text);
  }
  if (sample.kind == "body") return props.defines + "function main() { " + sample.text + "}" + props.others;
  return props.defines + "action sample_act { " + sample.text +
         "} var_nsave sample_place[3]; function main() { ent_create(\"sample_actor.bmp\", sample_place, "
         "sample_act); }" +
         props.others;
}

}  // namespace documents
