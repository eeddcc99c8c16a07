#include "ui/qt/qt_desktop.h"

#include <QApplication>
#include <QClipboard>
#include <QMessageBox>
#include <QProcess>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QStyle>
#include <QStyleFactory>
#include <exception>

#include "ui/qt/qt_services.h"
#include "ui/qt/qt_text.h"
#include "ui/window.h"

namespace ormel::ui {
namespace {

// Nothing may be thrown through the toolkit's event loop. Handlers are caught by their windows
// already; this is the last net.
class SafeApplication final : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
      QMessageBox::critical(activeWindow(), kProgramTitle, error.what());
      return true;
    }
  }
};

}  // namespace

struct QtProgram::Application {
  Application(int& argc, char** argv) : qt(argc, argv) {}
  SafeApplication qt;
  std::unique_ptr<QSocketNotifier> input;
};

QtProgram::QtProgram(int& argc, char** argv)
    : application_(std::make_unique<Application>(argc, argv)) {
  QApplication::setApplicationName(QStringLiteral("ormel"));
  QApplication::setQuitOnLastWindowClosed(false);  // QtDesktop knows better: see Idle()
  if (QApplication::style()->name() == QLatin1String("windows")) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  }
}

QtProgram::~QtProgram() = default;

void QtProgram::Run(const Desktop& desktop) {
  if (!desktop.OpenWindows().empty()) QApplication::exec();
}

void QtProgram::Quit() { QApplication::quit(); }

void QtProgram::WatchInput(int descriptor, Handler ready) {
  application_->input = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
  QObject::connect(application_->input.get(), &QSocketNotifier::activated,
                   [run = std::move(ready)] { run(); });
}

void QtProgram::WatchNothing() { application_->input.reset(); }

QtDesktop::QtDesktop(Screen* screen) : Desktop(screen), services_(std::make_unique<Services>()) {}

QtDesktop::~QtDesktop() { DestroyWindows(); }

TimerId QtDesktop::StartTimer(std::chrono::milliseconds interval, Handler tick) {
  const TimerId id = ++services_->lastTimer;
  auto ticker = std::make_shared<Services::Ticker>();
  ticker->tick = std::move(tick);
  ticker->timer = std::make_unique<QTimer>();
  ticker->timer->setTimerType(Qt::PreciseTimer);
  QObject::connect(ticker->timer.get(), &QTimer::timeout, &services_->life,
                   [this, id] { Tick(id); });
  ticker->timer->start(interval);
  services_->tickers.emplace(id, std::move(ticker));
  return id;
}

void QtDesktop::StopTimer(TimerId timer) {
  const auto found = services_->tickers.find(timer);
  if (found == services_->tickers.end()) return;
  found->second->timer->stop();
  found->second->timer.release()->deleteLater();  // it may be the one that ticks
  services_->tickers.erase(found);
}

void QtDesktop::Tick(TimerId timer) {
  const auto found = services_->tickers.find(timer);
  if (found == services_->tickers.end()) return;
  const std::shared_ptr<Services::Ticker> ticker = found->second;  // it may stop its own timer
  Dispatch(ticker->tick);
}

void QtDesktop::SetClipboardText(const std::string& text) {
  QApplication::clipboard()->setText(ToQt(text));
}

std::string QtDesktop::ClipboardText() { return FromQt(QApplication::clipboard()->text()); }

void QtDesktop::SetClipboardPicture(const Canvas& picture) {
  QApplication::clipboard()->setImage(ViewOf(picture).copy());
}

bool QtDesktop::ShowSystemInformation() {
  struct Tool {
    const char* program;
    const char* page;
  };
  static constexpr Tool kTools[] = {{"kinfocenter", ""},
                                    {"gnome-control-center", "info-overview"},
                                    {"hardinfo2", ""},
                                    {"hardinfo", ""},
                                    {"xfce4-about", ""}};
  for (const Tool& tool : kTools) {
    const QString program = QStandardPaths::findExecutable(QString::fromLatin1(tool.program));
    if (program.isEmpty()) continue;
    const QString page = QString::fromLatin1(tool.page);
    return QProcess::startDetached(program, page.isEmpty() ? QStringList() : QStringList(page));
  }
  return false;
}

void QtDesktop::RunModal(Window& window) {
  while (IsOpen(window)) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void QtDesktop::Idle() {
  QTimer::singleShot(0, &services_->life, [this] { Sweep(); });
  if (OpenWindows().empty()) QApplication::quit();
}

}  // namespace ormel::ui
