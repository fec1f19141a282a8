#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/FileIdentity.h"
#include "text/buffer/TextPosition.h"

/// The bytes of a recovery journal: a magic text, then records of
///   u32 checksum (CRC-32 of what follows in the record), u32 payload length, u8 type, payload
/// with all numbers little-endian. The first record is the header. A reader takes records until one is
/// short or fails its checksum, so that every prefix of a journal is a journal.
namespace quill::journal {

inline constexpr std::string_view kMagic = "QILJRNL1";

enum class RecordType : uint8_t {
  kHeader = 1,
  kLines = 2,         ///< next lines of a whole text
  kTextComplete = 3,  ///< line count: the lines before are the whole text
  kInsert = 4,        ///< position, lines
  kDelete = 5,        ///< range
  kLineEndStyle = 6,  ///< the text's style from now on
};

/// What the edits of a journal apply to.
enum class Base : uint8_t {
  kEmptyText = 0,  ///< one empty line
  kFile = 1,       ///< the document's file as the header identifies it
  kLines = 2,      ///< the lines that follow the header
};

struct Header {
  std::string path;   ///< of the document's file; empty for one that has none
  std::string title;  ///< for a document without a file
  Base base = Base::kEmptyText;
  int32_t style = 0;            ///< line ends of the text, and of the base file
  FileIdentity file;            ///< as loaded or saved last
  uint32_t sampleChecksum = 0;  ///< of the base file, see `SampleChecksum`
  std::string keptName;         ///< file name of a second link to the base file, in the journal's folder

  friend bool operator==(const Header&, const Header&) = default;
};

void AppendHeader(std::string& out, const Header& header);
void AppendInsert(std::string& out, TextPosition at, const std::vector<std::string_view>& lines);
void AppendDelete(std::string& out, TextRange range);
void AppendLines(std::string& out, const std::vector<std::string_view>& lines);
void AppendTextComplete(std::string& out, int32_t lineCount);
void AppendLineEndStyle(std::string& out, int32_t style);

/// A record of any payload.
void AppendRecord(std::string& out, RecordType type, std::string_view payload);

struct Record {
  RecordType type;
  std::string_view payload;
};

/// Takes the next whole record off `rest`; nothing, and `rest` as it was, when there is none.
std::optional<Record> TakeRecord(std::string_view& rest);

struct Insertion {
  TextPosition at;
  std::vector<std::string_view> lines;  ///< into the payload; never empty
};

/// Each gives nothing for a payload that does not have exactly the right form.
std::optional<Header> ReadHeader(std::string_view payload);
std::optional<Insertion> ReadInsert(std::string_view payload);
std::optional<TextRange> ReadDelete(std::string_view payload);
std::optional<std::vector<std::string_view>> ReadLines(std::string_view payload);
std::optional<int32_t> ReadNumber(std::string_view payload);

/// CRC-32 of the beginning, the middle and the end of a file: tells files of one size apart without
/// reading all of a large one. 0 when it cannot be read.
uint32_t SampleChecksum(const std::string& path);

}  // namespace quill::journal
