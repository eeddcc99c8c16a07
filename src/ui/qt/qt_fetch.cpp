// Fetching a URL.
#include <QEventLoop>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include "ui/qt/qt_desktop.h"
#include "ui/qt/qt_services.h"
#include "ui/qt/qt_text.h"

namespace ormel::ui {
namespace {

constexpr int kBetweenReports = 30;      // milliseconds
constexpr int kGiveUpAfter = 30 * 1000;  // milliseconds without a byte

// False when `progress` stopped it. A person acts through `progress` alone, so that no command is
// started by a window that does not know of the one that is running.
bool Await(QNetworkReply& reply, ProgressSink& progress) {
  QTimer heartbeat;
  heartbeat.start(kBetweenReports);
  double percent = 0;
  QObject::connect(&reply, &QNetworkReply::downloadProgress, &heartbeat,
                   [&percent](qint64 received, qint64 total) {
                     if (total > 0) {
                       percent = 100.0 * static_cast<double>(received) / static_cast<double>(total);
                     }
                   });
  QEventLoop loop;
  while (!reply.isFinished()) {
    loop.processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
    if (!progress.Report(percent)) return false;
  }
  return true;
}

}  // namespace

Outcome<std::string> QtDesktop::Fetch(const std::string& url, ProgressSink& progress) {
  if (services_->network == nullptr) {
    services_->network = std::make_unique<QNetworkAccessManager>();
    services_->network->setTransferTimeout(kGiveUpAfter);
  }
  QNetworkRequest request(QUrl(ToQt(url)));
  request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("ormel"));
  const std::unique_ptr<QNetworkReply> reply(services_->network->get(request));
  if (!Await(*reply, progress)) {
    reply->abort();
    return Cancelled{};
  }
  if (reply->error() != QNetworkReply::NoError) {
    const bool isMissing = reply->error() == QNetworkReply::ContentNotFoundError;
    return Failure{isMissing ? FailureKind::kNotFound : FailureKind::kDisk,
                   url + ": " + FromQt(reply->errorString())};
  }
  return reply->readAll().toStdString();
}

}  // namespace ormel::ui
