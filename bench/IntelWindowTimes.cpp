// What a rebuild of the Code Jumper costs, the scan alone beside the cheapest thing that looks at every
// byte, and the completion list from the outline to the paint. Prints lines "name value unit" with tabs
// between, medians.
#include <QApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

#include "bench/GeneratedScript.h"
#include "intel/outline/OutlineScanner.h"
#include "intel/ui/CodeCompletion.h"
#include "intel/ui/CodeJumperPane.h"
#include "intel/ui/CodeJumperTree.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/writing/CodeTemplates.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

constexpr size_t kMegabyte = size_t{1} << 20;
constexpr int kRuns = 21;

double MedianMilliseconds(const std::function<void()>& work) {
  std::vector<double> times;
  work();
  for (int i = 0; i < kRuns; ++i) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    times.push_back(took.count());
  }
  std::nth_element(times.begin(), times.begin() + kRuns / 2, times.end());
  return times[kRuns / 2];
}

void Report(const char* name, double milliseconds) {
  std::printf("%s\t%.4f\tms\n", name, milliseconds);
}

void MakeBuffer(CCrystalTextBuffer& buffer, const std::string& text) {
  buffer.NewBuffer();
  TextPosition end;
  buffer.InsertTextAt(nullptr, {0, 0}, text, end);
}

/// From the changed text to the painted tree and lists, all kinds expanded.
double RebuildTime(const std::string& text) {
  CCrystalTextBuffer buffer;
  MakeBuffer(buffer, text);
  CodeJumperPane pane;
  pane.resize(220, 800);
  pane.show();
  const auto rebuild = [&buffer, &pane] {
    pane.Show(ReadScriptFacts(buffer, {}, {}, {}), RowOrder::kAlphabetical, true);
    QCoreApplication::processEvents();
  };
  rebuild();
  pane.Tree().ExpandRoots();
  return MedianMilliseconds(rebuild);
}

/// A script of 5,000 lines each of which defines something: the most that the tree can get from so many.
std::string OnlyDefinitions() {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += "var speed_of_something_" + std::to_string(i) + " = 0;\r\n";
  return text;
}

constexpr int kCompletionNames = 20000;

void ReportCompletion() {
  std::string script;
  for (int i = 0; i < kCompletionNames; ++i) script += "var ship_speed_" + std::to_string(i) + ";\n";
  const Outline outline = ScanOutlineText(script);
  const CommandDatabase commands;
  QWidget owner;
  owner.resize(800, 600);
  owner.show();
  CCodeCompletion window(&owner);
  const auto detail = [&](const CompletionList& list, size_t row) {
    return DetailOf(list, row, nullptr, commands, outline, CodeTemplates());
  };
  const auto open = [&](std::string_view begun) {
    const auto names = std::make_shared<const CompletionNames>(outline, commands, NameSet());
    window.Open(CompletionList(names, begun), detail, owner.font(), QRect(300, 300, 0, 20));
    QCoreApplication::processEvents();
  };
  Report("completion_open", MedianMilliseconds([&] {
           window.hide();
           open("s");
         }));
  const char* const begun[] = {"sh", "shi", "ship", "ship_", "ship_s"};
  Report("completion_narrow", MedianMilliseconds([&, i = size_t{0}]() mutable {
           window.Narrow(begun[i++ % std::size(begun)]);
           QCoreApplication::processEvents();
         }));
}

}  // namespace
}  // namespace quill

int main(int argc, char** argv) {
  using namespace quill;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  Report("jumper_rebuild", RebuildTime(bench::GenerateScript({.lines = 5000})));
  Report("jumper_rebuild_definitions", RebuildTime(OnlyDefinitions()));
  const std::string text = bench::GeneratedScript(10 * kMegabyte);
  CCrystalTextBuffer buffer;
  MakeBuffer(buffer, text);
  size_t found = 0;
  Report("outline_scan", MedianMilliseconds([&] { found += ScanOutline(buffer).Elements().size(); }));
  Report("count_lines", MedianMilliseconds([&] {
           found += static_cast<size_t>(std::count(text.begin(), text.end(), '\n'));
         }));
  ReportCompletion();
  return found == 0 ? 1 : 0;
}
