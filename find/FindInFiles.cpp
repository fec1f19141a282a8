#include "find/FindInFiles.h"

#include <vector>

#include "base/CodePage1252.h"
#include "find/FolderWalk.h"
#include "find/LineGrep.h"
#include "find/ResultLine.h"
#include "res/Strings.h"

namespace quill {
namespace {

/// Collects results and hands them over in batches.
class ResultBatch {
 public:
  explicit ResultBatch(const GrepSink& sink) : m_sink(sink) {}

  void Add(std::string_view path, const LineHit& hit) {
    const size_t start = m_text.size();
    m_starts.push_back(start);
    const size_t textStart = AppendResultLine(m_text, path, hit.line, hit.text) - start;
    if (hit.hasLineEnd) m_text += ' ';  // its line feed
    m_results.push_back({{}, path.size(), textStart, textStart + hit.column, hit.line});
    if (m_results.size() >= kMostResults) Flush();
  }
  void Flush() {
    for (size_t i = 0; i < m_results.size(); ++i) {
      const size_t end = i + 1 < m_starts.size() ? m_starts[i + 1] : m_text.size();
      m_results[i].entry = std::string_view(m_text).substr(m_starts[i], end - m_starts[i]);
    }
    if (!m_results.empty()) m_sink(m_results);
    m_results.clear();
    m_starts.clear();
    m_text.clear();
  }

 private:
  static constexpr size_t kMostResults = 512;
  const GrepSink& m_sink;
  std::string m_text;  ///< the entries one behind the other: it moves while it grows
  std::vector<size_t> m_starts;
  std::vector<GrepResult> m_results;
};

}  // namespace

std::string GrepTotals::StatusText() const {
  std::string text =
      FormatText(StringId::kGrepSummary,
                 {std::to_string(lines), std::to_string(filesWithMatches), std::to_string(files)});
  if (skipped > 0) text += FormatText(StringId::kGrepSkipped, {std::to_string(skipped)});
  return text;
}

bool IsSearchedFile(std::string_view name) {
  const size_t dot = name.find('.');
  if (dot == std::string_view::npos) return false;
  const std::string_view extension = name.substr(dot);
  return cp1252::EqualNoCase(extension, ".vsl") || cp1252::EqualNoCase(extension, ".vsc");
}

GrepTotals FindInFiles(const std::string& directory, std::string_view what, const GrepSink& sink) {
  GrepTotals totals;
  if (directory.empty() || what.empty()) return totals;
  LineGrep grep(what);
  ResultBatch batch(sink);
  totals.skipped = WalkFolder(directory, IsSearchedFile, [&](InputFile& file) {
    const int64_t linesBefore = totals.lines;
    const IoResult read = grep.ReadFile(file, [&](const LineHit& hit) {
      batch.Add(file.Path(), hit);
      ++totals.lines;
    });
    ++totals.files;
    if (totals.lines > linesBefore) ++totals.filesWithMatches;
    return static_cast<bool>(read);
  });
  batch.Flush();
  return totals;
}

}  // namespace quill
