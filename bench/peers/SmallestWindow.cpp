// The smallest program with a window: what starting Qt alone costs.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
  const QApplication app(argc, argv);
  QWidget window;
  window.show();
  return QApplication::exec();
}
