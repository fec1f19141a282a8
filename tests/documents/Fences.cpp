// From a document to its pieces.
#include <sstream>

#include "tests/documents/Sample.h"

namespace documents {
namespace {

constexpr std::string_view kFence = "```";

std::vector<int> NumbersOf(const std::string& list) {
  std::vector<int> numbers;
  std::istringstream words(list);
  for (std::string number; std::getline(words, number, ',');) numbers.push_back(std::stoi(number));
  return numbers;
}

/// What stands behind "```vesper"; what is wrong with it, or nothing.
std::string ReadMark(std::istringstream& words, Sample& sample) {
  words >> sample.kind;
  if (sample.kind != "script" && sample.kind != "definitions" && sample.kind != "body" &&
      sample.kind != "action") {
    return "\"" + sample.kind + "\" is no kind of sample";
  }
  for (std::string word; words >> word;) {
    if (word.starts_with("frames=")) {
      sample.frames = std::stoi(word.substr(7));
    } else if (word.starts_with("keys=")) {
      sample.keys = NumbersOf(word.substr(5));
    } else {
      return "\"" + word + "\" is not understood";
    }
  }
  return {};
}

}  // namespace

std::vector<Sample> SamplesOf(const std::string& name, std::string_view document,
                              std::vector<std::string>& problems) {
  std::vector<Sample> samples;
  std::istringstream lines{std::string(document)};
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    if (!line.starts_with(kFence)) continue;
    const std::string place = name + ":" + std::to_string(number + 1);
    std::istringstream words(line.substr(kFence.size()));
    std::string language;
    words >> language;
    std::string text;
    bool ended = false;
    while (!ended && std::getline(lines, line)) {
      ++number;
      ended = line == kFence;
      if (!ended) text += line + "\n";
    }
    if (!ended) problems.push_back(place + ": the piece has no end");
    if (language == "vesper") {
      Sample sample;
      sample.place = place;
      sample.text = text;
      if (const std::string wrong = ReadMark(words, sample); !wrong.empty()) {
        problems.push_back(place + ": " + wrong);
      }
      samples.push_back(sample);
    } else if ((language == "output" || language == "errors") && !samples.empty()) {
      (language == "output" ? samples.back().output : samples.back().errors) = text;
    } else if (language != "text") {
      problems.push_back(place + ": \"" + language + "\" is no language of a piece");
    }
  }
  return samples;
}

}  // namespace documents
