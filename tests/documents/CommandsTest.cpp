// The command database against the engine: the same commands, with the same parameters, and examples that
// run.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>

#include "engine/code/Command.h"
#include "intel/vocabulary/CommandSource.h"
#include "intel/vocabulary/HelpText.h"
#include "support/Paths.h"
#include "tests/documents/Sample.h"

namespace documents {
namespace {

namespace fs = std::filesystem;

std::string ReadAll(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

quill::CommandSource ReadCommands() {
  quill::CommandSource source;
  std::vector<fs::path> paths;
  for (const auto& entry : fs::directory_iterator(fs::path(QUILL_SOURCE_DIR) / "data/commands"))
    paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  for (const fs::path& path : paths) source.AddFile(path.filename().string(), ReadAll(path));
  EXPECT_EQ(source.Problems(), std::vector<std::string>{});
  return source;
}

/// "number, vector" of "name(number a, vector b)".
std::string KindsIn(const std::string& parameters) {
  static const std::regex kParameter("(\\w+) \\w+(, |\\))");
  std::string kinds;
  for (std::sregex_iterator at(parameters.begin(), parameters.end(), kParameter), end; at != end; ++at)
    kinds += (kinds.empty() ? "" : ", ") + (*at)[1].str();
  return kinds;
}

std::string KindsOf(const korvel::Signature& signature) {
  static const std::map<char, std::string> kKinds = {
      {'n', "number"}, {'v', "vector"},   {'V', "vector"}, {'s', "string"},
      {'S', "string"}, {'f', "function"}, {'e', "entity"}, {'b', "bmap"},
      {'p', "panel"},  {'t', "text"},     {'c', "view"},   {'k', "sky"},
      {'w', "window"}, {'m', "material"}, {'d', "sound"},  {'F', "font"}};
  std::string kinds;
  for (uint32_t i = 0; i < signature.count; ++i)
    kinds += (i == 0 ? "" : ", ") + kKinds.at(signature.parameters[i].letter);
  return kinds;
}

bool Says(const quill::CommandEntry& command, const char* what) {
  return std::regex_search(quill::SplitHelp(command.help).text, std::regex(what));
}

TEST(CommandDatabase, HasTheCommandsOfTheEngine) {
  const quill::CommandSource source = ReadCommands();
  std::map<std::string, const quill::CommandEntry*> described;
  for (const quill::CommandEntry& command : source.Commands()) described[command.name] = &command;
  for (uint32_t i = 0; i < korvel::CommandCount(); ++i) {
    const korvel::Command& row = korvel::CommandAt(i);
    const korvel::Signature signature = korvel::ReadSignature(row.signature);
    const auto found = described.find(row.name);
    if (found == described.end()) {
      ADD_FAILURE() << "no help tells of " << row.name;
      continue;
    }
    const quill::CommandEntry& command = *found->second;
    EXPECT_EQ(KindsIn(command.parameters), KindsOf(signature)) << row.name;
    const bool gives = signature.result != korvel::LetterType('-');
    EXPECT_EQ(gives, Says(command, "[Rr]eturn(s|ed)")) << row.name << " gives " << row.signature[0];
    for (const korvel::Parameter& parameter : signature.parameters) {
      if (parameter.takes_null) {
        EXPECT_TRUE(Says(command, "\\b[Nn]ull\\b")) << row.name << " takes null";
      }
    }
    described.erase(found);
  }
  for (const auto& [name, command] : described) ADD_FAILURE() << "the engine does not have " << name;
}

TEST(CommandExamples, Run) {
  const quill::CommandSource source = ReadCommands();
  const std::string stage = ReadAll(fs::path(QUILL_SOURCE_DIR) / "tests/documents/stage.vsl");
  static const std::regex kMe("\\bme\\b");
  for (const quill::CommandEntry& command : source.Commands()) {
    Sample sample;
    sample.place = command.place + " " + command.name;
    sample.text = quill::SplitHelp(command.help).example + "\n";
    sample.kind = std::regex_search(sample.text, kMe) ? "action" : "body";
    sample.keys = {27, 13, 112};
    EXPECT_EQ(Verdict(sample, stage), "");
  }
}

}  // namespace
}  // namespace documents
