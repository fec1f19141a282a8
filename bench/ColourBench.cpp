#include <benchmark/benchmark.h>

#include <chrono>
#include <vector>

#include "ScriptFile.h"
#include "text/parse/Folding.h"
#include "text/parse/LongLine.h"
#include "text/parse/ParsedText.h"
#include "text/parse/ScriptColouring.h"

namespace quill {
namespace {

using bench::Load;

/// As many names as a big game has; those of the generated script are among them.
struct Words {
  NameSet keywords, commands, functions, variables;
  Words() {
    for (const char* word : {"function", "var", "while", "if", "null", "return", "else"})
      keywords.Insert(word);
    for (const char* word : {"vec_set", "str_cpy", "wait", "player", "time_step"}) commands.Insert(word);
    for (const char* word : {"lander_move"}) functions.Insert(word);
    for (const char* word : {"speed", "temp", "name_str"}) variables.Insert(word);
    for (int i = 0; i < 900; ++i) commands.Insert("command_" + std::to_string(i * 7));
    for (int i = 0; i < 500; ++i) functions.Insert("fn_" + std::to_string(i));
    for (int i = 0; i < 2000; ++i) variables.Insert("v" + std::to_string(i * 3) + "_x");
    classes.Refresh();
  }

  WordClasses classes{{&keywords, &commands, &functions, &variables}};
};

/// A text all of which was parsed.
struct View {
  explicit View(CCrystalTextBuffer& text)
      : parsed(ParsedText::Of(text)),
        states(parsed->States()),
        folds(parsed->Folds()),
        depths(parsed->Depths()) {
    states.ParseAll();
    folds.Refresh();
  }

  std::shared_ptr<ParsedText> parsed;
  LineStateCache& states;
  const FoldMap& folds;
  FoldDepthIndex& depths;
};

void BM_StatesOfAllLines(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  for (auto _ : state) {
    ParsedText parsed(buffer);
    parsed.States().ParseAll();
    benchmark::DoNotOptimize(parsed.States().StateAt(buffer.LineCount()));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * static_cast<int64_t>(bench::kMegabyte));
}
BENCHMARK(BM_StatesOfAllLines)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

void BM_ColourAllLines(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  const Words words;
  std::vector<TextBlock> blocks(1024);
  for (auto _ : state) {
    uint32_t at = 0;
    for (int32_t line = 0; line < buffer.LineCount(); ++line) {
      int32_t count = 0;
      at = ColourLine(buffer, words.classes, at, line, blocks.data(), &count);
      benchmark::DoNotOptimize(count);
    }
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * static_cast<int64_t>(bench::kMegabyte));
}
BENCHMARK(BM_ColourAllLines)->Arg(10)->Unit(benchmark::kMillisecond);

void BM_CommentOpenerInTheFirstLineSeenFromTheEnd(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  View view(buffer);
  TextPosition end;
  for (auto _ : state) {
    buffer.InsertTextAt(nullptr, {0, 0}, "\"", end);
    benchmark::DoNotOptimize(view.states.StateAt(buffer.LineCount()));
    benchmark::DoNotOptimize(view.depths.DepthBefore(buffer.LineCount()));
  }
}
BENCHMARK(BM_CommentOpenerInTheFirstLineSeenFromTheEnd)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

void BM_EnterInTheMiddle(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  View view(buffer);
  if (state.range(1) != 0) CollapseAll(buffer, view.states);
  const int32_t middle = buffer.LineCount() / 2;
  TextPosition end;
  for (auto _ : state) {
    buffer.InsertTextAt(nullptr, {middle, 0}, "\r\n", end);
    benchmark::DoNotOptimize(view.states.StateAt(middle + 50));
    benchmark::DoNotOptimize(view.folds.RowOfLine(middle + 50));
    benchmark::DoNotOptimize(view.depths.DepthBefore(middle));
  }
}
BENCHMARK(BM_EnterInTheMiddle)->ArgNames({"MB", "collapsed"})->Args({10, 0})->Args({100, 0})->Args({100, 1});

void BM_ReplaceInOneHundredThousandLines(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  View view(buffer);
  TextPosition end;
  for (auto _ : state) {
    for (int32_t line = 0; line < 100000; ++line) {
      const TextChange change{true, {{line * 2, 0}, {line * 2, 0}}};
      view.parsed->OnBufferUpdate(nullptr, &change, hint::kLineChanged, line * 2);
    }
    benchmark::DoNotOptimize(view.states.StateAt(buffer.LineCount()));
  }
}
BENCHMARK(BM_ReplaceInOneHundredThousandLines)->Arg(10)->Unit(benchmark::kMillisecond);

void BM_CollapseAllAndExpandAll(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  View view(buffer);
  for (auto _ : state) {
    CollapseAll(buffer, view.states);
    ExpandAll(buffer);
  }
}
BENCHMARK(BM_CollapseAllAndExpandAll)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

/// A collapsed block of so many lines, each of which holds a block's start or end: its marks go and come back
/// with a quote before its head, and lines are inserted after each of its lines and taken out again.
void BM_EditsOfACollapsedBlock(benchmark::State& state) {
  const auto lines = static_cast<int32_t>(state.range(0));
  std::string text = "x;\naction main() {\n";
  for (int32_t i = 0; i < lines / 2; ++i) text += "\tif (x) {\n\t}\n";
  CCrystalTextBuffer buffer;
  buffer.NewBuffer(line_end::kCrLf, text + "}\n");
  View view(buffer);
  TextPosition end;
  for (auto _ : state) {
    CollapseAll(buffer, view.states);
    buffer.OpenUndoGroup();
    for (int32_t line = lines; line > 1; --line) buffer.InsertTextAt(nullptr, {line, 1}, "\r\n", end);
    buffer.CloseUndoGroup();
    view.states.ParseAll();
    if (view.folds.RowCount() != 3) state.SkipWithError("the block was opened");
    buffer.Undo(end);
    view.states.ParseAll();
    buffer.InsertTextAt(nullptr, {0, 0}, "\"", end);
    view.states.ParseAll();
    buffer.Undo(end);
    view.states.ParseAll();
  }
  state.SetItemsProcessed(state.iterations() * lines);
}
BENCHMARK(BM_EditsOfACollapsedBlock)->Arg(10'000)->Arg(40'000)->Arg(160'000)->Unit(benchmark::kMillisecond);

void BM_OneLineOfTwentyMegabytes(benchmark::State& state) {
  std::string text = bench::GeneratedScript(20 * bench::kMegabyte);
  std::erase_if(text, [](char c) { return c == '\r' || c == '\n' || c == '/'; });
  CCrystalTextBuffer buffer;
  buffer.NewBuffer();
  TextPosition end;
  buffer.InsertTextAt(nullptr, {0, 0}, text, end);
  const Words words;
  const int32_t middle = buffer.LineLength(0) / 2;
  const bool first = state.range(0) != 0;
  LongLine kept(buffer);
  for (auto _ : state) {
    LongLine fresh(buffer);
    benchmark::DoNotOptimize((first ? fresh : kept).Blocks(words.classes, 0, 0, middle, middle + 200).size());
  }
}
BENCHMARK(BM_OneLineOfTwentyMegabytes)->ArgName("first")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);

void BM_BraceWalkOverTheWholeText(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  TextPosition end;
  buffer.InsertTextAt(nullptr, buffer.EndOfText(), "\r\n}}}}}}", end);
  for (auto _ : state) {
    BraceIndex braces(buffer);
    benchmark::DoNotOptimize(braces.Find(buffer.EndOfText(), kScriptCommentMarkers, INT64_MAX));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * static_cast<int64_t>(bench::kMegabyte));
}
BENCHMARK(BM_BraceWalkOverTheWholeText)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

/// A key at the end of a million lines, the open brace in the first one. Beside it, what a walk over all
/// characters takes: the share of a key is told.
void BM_KeyAMillionLinesBelowItsBrace(benchmark::State& state) {
  constexpr int32_t kLines = 1'000'000;
  std::string text = "action main() {\n";
  for (int32_t i = 1; i < kLines; ++i)
    text += i % 3 == 0 ? "\tspeed[i] = f(x); /* (x) */\n" : "\tif (x) { y(); }\n";
  CCrystalTextBuffer buffer;
  buffer.NewBuffer(line_end::kCrLf, text);
  const std::shared_ptr<ParsedText> parsed = ParsedText::Of(buffer);
  const auto start = std::chrono::steady_clock::now();
  const auto match = parsed->Braces().Find(buffer.EndOfText(), kScriptCommentMarkers, INT64_MAX).match;
  const std::chrono::duration<double> walk = std::chrono::steady_clock::now() - start;
  if (!match || match->line != 0) state.SkipWithError("the brace was not found");
  const TextPosition at = buffer.EndOfText();
  TextPosition end;
  for (auto _ : state) {
    buffer.InsertTextAt(nullptr, at, "x", end);
    benchmark::DoNotOptimize(parsed->Braces().Find(end, kScriptCommentMarkers, 64'000));
    buffer.DeleteRange(nullptr, {at, end});
  }
  state.counters["keys_a_walk"] =
      benchmark::Counter(walk.count(), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_KeyAMillionLinesBelowItsBrace)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quill
