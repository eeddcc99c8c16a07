// The services of the desktop: dialogs, timers, the clipboard, fetching, and the end of the
// program.
#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include "ui/qt/screen_fixture.h"
#include "ui/timer.h"

namespace ormel::ui {
namespace {

class DesktopTest : public ScreenTest {
 protected:
  // Lets time pass until `done`, two seconds at most.
  template <class Done>
  bool WaitUntil(Done done) {
    return QTest::qWaitFor(done, 2000);
  }
};

TEST_F(DesktopTest, MessageBoxesOfferTheirButtons) {
  struct Case {
    Buttons buttons;
    QMessageBox::StandardButton pressed;
    Answer answer;
    int count;
  };
  const Case cases[] = {{Buttons::kOk, QMessageBox::Ok, Answer::kOk, 1},
                        {Buttons::kOkCancel, QMessageBox::Cancel, Answer::kCancel, 2},
                        {Buttons::kYesNo, QMessageBox::No, Answer::kNo, 2},
                        {Buttons::kYesNoCancel, QMessageBox::Yes, Answer::kYes, 3}};
  for (const Case& one : cases) {
    InDialog<QMessageBox>([&](QMessageBox& box) {
      EXPECT_EQ(box.text(), "<b>1 & 2</b>");
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
      EXPECT_EQ(box.buttons().size(), one.count);
      box.button(one.pressed)->click();
    });
    EXPECT_EQ(desktop.Ask("<b>1 & 2</b>", "Title", one.buttons), one.answer);
  }
  InDialog<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_EQ(desktop.Ask("Close?", "Title", Buttons::kYesNoCancel), Answer::kCancel);
}

TEST_F(DesktopTest, PromptsReturnTheTextOrNothing) {
  InDialog<QInputDialog>([](QInputDialog& box) { box.accept(); });
  EXPECT_EQ(desktop.Prompt("Zone?", "Title", "33"), "33");
  InDialog<QInputDialog>([](QInputDialog& box) { box.reject(); });
  EXPECT_EQ(desktop.Prompt("Zone?", "Title", "33"), std::nullopt);
}

TEST_F(DesktopTest, FileDialogsChooseFiltersEndingsAndFolders) {
  const QTemporaryDir folder;
  const std::string root = folder.path().toStdString();
  QFile(folder.filePath("old.asc")).open(QIODevice::WriteOnly);
  FileDialog dialog{"Save Map", "ASCII Raster (.asc)|*.asc;*.grd|Bitmap (.bmp)|*.bmp", "asc", root,
                    ""};
  struct Case {
    const char* name;
    const char* proposal;
    const char* typed;
    std::string path;
    int filter;
  };
  const Case cases[] = {
      {"the proposal", "map.asc", "", root + "/map.asc", 1},
      {"without an ending", "", "map", root + "/map.asc", 1},
      {"a pattern picks the filter, and its ending", "*.bmp", "map", root + "/map.bmp", 2},
      {"with an ending of its own", "", "map.txt", root + "/map.txt", 1},
      {"a file that exists is not asked about", "", "old", root + "/old.asc", 1},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    dialog.name = one.proposal;
    InDialog<QFileDialog>([&](QFileDialog& box) {
      if (*one.typed != '\0') box.findChild<QLineEdit*>()->setText(one.typed);
      QMetaObject::invokeMethod(&box, "accept");
    });
    const auto choice = desktop.SaveFile(dialog);
    ASSERT_TRUE(choice.has_value());
    EXPECT_EQ(choice->Path(), one.path);
    EXPECT_EQ(choice->filterIndex, one.filter);
  }
  dialog.folder.clear();  // the folder of the last dialog of this title
  InDialog<QFileDialog>([&](QFileDialog& box) {
    EXPECT_EQ(box.directory().path(), folder.path());
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
    EXPECT_TRUE(WaitUntil([&] { return ticks >= 2; }));
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
  EXPECT_TRUE(WaitUntil([&] { return !told.empty(); }));
  EXPECT_EQ(told, "the map is gone");
}

TEST_F(DesktopTest, TheClipboardTakesTextAndPictures) {
  desktop.SetClipboardText("größe");
  EXPECT_EQ(desktop.ClipboardText(), "größe");
  desktop.SetClipboardPicture(DemoMap(7, 5));
  EXPECT_EQ(QApplication::clipboard()->image().size(), QSize(7, 5));
}

class Watcher final : public ProgressSink {
 public:
  explicit Watcher(int reports) : reports_(reports) {}
  bool Report(double /*percent*/) override { return --reports_ > 0; }

 private:
  int reports_;
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
  const Outcome<std::string> tile = desktop.Fetch(site + "/tile", nobody);
  ASSERT_TRUE(tile.Ok()) << tile.Text();
  EXPECT_EQ(tile.Value(), bytes);

  answer = "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n";
  const Outcome<std::string> missing = desktop.Fetch(site + "/none", nobody);
  ASSERT_TRUE(missing.Failed());
  EXPECT_EQ(missing.Why().kind, FailureKind::kNotFound);

  answer.clear();  // a server that never answers
  Watcher impatient(3);
  EXPECT_TRUE(desktop.Fetch(site + "/slow", impatient).WasCancelled());
}

TEST_F(DesktopTest, AnErrorInAHandlerIsAMessage) {
  auto& window = Shown<DemoWindow>();
  window.cmdDem.onClick = [] { throw std::runtime_error("Subscript out of range"); };
  std::string told;
  InDialog<QMessageBox>([&](QMessageBox& box) {
    told = box.text().toStdString();
    box.accept();
  });
  QTest::mouseClick(&On(window.cmdDem), Qt::LeftButton);
  EXPECT_EQ(told, "Subscript out of range");
}

TEST_F(DesktopTest, TheProgramEndsWithItsLastWindow) {
  auto& first = Shown<DemoWindow>();
  auto& second = desktop.Show(std::make_unique<DemoWindow>(), &first);
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
