#pragma once
#include <chrono>
#include <string>
#include <vector>

#include "bench/EditorDriver.h"

namespace quill::bench {

class Stopwatch {
 public:
  double Milliseconds() const {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - m_start).count();
  }

 private:
  const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

/// A driver in its window, and the events that make it work and paint. A wrong state (a text that did
/// not load, an edit that changed nothing, a paint that never comes) ends the program with a sentence:
/// a figure for work that was not done is worse than none.
class Editor {
 public:
  /// Shows the component, empty, and waits for its first paint.
  explicit Editor(std::unique_ptr<EditorDriver> driver);

  EditorDriver& Driver() { return *m_driver; }
  /// `Load` or the end of the program.
  void Load(const std::string& path);
  /// Runs the event loop until no paint is asked for any more.
  void PaintPending();
  /// The same, but at least one paint must come.
  void PaintExpected(const char* after);
  /// Presses a key with the text that it types.
  void Press(int key, const QString& text = {});
  void Press(char character);
  /// Press and paint; milliseconds.
  double PressAndPaint(int key, const QString& text = {});
  double PressAndPaint(char character);

 private:
  class PaintCounter;

  std::unique_ptr<EditorDriver> m_driver;
  std::shared_ptr<PaintCounter> m_paints;
};

/// Prints "name<TAB>value<TAB>unit".
void Report(const std::string& name, double value, const char* unit);
/// Reports name_median and name_p99 of samples in milliseconds.
void ReportMedianAnd99th(const std::string& name, std::vector<double> samples);
double Median(std::vector<double> samples);
[[noreturn]] void Fail(const std::string& sentence);

/// The scenario groups by name. Each runs in a process of its own on the scripts in `folder`.
std::vector<std::string> ScenarioGroups();
/// False when there is no such group.
bool RunScenarioGroup(const std::string& group, const std::string& folder);

}  // namespace quill::bench
