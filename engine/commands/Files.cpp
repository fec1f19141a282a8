// Files of a game, its settings and its saved state.
#include <algorithm>

#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"
#include "engine/language/Lexer.h"

namespace korvel {
namespace {

constexpr char kConfigFile[] = "config.txt";
constexpr size_t kLargestConfig = 64 * 1024;

Value OpenFile(Session& s, const Value* a, GameFolder::Access access) {
  return GiveWhole(s.folder.Open(TextOf(a[0]), access));
}

Value FileOpenRead(Session& s, const Value* a) {
  return OpenFile(s, a, GameFolder::Access::kRead);
}
Value FileOpenWrite(Session& s, const Value* a) {
  return OpenFile(s, a, GameFolder::Access::kWrite);
}
Value FileOpenAppend(Session& s, const Value* a) {
  return OpenFile(s, a, GameFolder::Access::kAppend);
}

Value FileClose(Session& s, const Value* a) {
  s.folder.Close(Whole(a[0]));
  return 0;
}

Value FileAtEnd(Session& s, const Value* a) {
  GameFile* file = s.folder.Find(Whole(a[0]));
  return GiveBool(file == nullptr || s.folder.Peek(*file) < 0);
}

// The next line without its end; false at the end of the file.
bool ReadLine(GameFolder& folder, GameFile& file, char* to, size_t size, size_t* length) {
  *length = 0;
  int byte = folder.Next(file);
  if (byte < 0) return false;
  while (byte >= 0 && byte != '\n') {
    if (*length < size) to[(*length)++] = static_cast<char>(byte);
    byte = folder.Next(file);
  }
  if (byte == '\n' && folder.Peek(file) == '\r') folder.Next(file);
  if (*length > 0 && to[*length - 1] == '\r') --*length;
  return true;
}

Value FileReadLine(Session& s, const Value* a) {
  char line[kLongestText + 1];
  size_t length = 0;
  GameFile* file = s.folder.Find(Whole(a[0]));
  const bool read = file != nullptr && ReadLine(s.folder, *file, line, sizeof line, &length);
  s.world.Assign(As<StringObject>(a[1]), {line, length});
  return GiveBool(read);
}

Value FileReadNum(Session& s, const Value* a) {
  GameFile* file = s.folder.Find(Whole(a[0]));
  if (file == nullptr) return 0;
  const auto separates = [](int c) { return c == ' ' || c == '\t' || c == ',' || c == '\n' || c == '\r'; };
  while (separates(s.folder.Peek(*file))) s.folder.Next(*file);
  char word[64];
  size_t length = 0;
  for (int c = s.folder.Peek(*file); c >= 0 && !separates(c); c = s.folder.Peek(*file)) {
    if (length < sizeof word) word[length++] = static_cast<char>(c);
    s.folder.Next(*file);
  }
  // One separator behind it, so that file_at_end is right behind the last number.
  const int behind = s.folder.Peek(*file);
  if (separates(behind)) s.folder.Next(*file);
  if (behind == '\r' && s.folder.Peek(*file) == '\n') s.folder.Next(*file);
  return ReadFixed(word, length, nullptr);
}

Value FileWrite(Session& s, const Value* a) {
  GameFile* file = s.folder.Find(Whole(a[0]));
  return GiveBool(file != nullptr && s.folder.Write(*file, TextOf(a[1])));
}

Value FileWriteLine(Session& s, const Value* a) {
  GameFile* file = s.folder.Find(Whole(a[0]));
  return GiveBool(file != nullptr && s.folder.Write(*file, TextOf(a[1])) && s.folder.Write(*file, "\n"));
}

Value FileWriteNum(Session& s, const Value* a) {
  GameFile* file = s.folder.Find(Whole(a[0]));
  char number[40];
  size_t length = WriteShort(number, Number(a[1]));
  number[length++] = ' ';
  if (file != nullptr) s.folder.Write(*file, {number, length});
  return 0;
}

Value FileExists(Session& s, const Value* a) {
  return GiveBool(s.folder.Exists(TextOf(a[0])));
}
Value FileRemove(Session& s, const Value* a) {
  return GiveBool(s.folder.Remove(TextOf(a[0])));
}

// The text behind "key=" on its line of config.txt; false when there is none.
bool ReadConfig(Session& s, std::string_view key, char* to, size_t size, size_t* length) {
  const int32_t handle = s.folder.Open(kConfigFile, GameFolder::Access::kRead);
  GameFile* file = s.folder.Find(handle);
  bool found = false;
  while (file != nullptr && !found && ReadLine(s.folder, *file, to, size, length)) {
    const std::string_view line(to, *length);
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos || !SameWord(line.substr(0, equals), key)) continue;
    *length -= equals + 1;
    std::memmove(to, to + equals + 1, *length);
    found = true;
  }
  s.folder.Close(handle);
  return found;
}

bool WriteConfig(Session& s, std::string_view key, std::string_view value) {
  if (key.empty() || key.find_first_of("=\n\r") != std::string_view::npos ||
      value.find_first_of("\n\r") != std::string_view::npos) {
    return false;
  }
  auto* text = static_cast<char*>(s.arena.TryAllocate(kLargestConfig));
  if (text == nullptr) return false;
  size_t length = 0;
  bool fits = true;
  const auto put = [&](std::string_view part) {
    if (length + part.size() > kLargestConfig) {
      fits = false;
      return;
    }
    std::copy(part.begin(), part.end(), text + length);
    length += part.size();
  };
  const int32_t old = s.folder.Open(kConfigFile, GameFolder::Access::kRead);
  char line[kLongestText + 300];
  size_t count = 0;
  for (GameFile* file = s.folder.Find(old);
       file != nullptr && ReadLine(s.folder, *file, line, sizeof line, &count);) {
    const std::string_view view(line, count);
    const size_t equals = view.find('=');
    if (equals != std::string_view::npos && SameWord(view.substr(0, equals), key)) continue;
    put(view);
    put("\n");
  }
  s.folder.Close(old);
  put(key);
  put("=");
  put(value);
  put("\n");
  bool written = false;
  if (fits) {
    const int32_t handle = s.folder.Open(kConfigFile, GameFolder::Access::kWrite);
    GameFile* file = s.folder.Find(handle);
    written = file != nullptr && s.folder.Write(*file, {text, length});
    s.folder.Close(handle);
  }
  s.arena.Free(text, kLargestConfig);
  return written;
}

Value ConfigRead(Session& s, const Value* a) {
  char text[kLongestText + 300];
  size_t length = 0;
  if (!ReadConfig(s, TextOf(a[0]), text, sizeof text, &length)) return a[1];
  return ReadFixed(text, length, nullptr);
}

Value ConfigWrite(Session& s, const Value* a) {
  char number[40];
  return GiveBool(WriteConfig(s, TextOf(a[0]), {number, WriteShort(number, Number(a[1]))}));
}

Value ConfigReadText(Session& s, const Value* a) {
  char text[kLongestText + 300];
  size_t length = 0;
  if (ReadConfig(s, TextOf(a[1]), text, sizeof text, &length)) {
    s.world.Assign(As<StringObject>(a[0]), {text, length});
    return kOne;
  }
  const std::string_view otherwise = TextOf(a[2]);
  std::copy(otherwise.begin(), otherwise.end(), text);
  s.world.Assign(As<StringObject>(a[0]), {text, otherwise.size()});
  return 0;
}

Value ConfigWriteText(Session& s, const Value* a) {
  return GiveBool(WriteConfig(s, TextOf(a[0]), TextOf(a[1])));
}

// One var a line: its name, then its numbers.
Value GameSave(Session& s, const Value* a) {
  const int32_t handle = s.folder.Open(TextOf(a[0]), GameFolder::Access::kWrite);
  GameFile* file = s.folder.Find(handle);
  bool written = file != nullptr;
  char buffer[4000];
  size_t length = 0;
  const auto flush = [&] {
    written = written && s.folder.Write(*file, {buffer, length});
    length = 0;
  };
  for (const Symbol* symbol : s.program.symbols) {
    if (!written || !symbol->saved) continue;
    const bool is_array = symbol->kind == SymbolKind::kArray;
    const Fixed* cells = is_array ? s.program.ArrayOf(*symbol)->cells : s.program.cells + symbol->cell;
    std::memcpy(buffer + length, symbol->name->text, symbol->name->length);
    length += symbol->name->length;
    for (uint32_t i = 0; i < (is_array ? symbol->size : 1); ++i) {
      buffer[length++] = ' ';
      length += WriteShort(buffer + length, cells[i]);
      if (length > 3000) flush();
    }
    buffer[length++] = '\n';
    if (length > 3000) flush();
  }
  flush();
  s.folder.Close(handle);
  return GiveBool(written);
}

Value GameLoad(Session& s, const Value* a) {
  const int32_t handle = s.folder.Open(TextOf(a[0]), GameFolder::Access::kRead);
  GameFile* file = s.folder.Find(handle);
  if (file == nullptr) return 0;
  const auto word = [&](char* to, size_t size) {
    size_t length = 0;
    while (s.folder.Peek(*file) == ' ') s.folder.Next(*file);
    for (int c = s.folder.Peek(*file); c >= 0 && c != ' ' && c != '\n' && c != '\r';
         c = s.folder.Peek(*file)) {
      if (length < size) to[length++] = static_cast<char>(c);
      s.folder.Next(*file);
    }
    return length;
  };
  while (s.folder.Peek(*file) >= 0) {
    char text[260];
    const size_t length = word(text, 256);
    const Name* name = s.names.Find({text, length});
    const Symbol* symbol = name != nullptr ? name->symbol : nullptr;
    if (symbol != nullptr && !symbol->saved) symbol = nullptr;
    const bool is_array = symbol != nullptr && symbol->kind == SymbolKind::kArray;
    const uint32_t size = symbol == nullptr ? 0 : is_array ? symbol->size : 1;
    for (uint32_t i = 0;; ++i) {
      const size_t count = word(text, 64);
      if (count == 0) break;
      if (i >= size) continue;
      Fixed* cells = is_array ? s.program.ArrayOf(*symbol)->cells : s.program.cells + symbol->cell;
      WriteCell(cells + i, ReadFixed(text, count, nullptr));
    }
    while (s.folder.Peek(*file) == '\r' || s.folder.Peek(*file) == '\n') s.folder.Next(*file);
  }
  s.folder.Close(handle);
  return kOne;
}

constexpr Command kRows[] = {
    {"file_open_read", "n:s", FileOpenRead},
    {"file_open_write", "n:s", FileOpenWrite},
    {"file_open_append", "n:s", FileOpenAppend},
    {"file_close", "-:n", FileClose},
    {"file_at_end", "n:n", FileAtEnd},
    {"file_read_line", "n:nS", FileReadLine},
    {"file_read_num", "n:n", FileReadNum},
    {"file_write", "n:ns", FileWrite},
    {"file_write_line", "n:ns", FileWriteLine},
    {"file_write_num", "-:nn", FileWriteNum},
    {"file_exists", "n:s", FileExists},
    {"file_remove", "n:s", FileRemove},
    {"config_read", "n:sn", ConfigRead},
    {"config_write", "n:sn", ConfigWrite},
    {"config_read_text", "n:Sss", ConfigReadText},
    {"config_write_text", "n:ss", ConfigWriteText},
    {"game_save", "n:s", GameSave},
    {"game_load", "n:s", GameLoad},
};

}  // namespace

const CommandTable kFileCommands = TableOf(kRows);

}  // namespace korvel
