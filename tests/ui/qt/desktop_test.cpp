// The services of the desktop: dialogs, timers, the clipboard, fetching, and the end of the
// program.
#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include "movies/avi_file.h"
#include "ui/qt/screen_fixture.h"
#include "ui/timer.h"

namespace ormel::ui {
namespace {

using DesktopTest = ScreenTest;

TEST_F(DesktopTest, MessageBoxesOfferTheirButtonsAndPromptsReturnTheTextOrNothing) {
  const std::tuple<Buttons, QMessageBox::StandardButton, Answer, int> cases[] = {
      {Buttons::kOk, QMessageBox::Ok, Answer::kOk, 1},
      {Buttons::kOkCancel, QMessageBox::Cancel, Answer::kCancel, 2},
      {Buttons::kYesNo, QMessageBox::No, Answer::kNo, 2},
      {Buttons::kYesNoCancel, QMessageBox::Yes, Answer::kYes, 3}};
  for (const auto& [buttons, pressed, answer, count] : cases) {
    InDialog<QMessageBox>([&, button = pressed, offered = count](QMessageBox& box) {
      EXPECT_EQ(box.text(), "<b>1 & 2</b>");
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
      EXPECT_EQ(box.buttons().size(), offered);
      box.button(button)->click();
    });
    EXPECT_EQ(desktop.Ask("<b>1 & 2</b>", "Title", buttons), answer);
  }
  InDialog<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_EQ(desktop.Ask("Close?", "Title", Buttons::kYesNoCancel), Answer::kCancel);
  const auto press = [](Qt::Key key) {
    return [key](QMessageBox& box) { QTest::keyClick(&box, key); };
  };
  for (const Buttons buttons : {Buttons::kYesNo, Buttons::kYesNoCancel}) {
    InDialog<QMessageBox>(press(Qt::Key_Return));
    EXPECT_EQ(desktop.Ask("Save?", "Title", buttons), Answer::kYes);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
      InDialog<QMessageBox>(press(key));
      EXPECT_NE(desktop.AskBeforeLoss("Overwrite?", "Title", buttons), Answer::kYes);
    }
  }
  InDialog<QInputDialog>([](QInputDialog& box) { box.accept(); });
  EXPECT_EQ(desktop.Prompt("Zone?", "Title", "33"), "33");
  InDialog<QInputDialog>([](QInputDialog& box) { box.reject(); });
  EXPECT_EQ(desktop.Prompt("Zone?", "Title", "33"), std::nullopt);
}

TEST_F(DesktopTest, EntriesArePickedFromAList) {
  const std::vector<std::string> entries{"full", "small", "tiny"};
  InDialog<QInputDialog>([](QInputDialog& box) { box.accept(); });
  EXPECT_EQ(desktop.PickEntry("How?", "Title", entries), 0U);
  InDialog<QInputDialog>([](QInputDialog& box) {
    box.setTextValue("small");
    box.accept();
  });
  EXPECT_EQ(desktop.PickEntry("How?", "Title", entries), 1U);
  InDialog<QInputDialog>([](QInputDialog& box) { box.reject(); });
  EXPECT_EQ(desktop.PickEntry("How?", "Title", entries), std::nullopt);
}

// The frames of a movie come back from their JPEG pictures nearly as they were.
TEST_F(DesktopTest, MoviesAreCompressedByTheDesktop) {
  const QTemporaryDir folder;
  const std::string path = folder.filePath("m.avi").toStdString();
  Canvas frame(64, 48, Rgb(200, 40, 90));
  MovieJob job{path, {3, [&](int) -> Outcome<cDIB> { return cDIB::OfCanvas(frame); }}, 10};
  job.encoder = [this](const cDIB& dib) -> Outcome<std::string> {
    return desktop.Jpeg(dib.Picture()).value_or("");
  };
  NoProgress quiet;
  ASSERT_TRUE(WriteAviFile(job, quiet).Ok());
  QFile movie(folder.filePath("m.avi"));
  ASSERT_TRUE(movie.open(QIODevice::ReadOnly));
  const QByteArray bytes = movie.readAll();
  const qsizetype chunk = bytes.indexOf("00dc");
  ASSERT_GT(chunk, 0);
  const QImage read = QImage::fromData(bytes.mid(chunk + 8), "JPG");
  ASSERT_EQ(read.size(), QSize(64, 48));
  EXPECT_NEAR(read.pixelColor(30, 30).red(), 200, 4);
  EXPECT_NEAR(read.pixelColor(30, 30).blue(), 90, 4);
}

TEST_F(DesktopTest, FileDialogsChooseFiltersEndingsAndFolders) {
  const QTemporaryDir folder;
  const std::string root = folder.path().toStdString();
  QFile(folder.filePath("old.asc")).open(QIODevice::WriteOnly);
  FileDialog dialog{"Save Map", "ASCII Raster (.asc)|*.asc;*.grd|Bitmap (.bmp)|*.bmp", "asc", root,
                    ""};
  const std::tuple<const char*, std::string, QString, std::string, int> cases[] = {
      {"the proposal", "map.asc", "", "/map.asc", 1},
      {"without an ending", "", "map", "/map.asc", 1},
      {"a pattern picks the filter, and its ending", "*.bmp", "map", "/map.bmp", 2},
      {"with an ending of its own", "", "map.txt", "/map.txt", 1},
      {"a file that exists is not asked about", "", "old", "/old.asc", 1}};
  for (const auto& [why, proposal, typed, path, filter] : cases) {
    SCOPED_TRACE(why);
    dialog.name = proposal;
    InDialog<QFileDialog>([name = typed](QFileDialog& box) {
      if (!name.isEmpty()) box.findChild<QLineEdit*>()->setText(name);
      QMetaObject::invokeMethod(&box, "accept");
    });
    const auto choice = desktop.SaveFile(dialog);
    ASSERT_TRUE(choice.has_value());
    EXPECT_EQ(choice->Path(), root + path);
    EXPECT_EQ(choice->filterIndex, filter);
  }
  dialog.folder.clear();
  InDialog<QFileDialog>([&](QFileDialog& box) {
    EXPECT_EQ(box.directory().path(), QDir::currentPath());
    box.reject();
  });
  EXPECT_FALSE(desktop.OpenFile(dialog).has_value());
}

TEST_F(DesktopTest, TimersTickStopAndNeverTickInsideThemselves) {
  int ticks = 0;
  int depth = 0;
  int deepest = 0;
  {
    const Timer timer(desktop, std::chrono::milliseconds(5), [&] {
      deepest = std::max(deepest, ++depth);
      QTest::qWait(20);  // as a message box would
      --depth;
      ++ticks;
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks >= 2; }, 2000));
  }
  const int stopped = ticks;
  QTest::qWait(30);
  EXPECT_EQ(ticks, stopped);
  EXPECT_EQ(deepest, 1);
}

TEST_F(DesktopTest, ATimerMayStopItselfAndItsErrorIsAMessage) {
  TimerId id = 0;
  std::string told;
  id = desktop.StartTimer(std::chrono::milliseconds(1), [&] {
    desktop.StopTimer(id);
    throw std::runtime_error("the map is gone");
  });
  InDialog<QMessageBox>([&](QMessageBox& box) {
    told = box.text().toStdString();
    box.accept();
  });
  EXPECT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }, 2000));
  EXPECT_EQ(told, "the map is gone");
}

TEST_F(DesktopTest, TheClipboardTakesTextAndPictures) {
  desktop.SetClipboardText("größe");
  EXPECT_EQ(desktop.ClipboardText(), "größe");
  desktop.SetClipboardPicture(Canvas(7, 5));
  EXPECT_EQ(QApplication::clipboard()->image().size(), QSize(7, 5));
}

// Says stop at the third report.
class Watcher final : public ProgressSink {
 public:
  bool Report(double /*percent*/) override { return ++reports_ < 3; }

 private:
  int reports_ = 0;
};

TEST_F(DesktopTest, FetchBringsBytesTellsWhyNotAndCanBeStopped) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  const std::string site = "http://127.0.0.1:" + std::to_string(server.serverPort());
  QByteArray answer;
  QObject::connect(&server, &QTcpServer::newConnection, [&] {
    QTcpSocket* socket = server.nextPendingConnection();
    QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket, &answer] {
      socket->readAll();
      socket->write(answer);
    });
  });
  NoProgress nobody;
  const std::string bytes("tile\0\xff", 6);
  answer = "HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\n" + QByteArray::fromStdString(bytes);
  EXPECT_EQ(desktop.Fetch(site + "/tile", nobody).Value(), bytes);
  answer = "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n";
  EXPECT_EQ(desktop.Fetch(site + "/none", nobody).Why().kind, FailureKind::kNotFound);
  answer.clear();  // a server that never answers
  Watcher impatient;
  EXPECT_TRUE(desktop.Fetch(site + "/slow", impatient).WasCancelled());
}

TEST_F(DesktopTest, TheProgramEndsWithItsLastWindow) {
  auto& first = Shown<FrmTest>();
  auto& second = desktop.Show(std::make_unique<FrmTest>(), &first);
  int steps = 0;
  const Timer timer(desktop, std::chrono::milliseconds(1), [&] {
    ++steps;
    desktop.Close(steps == 1 ? first : second);
  });
  QApplication::exec();
  EXPECT_EQ(steps, 2);
}

}  // namespace
}  // namespace ormel::ui
