// The test program of the desktop back end. It needs no screen.
#include <gtest/gtest.h>

#include <QByteArray>

#include "ui/qt/qt_desktop.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  const ormel::ui::QtProgram program(argc, argv);
  return RUN_ALL_TESTS();
}
