// Lines to the output, entries in the error list, stops.
#include <algorithm>
#include <cstdio>

#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"

namespace korvel {
namespace {

// A line of the output; a text's own line ends stay in it.
void PrintLine(Session& s, std::string_view first, std::string_view second = {}) {
  char line[8100];
  std::copy(second.begin(), second.end(), std::copy(first.begin(), first.end(), line));
  line[first.size() + second.size()] = 0;
  s.host.Line({line, first.size() + second.size()});
}

Value Print(Session& s, const Value* a) {
  PrintLine(s, TextOf(a[0]));
  return 0;
}

Value PrintNum(Session& s, const Value* a) {
  char number[40] = ": ";
  const size_t length = WriteFixed(number + 2, Number(a[1]), 3, 0, ' ');
  PrintLine(s, TextOf(a[0]), {number, length + 2});
  return 0;
}

Value PrintVec(Session& s, const Value* a) {
  const auto* cells = reinterpret_cast<const Fixed*>(a[1]);
  char numbers[120] = ":";
  size_t length = 1;
  for (int i = 0; i < 3; ++i) {
    numbers[length++] = ' ';
    length += WriteFixed(numbers + length, cells[i], 3, 0, ' ');
  }
  PrintLine(s, TextOf(a[0]), {numbers, length});
  return 0;
}

Value Error(Session& s, const Value* a) {
  s.Fault(TextOf(a[0]));
  return 0;
}

Value Assert(Session& s, const Value* a) {
  if (a[0] != 0) return 0;
  s.Fault(TextOf(a[1]));
  s.debugger.BreakNext(*s.machine.task);
  return 0;
}

Value DebugBreak(Session& s, const Value*) {
  s.debugger.BreakNext(*s.machine.task);
  return 0;
}

Value DebugFps(Session& s, const Value*) {
  return GiveWhole(s.fps);
}

Value DebugFunctions(Session& s, const Value*) {
  int count = 0;
  for (const Function* function : s.program.functions) {
    if (function->copies == 0) continue;
    char copies[20];
    const int length = std::snprintf(copies, sizeof copies, " %u", function->copies);
    PrintLine(s, function->name->view(), {copies, static_cast<size_t>(length)});
    ++count;
  }
  return GiveWhole(count);
}

Value DebugTime(Session& s, const Value* a) {
  const int64_t now = s.real_time() + 1;
  const int64_t passed = s.debug_time == 0 ? 0 : now - s.debug_time;
  s.debug_time = now;
  const Value arguments[] = {a[0], Cut(passed * kOne / 1000)};
  return PrintNum(s, arguments);
}

constexpr Command kRows[] = {
    {"print", "-:s", Print},          {"print_num", "-:sn", PrintNum},
    {"print_vec", "-:sv", PrintVec},  {"error", "-:s", Error},
    {"assert", "*-:ns", Assert},      {"debug_break", "*-:", DebugBreak},
    {"debug_fps", "n:", DebugFps},    {"debug_functions", "n:", DebugFunctions},
    {"debug_time", "-:s", DebugTime},
};

}  // namespace

const CommandTable kDebugCommands = TableOf(kRows);

}  // namespace korvel
