// The recovery reader on any bytes: no crash, no memory beyond what the input can hold, and a text that
// comes back whole is the same after another round through a journal.
//
// An even first byte: the rest stands behind the magic text as it is. An odd one: the rest is taken as
// records (type, length, payload), which get right checksums, or else nothing would pass them.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "shell/JournalReplay.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace {

using namespace quill;

std::string Journal(std::string_view input) {
  std::string bytes(journal::kMagic);
  const bool framed = (static_cast<uint8_t>(input.front()) & 1) != 0;
  input.remove_prefix(1);
  if (!framed) return bytes.append(input);
  while (input.size() >= 2) {
    const auto type = static_cast<journal::RecordType>(input[0]);
    const size_t length = std::min<size_t>(static_cast<uint8_t>(input[1]), input.size() - 2);
    journal::AppendRecord(bytes, type, input.substr(2, length));
    input.remove_prefix(2 + length);
  }
  return bytes;
}

IoResult LoadBase(const journal::Header&, CCrystalTextBuffer& text) {
  TextPosition end;
  text.InsertTextAt(nullptr, {0, 0}, "the base\rof edits\r", end);
  return IoResult::Success();
}

std::string TextOf(const CCrystalTextBuffer& buffer) {
  std::string text;
  buffer.CopyRange({{0, 0}, buffer.EndOfText()}, text);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string bytes = Journal({reinterpret_cast<const char*>(data), size});
  CCrystalTextBuffer text;
  const ReplayResult result = ReplayJournal(bytes, LoadBase, text);
  if (result.text != RecoveredText::kWhole) return 0;

  std::string again(journal::kMagic);
  journal::Header header = *result.header;
  header.base = journal::Base::kLines;
  journal::AppendHeader(again, header);
  std::vector<std::string_view> lines;
  for (int32_t line = 0; line < text.LineCount(); ++line) lines.push_back(text.Line(line));
  journal::AppendLines(again, lines);
  journal::AppendTextComplete(again, text.LineCount());
  CCrystalTextBuffer copy;
  const ReplayResult second = ReplayJournal(again, LoadBase, copy);
  if (second.text != RecoveredText::kWhole || second.cutShort || second.header != header) std::abort();
  if (TextOf(copy) != TextOf(text)) std::abort();
  return 0;
}
