// Runs the window tests without a display and away from the user's own settings.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include "base/UiThread.h"

int main(int argc, char** argv) {
  quill::ClaimUiThread();
  const QTemporaryDir home;
  for (const char* name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
    qputenv(name, home.path().toLocal8Bit());
  }
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
