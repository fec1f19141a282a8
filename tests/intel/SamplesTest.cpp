// The samples and the examples in the command help use only what the language has.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include "base/CodePage1252.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/KeywordDatabase.h"
#include "support/Paths.h"

namespace quill {
namespace {

const std::filesystem::path kSampleFolder = std::filesystem::path(QUILL_SOURCE_DIR) / "samples";

std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// The text with comments and the insides of strings blanked out; lines stay.
std::string CodeOnly(std::string text) {
  enum { kCode, kLine, kBlock, kString } state = kCode;
  for (size_t i = 0; i < text.size(); ++i) {
    const std::string_view two = std::string_view(text).substr(i, 2);
    if (state == kCode && two == "//") state = kLine;
    if (state == kCode && two == "/*") state = kBlock;
    if (text[i] == '\n' && state == kLine) state = kCode;
    const bool blockEnds = state == kBlock && two == "*/";
    if (text[i] == '"' && (state == kCode || state == kString)) {
      state = state == kCode ? kString : kCode;
    } else if (state != kCode && text[i] != '\n') {
      text[i] = state == kString ? 'x' : ' ';
    }
    if (blockEnds) {
      text[++i] = ' ';
      state = kCode;
    }
  }
  return text;
}

struct Call {
  std::string name;
  size_t arguments;
  size_t line;
};

size_t CountArguments(std::string_view code, size_t open) {
  size_t commas = 0, depth = 0;
  bool any = false;
  for (size_t i = open; i < code.size(); ++i) {
    if (code[i] == '(') ++depth;
    if (code[i] == ')' && --depth == 0) return any ? commas + 1 : 0;
    if (code[i] == ',' && depth == 1) ++commas;
    if (i > open && !cp1252::IsSpace(code[i])) any = true;
  }
  ADD_FAILURE() << "bracket without end";
  return 0;
}

/// Every `name(` of the code; definitions of functions as well.
std::vector<Call> CallsIn(std::string_view code) {
  std::vector<Call> calls;
  size_t line = 1;
  for (size_t i = 0; i < code.size(); ++i) {
    if (code[i] == '\n') ++line;
    if (code[i] != '(') continue;
    size_t end = i;
    while (end > 0 && code[end - 1] == ' ') --end;
    size_t start = end;
    while (start > 0 && cp1252::IsWordChar(code[start - 1])) --start;
    if (start < end) {
      calls.push_back({std::string(code.substr(start, end - start)), CountArguments(code, i), line});
    }
  }
  return calls;
}

using Arity = std::map<std::string, size_t>;         ///< number of arguments of what can be called
using Scripts = std::map<std::string, std::string>;  ///< texts by file name

/// Adds the functions that the scripts define; each has one definition.
void AddFunctions(const Scripts& scripts, Arity& arity) {
  for (const auto& [name, text] : scripts) {
    std::istringstream lines(CodeOnly(text));
    for (std::string line; std::getline(lines, line);) {
      if (!line.starts_with("function ") && !line.starts_with("starter ")) continue;
      const Call definition = CallsIn(line).at(0);
      EXPECT_TRUE(arity.emplace(definition.name, definition.arguments).second) << name << ": " << line;
    }
  }
}

class Samples : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(m_keywords.LoadKeywordSets(QUILL_BIN_DIR));
    ASSERT_TRUE(m_commands.LoadCommandDatabase(QUILL_BIN_DIR));
    for (int32_t i = 0; i < m_commands.Count(); ++i) {
      m_commands_arity[m_commands.GetCommandName(i)] =
          CallsIn(m_commands.GetCommandParameters(i)).at(0).arguments;
    }
    m_arity = m_commands_arity;
    for (const auto& file : std::filesystem::recursive_directory_iterator(kSampleFolder)) {
      const std::string extension = file.path().extension().string();
      if (extension == ".vsl" || extension == ".h") {
        m_samples[file.path().parent_path()][file.path().filename().string()] = ReadAll(file.path());
      }
    }
    ASSERT_EQ(m_samples.size(), 3u);
    AddFunctions(m_samples.at(kSampleFolder / "lander"), m_arity);
  }

  KeywordDatabase m_keywords;
  CommandDatabase m_commands;
  Arity m_commands_arity;
  Arity m_arity;  ///< of the commands and the functions of the sample game, from which the manual takes
                  ///< examples
  std::map<std::filesystem::path, Scripts> m_samples;  ///< by folder
};

TEST_F(Samples, CallOnlyCommandsAndTheirOwnFunctions) {
  for (const auto& [folder, scripts] : m_samples) {
    Arity arity = m_commands_arity;
    AddFunctions(scripts, arity);
    for (const auto& [name, text] : scripts) {
      for (const Call& call : CallsIn(CodeOnly(text))) {
        if (m_keywords.IsKeyword(name, call.name)) continue;
        const auto known = arity.find(call.name);
        ASSERT_NE(known, arity.end()) << name << ":" << call.line << ": " << call.name;
        EXPECT_EQ(call.arguments, known->second) << name << ":" << call.line << ": " << call.name;
      }
    }
  }
}

/// The first word of a line and the one behind it, in small letters.
std::pair<std::string, std::string> FirstWords(const std::string& line) {
  std::istringstream words(line);
  std::string first, second;
  words >> first >> second;
  second = second.substr(0, second.find_first_of("[(;=,"));
  return {cp1252::ToLower(first), cp1252::ToLower(second)};
}

const std::set<std::string> kDefining = {
    "var",   "var_nsave", "var_info", "string",   "bmap", "sound",  "font",     "skill",  "text",
    "panel", "view",      "entity",   "material", "sky",  "window", "function", "action", "starter"};

TEST_F(Samples, NoDefineIsAnotherNameInOtherLetters) {
  for (const auto& [folder, scripts] : m_samples) {
    std::map<std::string, std::string> defines;
    std::set<std::string> names;
    for (const auto& [command, arguments] : m_commands_arity) names.insert(cp1252::ToLower(command));
    for (const auto& [name, text] : scripts) {
      std::istringstream lines(CodeOnly(text));
      for (std::string line; std::getline(lines, line);) {
        const auto [first, second] = FirstWords(line);
        if (first == "define" || first == "#define") {
          EXPECT_TRUE(defines.emplace(second, name).second) << name << ": " << second << " is defined twice";
        } else if (kDefining.contains(first.substr(0, first.find('*')))) {
          names.insert(second);
        }
        // Parameters as well.
        if (first != "function") continue;
        for (size_t at = line.find('('); at != std::string::npos && at + 1 < line.size();
             at = line.find_first_of(" ,", at + 1)) {
          names.insert(cp1252::ToLower(line.substr(at + 1, line.find_first_of(" ,)", at + 1) - at - 1)));
        }
      }
    }
    for (const auto& [define, file] : defines) EXPECT_FALSE(names.contains(define)) << file << ": " << define;
    EXPECT_FALSE(defines.empty()) << folder;
  }
}

TEST_F(Samples, ShowEveryKindOfDefinitionAndCloseEveryBrace) {
  std::set<std::string> firstWords;
  for (const auto& [name, text] : m_samples.at(kSampleFolder / "lander")) {
    const std::string code = CodeOnly(text);
    EXPECT_EQ(std::count(code.begin(), code.end(), '{'), std::count(code.begin(), code.end(), '}')) << name;
    std::istringstream lines(code);
    for (std::string line; std::getline(lines, line);) firstWords.insert(line.substr(0, line.find(' ')));
  }
  for (const char* word : {"var",  "var_info", "var_nsave", "string",   "bmap",    "text",  "panel",
                           "view", "entity",   "skill",     "define",   "starter", "sound", "material",
                           "sky",  "font",     "window",    "function", "action",  "path",  "#ifdef"}) {
    EXPECT_TRUE(firstWords.contains(word)) << word;
  }
}

TEST_F(Samples, NameOnlyFilesThatExist) {
  for (const auto& [folder, scripts] : m_samples) {
    for (const auto& [name, text] : scripts) {
      const std::string code = CodeOnly(text);
      for (size_t open = code.find('<'); open != std::string::npos; open = code.find('<', open + 1)) {
        const size_t end = code.find_first_of(">;)\n", open);
        const std::string file = code.substr(open + 1, end - open - 1);
        if (code[end] != '>' || file.find('.') == std::string::npos) continue;
        EXPECT_TRUE(std::filesystem::exists(folder / file) ||
                    std::filesystem::exists(folder / "media" / file))
            << name << ": " << file;
      }
    }
  }
}

TEST_F(Samples, TheExamplesOfTheHelpCallCommandsAsDeclared) {
  for (int32_t i = 0; i < m_commands.Count(); ++i) {
    std::string help = m_commands.GetCommandHelp(i);
    std::string example = help.substr(help.find("#10#13Example:") + 14);
    for (size_t at; (at = example.find(kHelpLineBreak)) != std::string::npos;) example.replace(at, 6, "\n");
    bool shown = false;
    for (const Call& call : CallsIn(CodeOnly(example))) {
      if (const auto known = m_arity.find(call.name); known != m_arity.end()) {
        EXPECT_EQ(call.arguments, known->second) << example;
      }
      shown = shown || call.name == m_commands.GetCommandName(i);
    }
    EXPECT_TRUE(shown) << m_commands.GetCommandName(i) << " has an example without it";
  }
}

}  // namespace
}  // namespace quill
