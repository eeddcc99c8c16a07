// What QtDesktop keeps between calls.
#pragma once

#include <QNetworkAccessManager>
#include <QString>
#include <QTimer>
#include <map>
#include <memory>
#include <string>

#include "ui/qt/qt_desktop.h"

namespace ormel::ui {

struct QtDesktop::Services {
  struct Ticker {
    std::unique_ptr<QTimer> timer;
    Handler tick;
  };

  QObject life;  // what is posted for later dies with the desktop
  std::map<TimerId, std::shared_ptr<Ticker>> tickers;
  TimerId lastTimer = 0;
  std::unique_ptr<QNetworkAccessManager> network;
};

}  // namespace ormel::ui
