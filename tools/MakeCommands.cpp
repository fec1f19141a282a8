// quill_make_commands OUTPUT SOURCE...
//
// Makes the command database from its readable source. The form of the source is described in
// intel/vocabulary/CommandSource.h. Ends with 1, and leaves the output as it was, when anything is wrong.

#include <cstdio>
#include <string>
#include <vector>

#include "base/InputFile.h"
#include "intel/vocabulary/CommandSource.h"
#include "intel/vocabulary/StringListArchive.h"

namespace {

constexpr uint64_t kLargestSource = 16u << 20;  ///< bytes

int Fail(const std::string& message) {
  std::fprintf(stderr, "%s\n", message.c_str());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() < 2) return Fail("usage: quill_make_commands OUTPUT SOURCE...");
  quill::CommandSource source;
  for (size_t i = 1; i < arguments.size(); ++i) {
    std::string text;
    if (const quill::IoResult read = quill::ReadWholeFile(arguments[i], kLargestSource, text); !read)
      return Fail(read.Message());
    source.AddFile(arguments[i], text);
  }
  for (const std::string& problem : source.Problems()) Fail(problem);
  if (!source.Problems().empty()) return 1;
  const quill::IoResult written = quill::WriteStringListFile(arguments[0], source.Triples());
  return written ? 0 : Fail(written.Message());
}
