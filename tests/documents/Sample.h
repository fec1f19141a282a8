// The pieces of script in a document, and how they become scripts that run.
//
// A piece stands between fences. Behind "```vesper" a word says what it is:
//
//     script       a whole script
//     definitions  definitions without a main: their starters run, each function without parameters that
//     nothing
//                  else in the piece names is started, and each such action gets an entity
//     body         lines of a function
//     action       lines of an action, with an entity as me
//
// and further words "frames=N" how long it runs (60) and "keys=38,32" the keys that are pressed one after the
// other, each for five frames, the first in frame 10. A piece that follows the word "output" is what the
// piece before it prints, one behind "errors" its error list; without the latter there must be no errors.
//
// All but whole scripts may use what stage.vsl defines. Files that a piece names in quotes or in <> are
// there, but for those whose names begin with "missing".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace documents {

struct Sample {
  std::string place;  ///< "page.md:12", of the piece's first line
  std::string kind;
  std::string text;
  int frames = 60;
  std::vector<int> keys;
  std::optional<std::string> output;
  std::optional<std::string> errors;
};

/// All pieces of a document; what is wrong with fences is added to `problems`.
std::vector<Sample> SamplesOf(const std::string& name, std::string_view document,
                              std::vector<std::string>& problems);

/// The whole script of a piece; its lines have the numbers that they have in the piece.
std::string WholeScript(const Sample& sample, const std::string& stage);

struct Seen {
  std::string output;
  std::string errors;
};

/// Compiles and runs a piece in a folder of its own.
Seen RunSample(const Sample& sample, const std::string& stage);

/// What is wrong with a piece, or nothing.
std::string Verdict(const Sample& sample, const std::string& stage);

}  // namespace documents
