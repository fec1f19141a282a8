// The same work for every component. A group loads one script and measures what belongs to it.
#include <malloc.h>
#include <unistd.h>

#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <fstream>
#include <utility>

#include "bench/MeasuredEditor.h"
#include "bench/ScriptGenerator.h"

namespace quill::bench {
namespace {

constexpr int kTimedKeys = 300;
constexpr int kKeysPerLine = 40;  // a line typed on for ever would scroll sideways
constexpr int kTypedCharacters = 2000;
constexpr double kTypingLimitMs = 5000;
constexpr int kTimedPages = 1000;
constexpr int kReplacedLines = 100'000;
constexpr int kCommonWordHits = 100'000;
constexpr int kRepeats = 3;
constexpr size_t kLongLineKeys = 3;
constexpr size_t kSidewaysSteps = 10;
constexpr double kLongLineLimitMs = 10'000;
constexpr int kSidewaysPixels = 400;

double ResidentMegabytes() {
  int64_t total = 0;
  int64_t resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

void LoadAndColour10Mb(const std::string& folder) {
  Editor editor(MakeDriver());
  const Stopwatch load;
  editor.Load(folder + "/10mb.vsl");
  Report("load_10mb", load.Milliseconds(), "ms");
  editor.PaintPending();
  std::vector<double> times;
  for (int i = 0; i < kRepeats; ++i) {
    const Stopwatch colour;
    editor.Driver().ColourAll();
    times.push_back(colour.Milliseconds());
  }
  Report("colour_10mb", Median(times), "ms");
}

void Load100Mb(const std::string& folder) {
  Editor editor(MakeDriver());
  malloc_trim(0);
  const double before = ResidentMegabytes();
  const Stopwatch load;
  editor.Load(folder + "/100mb.vsl");
  Report("load_100mb", load.Milliseconds(), "ms");
  const Stopwatch paint;
  editor.PaintExpected("loading");
  Report("first_paint_100mb", paint.Milliseconds(), "ms");
  editor.PaintPending();
  malloc_trim(0);
  Report("memory_100mb", ResidentMegabytes() - before, "MB");
}

/// What the last paint left on the screen; nothing is painted for it.
QImage OnScreen(QAbstractScrollArea& view) {
  return view.screen()->grabWindow(view.winId()).toImage();
}

void OpenComment(const std::string& folder) {
  Editor editor(MakeDriver());
  editor.Load(folder + "/10mb_open.vsl");
  editor.PaintPending();
  editor.Driver().GoTo(editor.Driver().LineCount() - 1, 0);
  editor.PaintPending();
  QAbstractScrollArea& view = editor.Driver().View();
  std::vector<double> times;
  for (int i = 0; i < kRepeats; ++i) {
    const QImage code = OnScreen(view);
    const Stopwatch watch;
    editor.Driver().InsertAt(0, 0, "/* ");
    view.viewport()->update();
    editor.PaintExpected("opening a comment above");
    times.push_back(watch.Milliseconds());
    if (const QImage now = OnScreen(view); now.isNull() || now == code)
      Fail("the text below an opened comment kept its colours");
    editor.Driver().Undo();
    editor.PaintPending();
    // Undo goes to the place of the change.
    editor.Driver().GoTo(editor.Driver().LineCount() - 1, 0);
    editor.PaintPending();
  }
  Report("comment_opener_10mb", Median(times), "ms");
}

/// The caret at the end of a line in the middle of a script that is shown and coloured there.
void GoToMiddle(Editor& editor) {
  EditorDriver& driver = editor.Driver();
  const int middle = driver.LineCount() / 2;
  driver.GoTo(middle, driver.LineLength(middle));
  editor.PaintPending();
}

void TimeKeys(Editor& editor) {
  constexpr std::string_view kText = "speed = 12 + fuel; ";
  GoToMiddle(editor);
  std::vector<double> times;
  for (int i = 0; i < kTimedKeys; ++i) {
    if (i % kKeysPerLine == 0) editor.PressAndPaint(Qt::Key_Return, QStringLiteral("\r"));
    editor.PaintPending();
    times.push_back(editor.PressAndPaint(kText[static_cast<size_t>(i) % kText.size()]));
  }
  ReportMedianAnd99th("key", times);
  times.clear();
  for (int i = 0; i < kTimedKeys / 3; ++i) {
    editor.PaintPending();
    const Stopwatch watch;
    editor.Press(kText[static_cast<size_t>(i) % kText.size()]);
    editor.Driver().View().viewport()->update();
    editor.PaintExpected("a key");
    times.push_back(watch.Milliseconds());
  }
  Report("key_whole_view", Median(times), "ms");
}

void TimeEnterAndBackspace(Editor& editor) {
  GoToMiddle(editor);
  const int linesBefore = editor.Driver().LineCount();
  std::vector<double> enters;
  for (int i = 0; i < kTimedKeys; ++i) {
    editor.PaintPending();
    enters.push_back(editor.PressAndPaint(Qt::Key_Return, QStringLiteral("\r")));
  }
  if (editor.Driver().LineCount() != linesBefore + kTimedKeys) Fail("Enter made no lines");
  std::vector<double> backspaces;
  for (int i = 0; i < kTimedKeys; ++i) {
    editor.PaintPending();
    backspaces.push_back(editor.PressAndPaint(Qt::Key_Backspace, QStringLiteral("\b")));
  }
  ReportMedianAnd99th("enter", enters);
  ReportMedianAnd99th("backspace", backspaces);
}

/// As a hand types code: indented blocks, every key painted before the next one comes. A component that
/// takes seconds is measured on the first keys and reported for all.
void TimeTyping(Editor& editor) {
  constexpr std::string_view kText = "if(fuel > 20) {\rspeed = old + 0x1F;\rsnd_play(\"beep\", 50);\r}\r";
  GoToMiddle(editor);
  editor.PressAndPaint(Qt::Key_Return, QStringLiteral("\r"));
  const Stopwatch watch;
  int typed = 0;
  while (typed < kTypedCharacters && watch.Milliseconds() < kTypingLimitMs) {
    const char c = kText[static_cast<size_t>(typed++) % kText.size()];
    if (c == '\r') {
      editor.PressAndPaint(Qt::Key_Return, QStringLiteral("\r"));
    } else {
      editor.PressAndPaint(c);
    }
  }
  Report("typing_2000", watch.Milliseconds() * kTypedCharacters / typed, "ms");
}

void PressKeysInTheMiddle(const std::string& folder) {
  Editor editor(MakeDriver());
  editor.Load(folder + "/10mb.vsl");
  editor.PaintPending();
  TimeKeys(editor);
  TimeEnterAndBackspace(editor);
  TimeTyping(editor);
}

void TurnPages(const std::string& folder) {
  Editor editor(MakeDriver());
  editor.Load(folder + "/10mb.vsl");
  editor.PaintPending();
  editor.Driver().GoTo(0, 0);
  editor.PaintPending();
  const Stopwatch watch;
  for (int i = 0; i < kTimedPages; ++i) editor.PressAndPaint(Qt::Key_PageDown);
  Report("pages", kTimedPages / (watch.Milliseconds() / 1000), "/s");
}

void ShowOneLongLine(const std::string& folder) {
  Editor editor(MakeDriver());
  const Stopwatch open;
  editor.Load(folder + "/long_line.vsl");
  editor.PaintExpected("loading");
  Report("long_line_first_paint", open.Milliseconds(), "ms");
  editor.PaintPending();
  editor.Driver().GoTo(0, editor.Driver().LineLength(0) / 2);
  editor.PaintPending();
  // Some take half a minute for each.
  std::vector<double> keys;
  const Stopwatch typing;
  while (keys.size() < kLongLineKeys && (keys.empty() || typing.Milliseconds() < kLongLineLimitMs)) {
    keys.push_back(editor.PressAndPaint('a'));
  }
  Report("long_line_key", Median(keys), "ms");
  editor.PaintPending();
  std::vector<double> steps;
  const Stopwatch scrolling;
  while (steps.size() < kSidewaysSteps && (steps.empty() || scrolling.Milliseconds() < kLongLineLimitMs)) {
    const Stopwatch step;
    editor.Driver().ScrollSideways(kSidewaysPixels);
    editor.PaintExpected("scrolling sideways");
    steps.push_back(step.Milliseconds());
  }
  Report("long_line_scroll", Median(steps), "ms");
}

void ReplaceSelectedLines(const std::string& folder) {
  Editor editor(MakeDriver());
  EditorDriver& driver = editor.Driver();
  editor.Load(folder + "/10mb.vsl");
  editor.PaintPending();
  const int lines = driver.LineCount();
  driver.SelectLines(kReplacedLines, 2 * kReplacedLines);
  editor.PaintPending();
  const Stopwatch replace;
  driver.ReplaceSelection("wait(1);");
  editor.PaintExpected("replacing a selection");
  Report("replace_selection", replace.Milliseconds(), "ms");
  if (driver.LineCount() != lines - kReplacedLines) Fail("the selection was not replaced");
  editor.PaintPending();
  const Stopwatch undo;
  driver.Undo();
  editor.PaintExpected("undoing a replaced selection");
  Report("replace_selection_undo", undo.Milliseconds(), "ms");
  if (driver.LineCount() != lines) Fail("undo did not bring the selection back");
}

void FindAndReplace(const std::string& folder) {
  Editor editor(MakeDriver());
  EditorDriver& driver = editor.Driver();
  editor.Load(folder + "/10mb.vsl");
  editor.PaintPending();
  std::vector<double> finds;
  for (int i = 0; i < kRepeats; ++i) {
    const Stopwatch find;
    if (driver.Find(std::string(kAbsentText))) Fail("found a text that is not there");
    finds.push_back(find.Milliseconds());
  }
  Report("find_absent", Median(finds), "ms");
  editor.PaintPending();
  const Stopwatch replace;
  const int hits = driver.ReplaceAll(std::string(kCommonWord), "new_velocity");
  editor.PaintExpected("replacing all");
  Report("replace_all", replace.Milliseconds(), "ms");
  if (hits != kCommonWordHits) Fail("replaced " + std::to_string(hits) + " hits");
  editor.PaintPending();
  const Stopwatch undo;
  driver.Undo();
  editor.PaintExpected("undoing replace all");
  Report("replace_all_undo", undo.Milliseconds(), "ms");
  if (driver.ReplaceAll(std::string(kCommonWord), "x") != kCommonWordHits) Fail("one undo was not enough");
}

const std::vector<std::pair<std::string, void (*)(const std::string&)>> kGroups = {
    {"load_10mb", LoadAndColour10Mb},    {"load_100mb", Load100Mb}, {"comment", OpenComment},
    {"keys", PressKeysInTheMiddle},      {"pages", TurnPages},      {"long_line", ShowOneLongLine},
    {"selection", ReplaceSelectedLines}, {"find", FindAndReplace},
};

}  // namespace

std::vector<std::string> ScenarioGroups() {
  std::vector<std::string> names;
  for (const auto& [name, run] : kGroups) names.push_back(name);
  return names;
}

bool RunScenarioGroup(const std::string& group, const std::string& folder) {
  for (const auto& [name, run] : kGroups) {
    if (name != group) continue;
    run(folder);
    return true;
  }
  return false;
}

}  // namespace quill::bench
