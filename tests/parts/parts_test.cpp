// Parts of windows, each in a window of its own, used as a person does.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "mce/model_session.h"
#include "parts/chosen_files.h"
#include "parts/folder_choice.h"
#include "parts/map_panel.h"
#include "support/temporary_folder.h"
#include "ui/headless/headless_desktop.h"

namespace ormel {
namespace {

using Texts = std::vector<std::string>;
using testing::TemporaryFolder;

ChosenFilesSpec Spec() {
  ChosenFilesSpec spec;
  spec.dialog = [] {
    return ui::FileDialog{"Add Maps", "", "", "", "", ui::FileKind::kOther, true};
  };
  return spec;
}

class PartsWindow final : public ui::Window {
 public:
  explicit PartsWindow(AppContext& app)
      : Window("frmParts", "Parts"),
        files(*this, app.desktop, Spec()),
        folder(*this, app.desktop, NewFolders::kOffered),
        map(*this, app, "picPrev") {
    SetLayout(ui::Row{ui::Column{files.list, files.cmdAdd, files.cmdRemove}, folder.Area(), File,
                      map.Area()});
  }

  ChosenFiles files;
  FolderChoice folder;
  MapPanel map;
  ui::FileList File{*this, "File", ui::ListBox::Choice::kMultiple, "*.asc"};
};

class Parts : public ::testing::Test {
 protected:
  std::string LastMessage() {
    std::string last;
    while (auto message = desktop_.TakeMessage()) last = *message;
    return last;
  }

  TemporaryFolder disk_;
  std::ostringstream log_;
  ui::HeadlessDesktop desktop_{log_};
  Settings settings_;
  ModelSession session_;
  AppContext app_{desktop_, settings_, session_};
  PartsWindow& window_ = desktop_.Show(std::make_unique<PartsWindow>(app_));
  ChosenFiles& files_ = window_.files;
};

TEST_F(Parts, FilesAreAddedMovedAndRemoved) {
  desktop_.AnswerFiles(Texts{"a.asc", "b.asc"});
  ASSERT_TRUE(files_.cmdAdd.Click().Ok());
  desktop_.AnswerFiles(std::nullopt);
  ASSERT_TRUE(files_.cmdAdd.Click().Ok());
  for (const char* name : {"2.asc", "1.asc", "other.txt"}) disk_.Write(name, "");
  window_.File.SetFolder(disk_.Path().string());
  files_.AddAll(window_.File);
  const std::string one = (disk_ / "1.asc").string();
  const std::string two = (disk_ / "2.asc").string();
  EXPECT_EQ(files_.Paths(), (Texts{"a.asc", "b.asc", one, two}));

  files_.list.SetSelected({2, 3});
  files_.MoveSelected(1);
  EXPECT_EQ(files_.Paths(), (Texts{"a.asc", two, "b.asc", one}));
  files_.MoveSelected(1);  // the last has no further to go, and its neighbour stays behind it
  EXPECT_EQ(files_.Paths(), (Texts{"a.asc", two, "b.asc", one}));
  files_.MoveSelected(-5);
  EXPECT_EQ(files_.Paths(), (Texts{"b.asc", one, "a.asc", two}));
  EXPECT_EQ(files_.list.Selected(), (std::vector<int>{1, 2}));

  ASSERT_TRUE(files_.list.Key("Delete").Ok());
  EXPECT_EQ(files_.Paths(), (Texts{"a.asc", two}));
  for (const ui::Answer answer : {ui::Answer::kNo, ui::Answer::kYes}) {
    EXPECT_EQ(files_.list.Count(), 2);
    desktop_.AnswerBoxes(answer);
    ASSERT_TRUE(files_.cmdRemove.Click().Ok());
    EXPECT_EQ(LastMessage(), "No Files Selected. Remove all files?");
  }
  EXPECT_EQ(files_.list.Count(), 0);
}

TEST_F(Parts, FilesThatAreRefusedDoNotJoin) {
  files_.onAdd = [this](const std::string& path) {
    if (!files_.Holds(path)) files_.AddFile(path);
  };
  desktop_.AnswerFiles(Texts{"a.asc", "a.asc", "b.asc"});
  ASSERT_TRUE(files_.cmdAdd.Click().Ok());
  EXPECT_EQ(files_.Paths(), (Texts{"a.asc", "b.asc"}));
}

TEST_F(Parts, FoldersAreGoneToAndMade) {
  int changes = 0;
  window_.folder.onChange = [&] { ++changes; };
  window_.folder.SetFolder(disk_.Path().string());
  EXPECT_EQ(window_.folder.Drive.Drive(), "/");
  desktop_.AnswerPrompt("steps");
  ASSERT_TRUE(window_.folder.cmdCreateFold.Click().Ok());
  EXPECT_EQ(window_.folder.Dir.Inside(), Texts{"steps"});
  EXPECT_EQ(changes, 0);
  ASSERT_TRUE(window_.folder.Dir.GoTo((disk_ / "steps").string()).Ok());
  ASSERT_TRUE(window_.folder.Drive.GoTo("/").Ok());
  EXPECT_EQ(window_.folder.Folder(), "/");
  EXPECT_EQ(changes, 2);
}

TEST_F(Parts, FoldersThatCannotBeMadeAreTold) {
  window_.folder.SetFolder(disk_.Path().string());
  disk_.Write("map.asc", "");
  std::filesystem::create_directory(disk_ / "steps");
  const std::pair<std::optional<std::string>, std::string> cases[] = {
      {std::nullopt, ""},
      {"", ""},
      {"steps", (disk_ / "steps").string() + ": is there already"},
      {"no/such", (disk_ / "no/such").string() + ": cannot be made: No such file or directory"},
      {"map.asc", (disk_ / "map.asc").string() + ": cannot be made: "}};
  for (const auto& [name, message] : cases) {
    desktop_.AnswerPrompt(name);
    ASSERT_TRUE(window_.folder.cmdCreateFold.Click().Ok());
    EXPECT_EQ(LastMessage().substr(0, message.size()), message);
  }
}

// 2 x 2 cells in the grey palette, stretched from 10 to 30, and one NODATA cell.
TEST_F(Parts, MapsAreShownWithTheCellUnderThePointer) {
  settings_.constraintColor = Rgb(1, 2, 3);
  disk_.Write("map.asc", "c 2\r\nr 2\r\nx 100\r\ny 0\r\ns 10\r\nn -9\r\n 10 30\r\n 20 -9\r\n");
  MapPanel& map = window_.map;
  ASSERT_TRUE(map.Show((disk_ / "map.asc").string()));
  const Canvas& picture = map.picture.Image();
  const int side = picture.Width() / 2;
  EXPECT_EQ(picture.Pixel(0, 0), Rgb(0, 0, 0));
  EXPECT_EQ(picture.Pixel(side, 0), Rgb(255, 255, 255));
  EXPECT_EQ(picture.Pixel(0, side), Rgb(128, 128, 128));  // 127.5 to the even one
  EXPECT_EQ(picture.Pixel(side, side), Rgb(1, 2, 3));
  EXPECT_EQ(map.lblLow.Caption() + " " + map.lblHigh.Caption(), "10 30");
  int clicked = 0;
  map.onCell = [&](const PreviewedMap::Cell& cell) { clicked = 10 * cell.column + cell.row; };
  const auto at = [&](double x, double y) { return ui::MouseEvent{ui::MouseAction::kDown, x, y}; };
  ASSERT_TRUE(map.picture.Mouse(at(side + 1, 2.0 * side - 1)).Ok());
  EXPECT_EQ(map.lblCell.Caption(), "X: 115   Y: 5   Value: -9");
  ASSERT_TRUE(map.picture.Mouse(at(2.0 * side, 0)).Ok());  // beside the map
  EXPECT_EQ(clicked, 22);

  disk_.Write("map.asc", "c 2\r\nr 2\r\nx 0\r\ny 0\r\ns 1\r\n 1 2\r\n 3");
  EXPECT_TRUE(map.Show((disk_ / "map.asc").string()));
  EXPECT_EQ(map.lblCell.Caption(), (disk_ / "map.asc").string() + ": ends in row 2 of 2");
  EXPECT_EQ(map.picture.Image().Pixel(side, side), Rgb(1, 2, 3));
  EXPECT_FALSE(map.Show("no/such.asc"));
  EXPECT_EQ(LastMessage(), "no/such.asc: is not there");
  EXPECT_EQ(map.Path(), "");
}

// Of a map larger than its picture every third cell is drawn, and told.
TEST_F(Parts, LargeMapsTellTheCellsThatAreDrawn) {
  constexpr int kColumns = 2000;
  std::string text = "c 2000\r\nr 2\r\nx 0\r\ny 0\r\ns 1\r\n";
  for (int i = 0; i < 2 * kColumns; ++i) text += " " + std::to_string(i);
  disk_.Write("map.asc", text);
  ASSERT_TRUE(window_.map.Show((disk_ / "map.asc").string()));
  EXPECT_EQ(window_.map.picture.Image().Width(), kColumns / 3 + 1);
  ASSERT_TRUE(window_.map.picture.Mouse({ui::MouseAction::kMove, 100.5, 0}).Ok());
  // 100.5 * 2000 / 667 = 301.3: the cell of column 301, which holds 300
  EXPECT_EQ(window_.map.lblCell.Caption(), "X: 300.5   Y: 1.5   Value: 300");
}

}  // namespace
}  // namespace ormel
