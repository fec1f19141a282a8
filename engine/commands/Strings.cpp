// Strings.
#include <algorithm>

#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"
#include "engine/language/Lexer.h"

namespace korvel {

size_t FormatNumber(std::string_view format, Fixed value, char* to, size_t size) {
  size_t length = 0;
  bool done = false;
  const auto put = [&](char c) {
    if (length < size) to[length++] = c;
  };
  for (size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%') {
      put(format[i]);
      continue;
    }
    if (i + 1 < format.size() && format[i + 1] == '%') {
      put('%');
      ++i;
      continue;
    }
    size_t at = i + 1;
    const bool zeros = at < format.size() && format[at] == '0';
    int width = 0;
    while (at < format.size() && format[at] >= '0' && format[at] <= '9') {
      width = std::min(width * 10 + (format[at++] - '0'), 255);
    }
    int decimals = 3;
    const bool point =
        at + 1 < format.size() && format[at] == '.' && format[at + 1] >= '0' && format[at + 1] <= '6';
    if (point) {
      decimals = format[at + 1] - '0';
      at += 2;
    }
    const char kind = at < format.size() ? format[at] : '\0';
    if (done || (kind != 'f' && (kind != 'd' || point))) {
      put('%');
      continue;
    }
    char number[300];
    const size_t count = WriteFixed(number, value, kind == 'd' ? 0 : decimals, width, zeros ? '0' : ' ');
    for (size_t j = 0; j < count; ++j) put(number[j]);
    done = true;
    i = at;
  }
  return length;
}

namespace {

constexpr size_t kRoom = kLongestText + 300;

// A copy of an argument: source and target of a command may be the same string.
struct Copy {
  explicit Copy(std::string_view source) : length(std::min(source.size(), sizeof text)) {
    std::memcpy(text, source.data(), length);
  }
  std::string_view view() const { return {text, length}; }
  char text[kLongestText];
  size_t length;
};

StringObject& Target(Value argument) {
  return As<StringObject>(argument);
}

Value StrCreate(Session& s, const Value* a) {
  auto* string = s.world.Make<StringObject>(kKorvelString);
  if (string == nullptr || !s.world.Assign(*string, TextOf(a[0]))) {
    s.Fault("There is no more memory for another string.");
    return kNull;
  }
  return ToValue(string);
}

Value StrRemove(Session& s, const Value* a) {
  auto& string = Target(a[0]);
  if ((string.head.flags & kByScript) == 0) s.world.Remove(&string.head);
  return 0;
}

Value StrCopy(Session& s, const Value* a) {
  s.world.Assign(Target(a[0]), TextOf(a[1]));
  return 0;
}

Value StrAppend(Session& s, const Value* a) {
  const Copy source(TextOf(a[1]));
  s.world.Append(Target(a[0]), source.view());
  return 0;
}

Value StrAppendNum(Session& s, const Value* a) {
  char text[kRoom];
  s.world.Append(Target(a[0]), {text, FormatNumber(TextOf(a[1]), Number(a[2]), text, sizeof text)});
  return 0;
}

Value StrFromNum(Session& s, const Value* a) {
  char text[kRoom];
  s.world.Assign(Target(a[0]), {text, FormatNumber(TextOf(a[1]), Number(a[2]), text, sizeof text)});
  return 0;
}

Value StrAppendCode(Session& s, const Value* a) {
  const char character = static_cast<char>(Whole(a[1]));
  if (Whole(a[1]) >= 1 && Whole(a[1]) <= 255) s.world.Append(Target(a[0]), {&character, 1});
  return 0;
}

Value StrLength(Session&, const Value* a) {
  return GiveWhole(Target(a[0]).length);
}

Value StrPart(Session& s, const Value* a) {
  const Copy source(TextOf(a[1]));
  const int64_t first = std::max(1, Whole(a[2]));
  const int64_t count = Whole(a[3]);
  std::string_view part;
  if (count >= 1 && first <= static_cast<int64_t>(source.length)) {
    part = source.view().substr(static_cast<size_t>(first - 1), static_cast<size_t>(count));
  }
  s.world.Assign(Target(a[0]), part);
  return 0;
}

Value FindFrom(std::string_view source, std::string_view wanted, int64_t first) {
  if (wanted.empty() || first > static_cast<int64_t>(source.size())) return 0;
  const size_t at = source.find(wanted, static_cast<size_t>(std::max<int64_t>(first, 1) - 1));
  return at == std::string_view::npos ? 0 : GiveWhole(static_cast<int64_t>(at) + 1);
}

Value StrFind(Session&, const Value* a) {
  return FindFrom(TextOf(a[0]), TextOf(a[1]), 1);
}
Value StrFindFrom(Session&, const Value* a) {
  return FindFrom(TextOf(a[0]), TextOf(a[1]), Whole(a[2]));
}

Value StrReplace(Session& s, const Value* a) {
  const Copy wanted(TextOf(a[1]));
  const Copy other(TextOf(a[2]));
  const std::string_view source = TextOf(a[0]);
  if (wanted.length == 0) return 0;
  char text[kLongestText];
  size_t length = 0;
  int64_t count = 0;
  const auto put = [&](std::string_view part) {
    part = part.substr(0, sizeof text - length);
    std::copy(part.begin(), part.end(), text + length);
    length += part.size();
  };
  size_t at = 0;
  for (;;) {
    const size_t found = source.find(wanted.view(), at);
    if (found == std::string_view::npos) break;
    put(source.substr(at, found - at));
    put(other.view());
    at = found + wanted.length;
    ++count;
  }
  put(source.substr(at));
  if (count > 0) s.world.Assign(Target(a[0]), {text, length});
  return GiveWhole(count);
}

Value StrCompare(Session&, const Value* a) {
  return GiveBool(TextOf(a[0]) == TextOf(a[1]));
}
Value StrCompareNocase(Session&, const Value* a) {
  return GiveBool(SameWord(TextOf(a[0]), TextOf(a[1])));
}

Value StrOrder(Session&, const Value* a) {
  const int order = TextOf(a[0]).compare(TextOf(a[1]));
  return order < 0 ? -kOne : order > 0 ? kOne : 0;
}

template <char (*Change)(char)>
Value ChangeAll(Session&, const Value* a) {
  StringObject& string = Target(a[0]);
  for (uint32_t i = 0; i < string.length; ++i) string.text[i] = Change(string.text[i]);
  return 0;
}

char ToUpper(char c) {
  return UpperOf(c);
}
char ToLower(char c) {
  return LowerOf(c);
}

Value StrTrim(Session& s, const Value* a) {
  std::string_view text = TextOf(a[0]);
  const auto blank = [](char c) { return c == ' ' || c == '\t'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  s.world.Assign(Target(a[0]), text);
  return 0;
}

Value StrCode(Session&, const Value* a) {
  const int32_t place = Whole(a[1]);
  const std::string_view text = TextOf(a[0]);
  if (place < 1 || static_cast<size_t>(place) > text.size()) return 0;
  return GiveWhole(static_cast<uint8_t>(text[static_cast<size_t>(place) - 1]));
}

Value StrToNum(Session&, const Value* a) {
  const std::string_view text = TextOf(a[0]);
  return ReadFixed(text.data(), text.size(), nullptr);
}

constexpr Command kRows[] = {
    {"str_create", "s:s", StrCreate},
    {"str_remove", "-:S", StrRemove},
    {"str_copy", "-:Ss", StrCopy},
    {"str_append", "-:Ss", StrAppend},
    {"str_append_num", "-:Ssn", StrAppendNum},
    {"str_append_code", "-:Sn", StrAppendCode},
    {"str_from_num", "-:Ssn", StrFromNum},
    {"str_length", "n:s", StrLength},
    {"str_part", "-:Ssnn", StrPart},
    {"str_find", "n:ss", StrFind},
    {"str_find_from", "n:ssn", StrFindFrom},
    {"str_replace", "n:Sss", StrReplace},
    {"str_compare", "n:ss", StrCompare},
    {"str_compare_nocase", "n:ss", StrCompareNocase},
    {"str_order", "n:ss", StrOrder},
    {"str_upper", "-:S", ChangeAll<ToUpper>},
    {"str_lower", "-:S", ChangeAll<ToLower>},
    {"str_trim", "-:S", StrTrim},
    {"str_code", "n:sn", StrCode},
    {"str_to_num", "n:s", StrToNum},
};

}  // namespace

const CommandTable kStringCommands = TableOf(kRows);

}  // namespace korvel
