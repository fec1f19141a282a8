// quill_make_manual OUTPUT_FOLDER MANUAL_FOLDER DATA_FOLDER SOURCE...
//
// Makes the manual's pages and its help project from the Markdown pages, style sheets and pictures in
// MANUAL_FOLDER and the readable sources of the command database. DATA_FOLDER holds the keyword files.
// Ends with 1 when anything is wrong.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "base/AtomicFile.h"
#include "base/InputFile.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/CommandSource.h"
#include "intel/vocabulary/KeywordDatabase.h"
#include "intel/writing/ObjectMembers.h"
#include "tools/manual/Manual.h"

namespace {

namespace fs = std::filesystem;

constexpr uint64_t kLargestSource = 16u << 20;  ///< bytes

int Fail(const std::string& message) {
  std::fprintf(stderr, "%s\n", message.c_str());
  return 1;
}

quill::IoResult WriteWhole(const std::string& path, std::string_view text) {
  quill::AtomicFile file(path);
  if (quill::IoResult open = file.Open(); !open) return open;
  if (quill::IoResult written = file.Write(text); !written) return written;
  return file.Commit();
}

/// Reads the pages and copies everything that is shown as it is.
quill::IoResult ReadFolder(const fs::path& folder, const fs::path& output, quill::manual::Manual& manual) {
  std::vector<fs::path> paths;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  for (const fs::path& path : paths) {
    const fs::path name = path.lexically_relative(folder);
    std::string content;
    if (quill::IoResult read = quill::ReadWholeFile(path.string(), kLargestSource, content); !read)
      return read;
    if (path.extension() == ".md") {
      manual.AddPage(name.generic_string(), content);
      continue;
    }
    fs::create_directories((output / name).parent_path());
    fs::copy_file(path, output / name, fs::copy_options::overwrite_existing);
    if (path.extension() != ".css") manual.AddPicture(name.generic_string(), content);
  }
  return quill::IoResult::Success();
}

int Make(const std::vector<std::string>& arguments) {
  quill::CommandSource source;
  for (size_t i = 3; i < arguments.size(); ++i) {
    std::string text;
    if (const quill::IoResult read = quill::ReadWholeFile(arguments[i], kLargestSource, text); !read)
      return Fail(read.Message());
    source.AddFile(arguments[i], text);
  }
  quill::CommandDatabase commands;
  commands.Append(source.Triples());
  quill::KeywordDatabase keywords;
  if (const quill::DatabaseResult loaded = keywords.LoadKeywordSets(arguments[2]); !loaded)
    return Fail(loaded.message);

  const fs::path output = arguments[0];
  fs::create_directories(output);
  quill::manual::Manual manual({keywords, commands, quill::ObjectKinds()}, source.Commands());
  if (const quill::IoResult read = ReadFolder(arguments[1], output, manual); !read)
    return Fail(read.Message());
  manual.Finish();
  for (const std::string& problem : source.Problems()) Fail(problem);
  for (const std::string& problem : manual.Problems()) Fail(problem);
  if (!source.Problems().empty() || !manual.Problems().empty()) return 1;
  for (const auto& [name, content] : manual.Files()) {
    if (const quill::IoResult written = WriteWhole((output / name).string(), content); !written) {
      return Fail(written.Message());
    }
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() < 4)
    return Fail("usage: quill_make_manual OUTPUT MANUAL_FOLDER DATA_FOLDER SOURCE...");
  try {
    return Make(arguments);
  } catch (const std::exception& error) {
    return Fail(error.what());
  }
}
