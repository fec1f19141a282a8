#include "bench/MeasuredEditor.h"

#include <QApplication>
#include <QKeyEvent>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace quill::bench {
namespace {

constexpr QSize kWindowSize(1000, 700);
constexpr double kPaintTimeoutMs = 60'000;
constexpr int kFontPoints = 10;

}  // namespace

class Editor::PaintCounter : public QObject {
 public:
  int Count() const { return m_count; }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++m_count;
    return QObject::eventFilter(watched, event);
  }

 private:
  int m_count = 0;
};

Editor::Editor(std::unique_ptr<EditorDriver> driver)
    : m_driver(std::move(driver)), m_paints(std::make_shared<PaintCounter>()) {
  QAbstractScrollArea& view = m_driver->View();
  view.viewport()->installEventFilter(m_paints.get());
  view.resize(kWindowSize);
  view.show();
  view.activateWindow();
  view.setFocus();
  PaintExpected("showing the window");
}

void Editor::Load(const std::string& path) {
  if (!m_driver->Load(path)) Fail("cannot load " + path);
}

void Editor::PaintPending() {
  // An update is a posted event: when a round delivers no paint, none is left.
  int before = -1;
  while (m_paints->Count() != before) {
    before = m_paints->Count();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }
}

void Editor::PaintExpected(const char* after) {
  const int before = m_paints->Count();
  const Stopwatch watch;
  while (m_paints->Count() == before) {
    if (watch.Milliseconds() > kPaintTimeoutMs) Fail(std::string("nothing was painted after ") + after);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }
}

void Editor::Press(int key, const QString& text) {
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&m_driver->View(), &event);
  }
}

void Editor::Press(char character) {
  // Qt's key codes are the upper-case characters.
  Press(QChar::fromLatin1(character).toUpper().unicode(), QString(QChar::fromLatin1(character)));
}

double Editor::PressAndPaint(int key, const QString& text) {
  const Stopwatch watch;
  Press(key, text);
  PaintExpected("a key");
  return watch.Milliseconds();
}

double Editor::PressAndPaint(char character) {
  return PressAndPaint(QChar::fromLatin1(character).toUpper().unicode(),
                       QString(QChar::fromLatin1(character)));
}

void Report(const std::string& name, double value, const char* unit) {
  std::printf("%s\t%.4f\t%s\n", name.c_str(), value, unit);
  std::fflush(stdout);
}

double Median(std::vector<double> samples) {
  std::sort(samples.begin(), samples.end());
  return samples[samples.size() / 2];
}

void ReportMedianAnd99th(const std::string& name, std::vector<double> samples) {
  std::sort(samples.begin(), samples.end());
  Report(name + "_median", samples[samples.size() / 2], "ms");
  Report(name + "_p99", samples[samples.size() * 99 / 100], "ms");
}

void Fail(const std::string& sentence) {
  std::fprintf(stderr, "%s\n", sentence.c_str());
  std::exit(1);
}

}  // namespace quill::bench

int main(int argc, char** argv) {
  using namespace quill::bench;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QApplication::setCursorFlashTime(0);
  QFont font(QStringLiteral("DejaVu Sans Mono"), kFontPoints);
  font.setStyleHint(QFont::Monospace);
  QApplication::setFont(font);
  if (argc == 3 && RunScenarioGroup(argv[1], argv[2])) return 0;
  std::fprintf(stderr, "usage: %s GROUP FOLDER\ngroups:", argv[0]);
  for (const std::string& group : ScenarioGroups()) std::fprintf(stderr, " %s", group.c_str());
  std::fprintf(stderr, "\n");
  return 2;
}
