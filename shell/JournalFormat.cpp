#include "shell/JournalFormat.h"

#include <zlib.h>

#include <algorithm>
#include <fstream>
#include <limits>

namespace quill::journal {
namespace {

constexpr size_t kFrameBytes = 9;
constexpr size_t kChecksumBytes = 4;

uint32_t Checksum(std::string_view bytes, uint32_t before = 0) {
  return static_cast<uint32_t>(crc32_z(before, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

template <class T>
void PutAt(char* place, T value) {
  auto bits = static_cast<uint64_t>(value);
  for (size_t i = 0; i < sizeof(T); ++i, bits >>= 8) place[i] = static_cast<char>(bits & 0xFF);
}

/// Appends one record: its frame is filled in when it goes out of scope.
class RecordWriter {
 public:
  RecordWriter(std::string& out, RecordType type) : m_out(out), m_begin(out.size()) {
    m_out.append(kFrameBytes - 1, '\0');
    m_out += static_cast<char>(type);
  }
  RecordWriter(const RecordWriter&) = delete;
  RecordWriter& operator=(const RecordWriter&) = delete;
  ~RecordWriter() {
    char* frame = m_out.data() + m_begin;
    PutAt(frame + kChecksumBytes, static_cast<uint32_t>(m_out.size() - m_begin - kFrameBytes));
    PutAt(frame, Checksum(std::string_view(m_out).substr(m_begin + kChecksumBytes)));
  }

  template <class T>
  RecordWriter& Number(T value) {
    char bytes[sizeof(T)];
    PutAt(bytes, value);
    m_out.append(bytes, sizeof(T));
    return *this;
  }
  RecordWriter& Text(std::string_view text) {
    Number(static_cast<uint32_t>(text.size()));
    m_out.append(text);
    return *this;
  }
  RecordWriter& Raw(std::string_view bytes) {
    m_out.append(bytes);
    return *this;
  }
  RecordWriter& Position(TextPosition p) { return Number(p.line).Number(p.character); }
  RecordWriter& Lines(const std::vector<std::string_view>& lines) {
    Number(static_cast<uint32_t>(lines.size()));
    for (const std::string_view line : lines) Number(static_cast<uint32_t>(line.size()));
    for (const std::string_view line : lines) m_out.append(line);
    return *this;
  }

 private:
  std::string& m_out;
  size_t m_begin;
};

/// Reads numbers and texts off a payload; after a shortage everything reads as nothing.
class PayloadReader {
 public:
  explicit PayloadReader(std::string_view bytes) : m_rest(bytes) {}

  template <class T>
  T Number() {
    const std::string_view bytes = Take(sizeof(T));
    uint64_t value = 0;
    for (size_t i = bytes.size(); i > 0; --i) value = value << 8 | static_cast<uint8_t>(bytes[i - 1]);
    return static_cast<T>(value);
  }
  std::string_view Text() { return Take(Number<uint32_t>()); }
  TextPosition Position() {
    const auto line = Number<int32_t>();
    return {line, Number<int32_t>()};
  }
  std::vector<std::string_view> Lines() {
    const auto count = Number<uint32_t>();
    PayloadReader lengths(Take(uint64_t{count} * sizeof(uint32_t)));
    std::vector<std::string_view> lines;
    if (m_failed) return lines;
    lines.reserve(count);
    for (uint32_t i = 0; i < count && !m_failed; ++i) lines.push_back(Take(lengths.Number<uint32_t>()));
    return lines;
  }
  /// Everything was there, and nothing is left.
  bool Done() const { return !m_failed && m_rest.empty(); }

 private:
  std::string_view Take(uint64_t count) {
    if (m_failed || count > m_rest.size()) {
      m_failed = true;
      return {};
    }
    const std::string_view taken = m_rest.substr(0, count);
    m_rest.remove_prefix(count);
    return taken;
  }

  std::string_view m_rest;
  bool m_failed = false;
};

}  // namespace

void AppendHeader(std::string& out, const Header& header) {
  RecordWriter(out, RecordType::kHeader)
      .Text(header.path)
      .Text(header.title)
      .Number(static_cast<uint8_t>(header.base))
      .Number(header.style)
      .Number(static_cast<uint8_t>(header.file.exists))
      .Number(header.file.size)
      .Number(header.file.modifiedSeconds)
      .Number(header.file.modifiedNanoseconds)
      .Number(header.sampleChecksum)
      .Text(header.keptName);
}

void AppendInsert(std::string& out, TextPosition at, const std::vector<std::string_view>& lines) {
  RecordWriter(out, RecordType::kInsert).Position(at).Lines(lines);
}

void AppendDelete(std::string& out, TextRange range) {
  RecordWriter(out, RecordType::kDelete).Position(range.start).Position(range.end);
}

void AppendLines(std::string& out, const std::vector<std::string_view>& lines) {
  RecordWriter(out, RecordType::kLines).Lines(lines);
}

void AppendTextComplete(std::string& out, int32_t lineCount) {
  RecordWriter(out, RecordType::kTextComplete).Number(lineCount);
}

void AppendLineEndStyle(std::string& out, int32_t style) {
  RecordWriter(out, RecordType::kLineEndStyle).Number(style);
}

void AppendRecord(std::string& out, RecordType type, std::string_view payload) {
  RecordWriter(out, type).Raw(payload);
}

std::optional<Record> TakeRecord(std::string_view& rest) {
  if (rest.size() < kFrameBytes) return {};
  PayloadReader frame(rest.substr(0, kFrameBytes));
  const auto checksum = frame.Number<uint32_t>();
  const auto length = frame.Number<uint32_t>();
  const auto type = static_cast<RecordType>(frame.Number<uint8_t>());
  if (length > rest.size() - kFrameBytes) return {};
  if (Checksum(rest.substr(kChecksumBytes, kFrameBytes - kChecksumBytes + length)) != checksum) return {};
  const Record record{type, rest.substr(kFrameBytes, length)};
  rest.remove_prefix(kFrameBytes + length);
  return record;
}

std::optional<Header> ReadHeader(std::string_view payload) {
  PayloadReader reader(payload);
  Header header;
  header.path = reader.Text();
  header.title = reader.Text();
  const auto base = reader.Number<uint8_t>();
  header.base = static_cast<Base>(base);
  header.style = reader.Number<int32_t>();
  header.file.exists = reader.Number<uint8_t>() != 0;
  header.file.size = reader.Number<int64_t>();
  header.file.modifiedSeconds = reader.Number<int64_t>();
  header.file.modifiedNanoseconds = reader.Number<int32_t>();
  header.sampleChecksum = reader.Number<uint32_t>();
  header.keptName = reader.Text();
  if (!reader.Done() || base > static_cast<uint8_t>(Base::kLines)) return {};
  // The name is joined to the folder's: nothing may lead out of it.
  if (header.keptName.find('/') != std::string::npos) return {};
  return header;
}

std::optional<Insertion> ReadInsert(std::string_view payload) {
  PayloadReader reader(payload);
  Insertion insertion;
  insertion.at = reader.Position();
  insertion.lines = reader.Lines();
  if (!reader.Done() || insertion.lines.empty()) return {};
  return insertion;
}

std::optional<TextRange> ReadDelete(std::string_view payload) {
  PayloadReader reader(payload);
  const TextPosition start = reader.Position();
  const TextPosition end = reader.Position();
  if (!reader.Done() || end < start) return {};
  return TextRange{start, end};
}

std::optional<std::vector<std::string_view>> ReadLines(std::string_view payload) {
  PayloadReader reader(payload);
  std::vector<std::string_view> lines = reader.Lines();
  if (!reader.Done()) return {};
  return lines;
}

std::optional<int32_t> ReadNumber(std::string_view payload) {
  PayloadReader reader(payload);
  const auto number = reader.Number<int32_t>();
  if (!reader.Done()) return {};
  return number;
}

uint32_t SampleChecksum(const std::string& path) {
  constexpr std::streamoff kSampleBytes = 64 << 10;
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  const std::streamoff size = file.tellg();
  if (size < 0) return 0;
  uint32_t checksum = 0;
  std::string sample(kSampleBytes, '\0');
  for (const std::streamoff at :
       {std::streamoff{0}, size / 2, std::max<std::streamoff>(size - kSampleBytes, 0)}) {
    file.clear();
    file.seekg(at);
    file.read(sample.data(), kSampleBytes);
    checksum = Checksum(std::string_view(sample).substr(0, static_cast<size_t>(file.gcount())), checksum);
  }
  return checksum;
}

}  // namespace quill::journal
