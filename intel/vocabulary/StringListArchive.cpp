#include "intel/vocabulary/StringListArchive.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

#include "base/AtomicFile.h"
#include "base/CodePage1252.h"
#include "base/InputFile.h"
#include "res/Strings.h"

namespace quill {
namespace {

constexpr uint8_t kLongPrefix = 0xFF;         ///< a 16-bit length follows
constexpr uint16_t kWideMarker = 0xFFFE;      ///< a string of 16-bit characters follows
constexpr uint16_t kVeryLongPrefix = 0xFFFF;  ///< a 32-bit length follows
constexpr uint16_t kLongCount = 0xFFFF;       ///< a 32-bit count follows
constexpr size_t kReadBufferBytes = 4096;
constexpr size_t kMostReserved = 4096;  ///< strings; more are made room for as they arrive

/// Bytes from memory or, through a buffer, from a file, with the number of those still to come.
class ByteSource {
 public:
  explicit ByteSource(std::string_view bytes) : m_pending(bytes), m_remaining(bytes.size()) {}
  explicit ByteSource(InputFile& file) : m_file(&file), m_remaining(file.Size()) {}

  uint64_t Remaining() const { return m_remaining; }
  /// False when fewer bytes are left, or the file fails.
  bool Take(char* target, size_t size) {
    if (size > m_remaining) return false;
    m_remaining -= size;
    while (size > 0) {
      if (m_pending.empty() && !Refill()) return false;
      const size_t part = std::min(size, m_pending.size());
      std::memcpy(target, m_pending.data(), part);
      m_pending.remove_prefix(part);
      target += part;
      size -= part;
    }
    return true;
  }
  /// What the file said, empty when it said nothing.
  const std::string& Failure() const { return m_failure; }

 private:
  bool Refill() {
    if (!m_file) return false;
    size_t got = 0;
    const IoResult read = m_file->Read(m_buffer.data(), m_buffer.size(), got);
    if (!read) m_failure = read.Message();
    m_pending = std::string_view(m_buffer.data(), got);
    return read && got > 0;
  }

  InputFile* m_file = nullptr;
  std::array<char, kReadBufferBytes> m_buffer;
  std::string_view m_pending;
  uint64_t m_remaining;
  std::string m_failure;
};

class ArchiveReader {
 public:
  ArchiveReader(ByteSource& source, std::vector<std::string>& list) : m_source(source), m_list(list) {}

  ArchiveStatus Read() {
    uint16_t shortCount = 0;
    uint32_t count = 0;
    if (!TakeNumber(shortCount)) return Truncated(StringId::kListCountIncomplete, {});
    count = shortCount;
    if (shortCount == kLongCount && !TakeNumber(count)) return Truncated(StringId::kListCountIncomplete, {});
    // Each string takes one byte at least.
    if (count > m_source.Remaining()) {
      return Truncated(StringId::kListCountTooLarge,
                       {std::to_string(count), std::to_string(m_source.Remaining())});
    }
    m_list.reserve(std::min<size_t>(count, kMostReserved));
    for (uint32_t i = 0; i < count; ++i) {
      if (ArchiveStatus status = ReadString(i + 1); !status) return status;
    }
    return {};
  }

 private:
  template <typename Number>
  bool TakeNumber(Number& number) {
    std::array<char, sizeof(Number)> bytes{};
    if (!m_source.Take(bytes.data(), bytes.size())) return false;
    number = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
      number = static_cast<Number>(number | (static_cast<Number>(static_cast<uint8_t>(bytes[i])) << (8 * i)));
    }
    return true;
  }

  /// `ordinal` counts from 1, for messages.
  ArchiveStatus ReadString(uint32_t ordinal) {
    const std::string number = std::to_string(ordinal);
    uint64_t length = 0;
    bool wide = false;
    if (ArchiveStatus status = ReadLength(number, length, wide); !status) return status;
    const uint64_t bytes = wide ? 2 * length : length;
    if (bytes > m_source.Remaining()) {
      return Truncated(StringId::kListStringTooLong,
                       {number, std::to_string(bytes), std::to_string(m_source.Remaining())});
    }
    std::string text(static_cast<size_t>(bytes), '\0');
    if (!m_source.Take(text.data(), text.size())) return Truncated(StringId::kListStringIncomplete, {number});
    m_list.push_back(wide ? Narrow(text) : std::move(text));
    return {};
  }

  ArchiveStatus ReadLength(const std::string& ordinal, uint64_t& length, bool& wide) {
    wide = false;
    for (;;) {
      uint8_t byte = 0;
      if (!TakeNumber(byte)) return Truncated(StringId::kListStringIncomplete, {ordinal});
      length = byte;
      if (byte != kLongPrefix) return {};
      uint16_t word = 0;
      if (!TakeNumber(word)) return Truncated(StringId::kListStringIncomplete, {ordinal});
      length = word;
      if (word == kVeryLongPrefix) {
        uint32_t number = 0;
        if (!TakeNumber(number)) return Truncated(StringId::kListStringIncomplete, {ordinal});
        length = number;
      }
      if (word != kWideMarker) return {};
      if (wide) return {ArchiveCode::kMalformed, FormatText(StringId::kListTwiceWide, {ordinal})};
      wide = true;
    }
  }

  static std::string Narrow(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() / 2);
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
      const int unit = static_cast<uint8_t>(bytes[i]) | static_cast<uint8_t>(bytes[i + 1]) << 8;
      const int byte = cp1252::FromUnicode(static_cast<char32_t>(unit));
      text += byte < 0 ? '?' : static_cast<char>(byte);
    }
    return text;
  }

  ArchiveStatus Truncated(StringId why, std::initializer_list<std::string_view> args) const {
    if (!m_source.Failure().empty()) return {ArchiveCode::kCannotRead, m_source.Failure()};
    return {ArchiveCode::kTruncated, FormatText(why, args)};
  }

  ByteSource& m_source;
  std::vector<std::string>& m_list;
};

ArchiveStatus ReadFrom(ByteSource& source, std::vector<std::string>& list) {
  list.clear();
  ArchiveStatus status;
  try {
    status = ArchiveReader(source, list).Read();
  } catch (const std::bad_alloc&) {
    status = {ArchiveCode::kCannotRead, std::string(Text(StringId::kListNoMemory))};
  }
  if (!status) list.clear();
  return status;
}

void AppendNumber(std::string& bytes, uint32_t number, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i));
}

uint32_t Checked(size_t size) {
  if (size > std::numeric_limits<uint32_t>::max()) {
    throw std::invalid_argument("too large for a string list archive");
  }
  return static_cast<uint32_t>(size);
}

void AppendLength(std::string& bytes, uint32_t length) {
  if (length < kLongPrefix) {
    AppendNumber(bytes, length, 1);
    return;
  }
  AppendNumber(bytes, kLongPrefix, 1);
  if (length < kWideMarker) {
    AppendNumber(bytes, length, 2);
    return;
  }
  AppendNumber(bytes, kVeryLongPrefix, 2);
  AppendNumber(bytes, length, 4);
}

}  // namespace

ArchiveStatus ReadStringList(std::string_view bytes, std::vector<std::string>& list) {
  ByteSource source(bytes);
  return ReadFrom(source, list);
}

ArchiveStatus ReadStringListFile(const std::string& path, std::vector<std::string>& list) {
  list.clear();
  InputFile file;
  if (const IoResult open = file.Open(path); !open) return {ArchiveCode::kCannotRead, open.Message()};
  ByteSource source(file);
  ArchiveStatus status = ReadFrom(source, list);
  if (!status && source.Failure().empty())
    status.message = FormatText(StringId::kListInFile, {status.message, path});
  return status;
}

std::string WriteStringList(std::span<const std::string> list) {
  std::string bytes;
  const uint32_t count = Checked(list.size());
  AppendNumber(bytes, std::min<uint32_t>(count, kLongCount), 2);
  if (count >= kLongCount) AppendNumber(bytes, count, 4);
  for (const std::string& text : list) {
    AppendLength(bytes, Checked(text.size()));
    bytes += text;
  }
  return bytes;
}

IoResult WriteStringListFile(const std::string& path, std::span<const std::string> list) {
  AtomicFile file(path);
  if (IoResult open = file.Open(); !open) return open;
  if (IoResult write = file.Write(WriteStringList(list)); !write) return write;
  return file.Commit();
}

}  // namespace quill
