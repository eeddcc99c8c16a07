// Windows on an offscreen screen, and the widgets behind their controls.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/ui_test_window.h"
#include "ui/qt/qt_desktop.h"
#include "ui/qt/qt_screen.h"

namespace ormel::ui {

using Log = std::vector<std::string>;

using testing::FrmTest;

class ScreenTest : public ::testing::Test {
 protected:
  template <class W>
  W& Shown() {
    W& shown = desktop.Show(std::make_unique<W>());
    Settle();
    return shown;
  }

  // Everything that waits to be done is done.
  void Settle() {
    for (int i = 0; i < 3; ++i) screen.ProcessEvents();
  }

  // The widget or action that shows a control of the newest window that has one.
  template <class T = QWidget>
  T& On(const Control& control) {
    T* found = nullptr;
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (T* child = top->findChild<T*>(QString::fromStdString(control.Name()))) {
        if (top->windowTitle().toStdString() == control.Owner().Caption()) found = child;
      }
    }
    if (found == nullptr) throw std::logic_error("nothing shows " + control.Name());
    return *found;
  }
  // The window itself; null: it is not to be seen.
  QWidget* TopLevel(const Window& window) {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->isVisible() && top->windowTitle().toStdString() == window.Caption()) return top;
    }
    return nullptr;
  }

  // A person does something in a dialog as soon as it is open.
  template <class Dialog, class Act>
  void InDialog(Act act) {
    QTimer::singleShot(0, qApp, [this, act] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return InDialog<Dialog>(act);
      act(*dialog);
    });
  }

  QtScreen screen;
  QtDesktop desktop{&screen};
};

}  // namespace ormel::ui
