#include "res/Strings.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace quill {
namespace {

constexpr int kFirstUndoAction = static_cast<int>(StringId::kActionUnknown);
constexpr int kUndoActionCount = static_cast<int>(StringId::kActionAutoIndent) - kFirstUndoAction + 1;

std::vector<StringRow> SortedRows() {
  std::vector<StringRow> rows = {
#define QUILL_STRING(name, number, text) {StringId::name, #name, text},
#include "res/StringTable.inc"
#undef QUILL_STRING
  };
  std::sort(rows.begin(), rows.end(), [](const StringRow& a, const StringRow& b) { return a.id < b.id; });
  return rows;
}

/// Length of the placeholder at the start of `text`; 0 when it does not start with one.
size_t PlaceholderLength(std::string_view text) {
  for (std::string_view form : {"%s", "%d", "%.2f"}) {
    if (text.substr(0, form.size()) == form) return form.size();
  }
  return 0;
}

}  // namespace

std::span<const StringRow> StringTable() {
  static const std::vector<StringRow> rows = SortedRows();
  return rows;
}

std::optional<std::string_view> TextByNumber(int number) {
  const auto rows = StringTable();
  const auto row = std::lower_bound(rows.begin(), rows.end(), number,
                                    [](const StringRow& r, int n) { return static_cast<int>(r.id) < n; });
  if (row == rows.end() || static_cast<int>(row->id) != number) return std::nullopt;
  return row->text;
}

std::string_view Text(StringId id) {
  const auto text = TextByNumber(static_cast<int>(id));
  if (!text) throw std::invalid_argument("no such row in the string table");
  return *text;
}

std::string FormatText(StringId id, std::span<const std::string_view> args) {
  std::string_view rest = Text(id);
  std::string result;
  auto next = args.begin();
  while (!rest.empty()) {
    size_t taken = PlaceholderLength(rest);
    if (taken > 0) {
      if (next == args.end()) throw std::invalid_argument("too few arguments for a text");
      result += *next++;
    } else {
      taken = rest.substr(0, 2) == "%%" ? 2 : 1;
      result += rest[0];
    }
    rest.remove_prefix(taken);
  }
  if (next != args.end()) throw std::invalid_argument("too many arguments for a text");
  return result;
}

std::optional<std::string_view> UndoActionText(int action) {
  if (action < 0 || action >= kUndoActionCount) return std::nullopt;
  return TextByNumber(kFirstUndoAction + action);
}

}  // namespace quill
