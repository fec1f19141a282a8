#include "intel/writing/CodeTemplates.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "base/CodePage1252.h"
#include "base/InputFile.h"
#include "res/Strings.h"

namespace quill {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kTemplateExtension = ".txt";
/// Files of the folder that are looked at.
constexpr int kMostEntries = 10000;

bool LessNoCase(std::string_view a, std::string_view b) {
  return cp1252::ToLower(a) < cp1252::ToLower(b);
}

std::optional<std::string> ReadTemplate(const std::string& path) {
  InputFile file;
  if (!file.Open(path) || file.Size() > CodeTemplates::kLargestTemplate) return std::nullopt;
  std::string text(static_cast<size_t>(file.Size()), '\0');
  size_t got = 0;
  if (!file.Read(text.data(), text.size(), got)) return std::nullopt;
  text.resize(got);
  return text;
}

}  // namespace

/// Writes one template, and those that it includes, into one text.
class TemplateExpander {
 public:
  TemplateExpander(const CodeTemplates& templates, const TemplateIndent& indent)
      : m_templates(templates), m_step(indent.step) {}

  void Expand(std::string_view name, const std::string* text, const std::string& indentation) {
    m_open.push_back(text);
    const size_t instance = m_instances++;
    std::string ownIndent;  // of the line that is being written, without `indentation`
    bool atLineStart = true;
    for (size_t i = 0; i < text->size() && m_result.text.size() < CodeTemplates::kLargestText; ++i) {
      const char c = (*text)[i];
      if (c == '\n') {
        BreakLine(indentation);
        ownIndent.clear();
        atLineStart = true;
        continue;
      }
      if (atLineStart && (c == ' ' || c == '\t')) {
        const std::string blank = c == '\t' ? m_step : std::string(1, c);
        ownIndent += blank;
        m_pending += blank;
        continue;
      }
      atLineStart = false;
      if (c == '$') {
        i = Special(*text, i, indentation + ownIndent, instance);
      } else {
        Write(c);
      }
    }
    m_open.pop_back();
    if (m_result.text.size() >= CodeTemplates::kLargestText) {
      Complain(FormatText(StringId::kTemplateTooLong, {name}));
    }
  }

  TemplateText Finish() {
    std::stable_sort(m_stops.begin(), m_stops.end(),
                     [](const Stop& a, const Stop& b) { return a.number < b.number; });
    if (m_stops.empty() || m_stops.back().number != kLastStop) {
      WritePending();
      m_stops.push_back({kLastStop, 0, m_at});
    }
    std::vector<const Stop*> first;  // of each field
    for (const Stop& stop : m_stops) {
      const auto same = std::find_if(first.begin(), first.end(), [&stop](const Stop* known) {
        return known->number == stop.number && known->instance == stop.instance && stop.number != kLastStop;
      });
      const auto field = static_cast<size_t>(same - first.begin());
      if (same == first.end()) {
        first.push_back(&stop);
        m_result.fields.emplace_back();
      }
      m_result.fields[field].push_back(stop.at);
    }
    return std::move(m_result);
  }

 private:
  static constexpr int kLastStop = 10;  ///< where `$0` sorts
  struct Stop {
    int number;
    size_t instance;  ///< of the template that has it: numbers of one file mean nothing in another
    TextPosition at;
  };

  /// Handles the "$" at `i`; returns the index of the last character that belongs to it.
  size_t Special(std::string_view text, size_t i, const std::string& indentation, size_t instance) {
    const char next = i + 1 < text.size() ? text[i + 1] : '\0';
    if (cp1252::IsAsciiDigit(next)) {
      WritePending();
      m_stops.push_back({next == '0' ? kLastStop : next - '0', instance, m_at});
      return i + 1;
    }
    const size_t close = next == '{' ? text.find('}', i) : std::string_view::npos;
    if (close != std::string_view::npos && text.substr(i, close - i).find('\n') == std::string_view::npos) {
      Include(text.substr(i + 2, close - i - 2), indentation);
      return close;
    }
    Write('$');
    return next == '$' ? i + 1 : i;
  }

  void Include(std::string_view name, const std::string& indentation) {
    const std::string* text = m_templates.Find(name);
    if (text == nullptr) {
      Complain(FormatText(StringId::kTemplateMissing, {name}));
    } else if (std::find(m_open.begin(), m_open.end(), text) != m_open.end()) {
      Complain(FormatText(StringId::kTemplateInItself, {name}));
    } else if (m_open.size() >= CodeTemplates::kDeepestNesting ||
               ++m_inclusions > CodeTemplates::kMostInclusions) {
      Complain(std::string(Text(StringId::kTemplateTooDeep)));
    } else {
      Expand(name, text, indentation);
    }
  }

  void BreakLine(const std::string& indentation) {
    m_result.text += "\r\n";
    m_at = {m_at.line + 1, 0};
    m_pending = indentation;  // written only if something follows: no blanks in empty lines
  }
  void Write(char c) {
    WritePending();
    m_result.text += c;
    ++m_at.character;
  }
  void WritePending() {
    m_result.text += m_pending;
    m_at.character += static_cast<int32_t>(m_pending.size());
    m_pending.clear();
  }
  void Complain(std::string problem) {
    if (m_result.problem.empty()) m_result.problem = std::move(problem);
  }

  const CodeTemplates& m_templates;
  const std::string& m_step;
  std::vector<const std::string*> m_open;
  size_t m_inclusions = 0;
  size_t m_instances = 0;
  std::string m_pending;
  TextPosition m_at;
  std::vector<Stop> m_stops;
  TemplateText m_result;
};

void CodeTemplates::Load(const std::string& programFolder) {
  m_names.clear();
  m_texts.clear();
  std::vector<fs::path> paths;
  std::error_code error;
  fs::directory_iterator entry(fs::path(programFolder) / kTemplateFolderName, error);
  for (int i = 0; !error && entry != fs::directory_iterator() && i < kMostEntries; ++i) {
    if (entry->path().extension() == kTemplateExtension) paths.push_back(entry->path());
    entry.increment(error);
  }
  std::sort(paths.begin(), paths.end());
  for (const fs::path& path : paths) {
    if (m_names.size() == kMostTemplates) break;
    if (const std::optional<std::string> text = ReadTemplate(path.string())) Add(path.stem().string(), *text);
  }
}

void CodeTemplates::Add(std::string_view name, std::string_view text) {
  if (name.empty() || text.size() > kLargestTemplate || Has(name)) return;
  std::string lines;
  for (const char c : text) {
    if (c != '\r') lines += c;
  }
  if (lines.ends_with('\n')) lines.pop_back();
  const auto at = std::upper_bound(m_names.begin(), m_names.end(), name, LessNoCase);
  m_texts.insert(m_texts.begin() + (at - m_names.begin()), std::move(lines));
  m_names.emplace(at, name);
}

const std::string* CodeTemplates::Find(std::string_view name) const {
  const auto at = std::lower_bound(m_names.begin(), m_names.end(), name, LessNoCase);
  if (at == m_names.end() || !cp1252::EqualNoCase(*at, name)) return nullptr;
  return &m_texts[static_cast<size_t>(at - m_names.begin())];
}

TemplateText CodeTemplates::Expand(std::string_view name, const TemplateIndent& indent) const {
  const std::string* text = Find(name);
  if (text == nullptr) throw std::invalid_argument("no such template");
  TemplateExpander expander(*this, indent);
  expander.Expand(name, text, indent.indentation);
  return expander.Finish();
}

std::optional<Identifier> CodeTemplates::NameBefore(std::string_view line, int32_t column) const {
  const Identifier word = IdentifierAt(line, column);
  const bool isMember = word.start > 0 && line[static_cast<size_t>(word.start) - 1] == '.';
  if (word.end != column || isMember || !Has(word.In(line))) return std::nullopt;
  return word;
}

}  // namespace quill
