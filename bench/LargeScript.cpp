// Preloaded into the program when it opens a large script: what its window shows first, when the outline is
// there, what that takes of the window's thread, and the same for the outline after a line was typed. Prints
// lines "name value unit" with tabs between and ends the program. It sees widgets only, as a user does.
#include <sys/timerfd.h>
#include <time.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QSocketNotifier>
#include <QTimer>
#include <QTreeWidget>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <utility>

namespace {

constexpr int kBeatsPerLook = 20;
constexpr long kBeat = 1000000;    ///< nanoseconds
constexpr int kRestOfWindow = 10;  ///< milliseconds
constexpr int kQuiet = 8000;       ///< milliseconds without another outline: it is whole

double MegabytesInUse() {
  size_t total = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

/// What the thread has worked: what others did meanwhile on a busy machine is not in it.
double ThreadMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

void Report(const char* name, double value, const char* unit) {
  std::printf("%s\t%.3f\t%s\n", name, value, unit);
  std::fflush(stdout);
}

class LargeScriptWatch : public QObject {
 public:
  LargeScriptWatch() {
    // A clock that is heard as keys and the mouse are.
    m_clock = timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK);
    const itimerspec each{{0, kBeat}, {0, kBeat}};
    if (m_clock < 0 || timerfd_settime(m_clock, 0, &each, nullptr) != 0) _exit(1);
    m_beat = new QSocketNotifier(m_clock, QSocketNotifier::Read, this);
    m_beat->setEnabled(false);
    connect(m_beat, &QSocketNotifier::activated, this, &LargeScriptWatch::OnBeat);
    QCoreApplication::instance()->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && m_view == nullptr && watched->parent() != nullptr &&
        watched->parent()->inherits("quill::CQuillView")) {
      m_view = qobject_cast<QWidget*>(watched->parent());
      QTimer::singleShot(0, this, &LargeScriptWatch::OnFirstPaint);
    }
    if (event->type() == QEvent::Timer && watched == m_view) m_viewWorked = true;
    return QObject::eventFilter(watched, event);
  }

 private:
  void OnFirstPaint() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const qint64 started = qEnvironmentVariable("STARTED_AT_NS").toLongLong();
    const qint64 nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count() - started;
    Report("large_first_paint", static_cast<double>(nanoseconds) / 1e6, "ms");
    Report("large_first_memory", MegabytesInUse(), "MB");
    for (QWidget* widget : QApplication::allWidgets()) {
      if (widget->inherits("quill::CCodeJumperTree")) m_tree = qobject_cast<QTreeWidget*>(widget);
    }
    m_state = Outline();
    // The rest of the window is painted first.
    QTimer::singleShot(kRestOfWindow, this, &LargeScriptWatch::Measure);
  }

  void Measure() {
    m_longest = 0;
    m_worked = ThreadMilliseconds();
    m_sinceStart.start();
    m_sinceChange.start();
    m_whole = 0;
    m_beat->setEnabled(true);
  }

  /// Between two beats the event loop came round once.
  void OnBeat() {
    const double worked = ThreadMilliseconds();
    uint64_t beats = 0;
    if (read(m_clock, &beats, sizeof beats) < 0) return;
    // The view measures its lines for some time, in slices of its own.
    if (!std::exchange(m_viewWorked, false)) m_longest = std::max(m_longest, worked - m_worked);
    // Looking at the tree takes its time.
    const QString state = ++m_beats % kBeatsPerLook == 0 ? Outline() : m_state;
    if (state != m_state) {
      m_state = state;
      m_whole = static_cast<double>(m_sinceStart.elapsed());
      m_sinceChange.start();
    } else if (m_sinceChange.elapsed() > kQuiet) {
      m_beat->setEnabled(false);
      return OnWhole();
    }
    m_worked = ThreadMilliseconds();
  }

  void OnWhole() {
    const char* const names[][3] = {{"large_outline", "large_outline_held", "large_outline_memory"},
                                    {"large_again", "large_again_held", "large_again_memory"}};
    Report(names[m_round][0], m_whole, "ms");
    Report(names[m_round][1], m_longest, "ms");
    Report(names[m_round][2], MegabytesInUse(), "MB");
    if (++m_round == 2) _exit(0);
    for (const char c : {'v', 'a', 'r', ' ', 'a', '_', '_', 'n', 'e', 'w', ';', ' '}) {
      QKeyEvent key(QEvent::KeyPress, c == ' ' ? Qt::Key_Space : 0, Qt::NoModifier, QString(QChar(c)));
      QApplication::sendEvent(m_view, &key);
    }
    // What the keys took is not the outline's.
    QTimer::singleShot(100, this, [this] { Measure(); });
  }

  /// Each kind's number of names: the rows, and the number in the row that tells of more.
  QString Outline() const {
    QString state;
    for (int i = 0; m_tree != nullptr && i < m_tree->topLevelItemCount(); ++i) {
      const QTreeWidgetItem* kind = m_tree->topLevelItem(i);
      const int rows = kind->childCount();
      state += QString::number(rows) + (rows > 0 ? kind->child(rows - 1)->text(0) : QString()) + ' ';
    }
    return state;
  }

  QWidget* m_view = nullptr;
  QTreeWidget* m_tree = nullptr;
  int m_clock = -1;
  QSocketNotifier* m_beat = nullptr;
  bool m_viewWorked = false;
  QElapsedTimer m_sinceStart;
  QElapsedTimer m_sinceChange;
  QString m_state;
  double m_worked = 0;
  double m_longest = 0;
  double m_whole = 0;
  int m_round = 0;
  int m_beats = 0;
};

void Install() {
  new LargeScriptWatch;
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(Install)
