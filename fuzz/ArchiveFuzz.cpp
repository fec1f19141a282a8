// The archive reader on any bytes: no crash, no memory beyond what the input can hold, and what is
// accepted is written in a form that reads the same.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "intel/vocabulary/StringListArchive.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::vector<std::string> list;
  const quill::ArchiveStatus status = quill::ReadStringList(bytes, list);
  if (!status) {
    if (status.message.empty() || !list.empty()) std::abort();
    return 0;
  }
  size_t characters = 0;
  for (const std::string& text : list) characters += text.size();
  if (list.size() > size || characters > size) std::abort();

  std::vector<std::string> again;
  if (!quill::ReadStringList(quill::WriteStringList(list), again) || again != list) std::abort();
  return 0;
}
