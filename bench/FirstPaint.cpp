// Preloaded into a Qt program, prints the milliseconds from its start to its first painted window and
// ends it there. The program itself needs no switch for that. Whoever starts it puts the steady
// clock's nanoseconds into STARTED_AT_NS.
#include <unistd.h>

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <cstdio>

namespace {

class FirstPaintWatch : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && IsInMainWindow(watched) && !m_painted) {
      m_painted = true;
      // The event loop comes round when the whole window is painted and on its way to the screen.
      QTimer::singleShot(0, this, [] { ReportAndEnd(); });
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  static bool IsInMainWindow(QObject* object) {
    const auto* widget = qobject_cast<QWidget*>(object);
    return widget != nullptr && widget->window()->isVisible() && widget->window()->windowType() == Qt::Window;
  }
  static void ReportAndEnd() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const qint64 started = qEnvironmentVariable("STARTED_AT_NS").toLongLong();
    const qint64 nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count() - started;
    std::printf("start\t%.4f\tms\n", static_cast<double>(nanoseconds) / 1e6);
    std::fflush(stdout);
    _exit(0);
  }

  bool m_painted = false;
};

void Install() {
  static auto* watch = new FirstPaintWatch;
  QCoreApplication::instance()->installEventFilter(watch);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(Install)
