// The test program of the desktop back end. It needs no screen.
#include <gtest/gtest.h>

#include <QByteArray>

#include "ui/qt/qt_desktop.h"

// What the toolkit and the font library keep until the process ends is not ours.
// NOLINTBEGIN: the name is the sanitizer's
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
// NOLINTEND

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  const ormel::ui::QtProgram program(argc, argv);
  return RUN_ALL_TESTS();
}
