// Parts of windows, each in a window of its own, used as a person does.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "parts/chosen_files.h"
#include "parts/folder_choice.h"
#include "support/temporary_folder.h"
#include "ui/headless/headless_desktop.h"

namespace ormel {
namespace {

using Texts = std::vector<std::string>;
using testing::TemporaryFolder;

ChosenFilesSpec Spec() {
  ChosenFilesSpec spec;
  spec.dialog = [] { return ui::FileDialog{"Add Maps", "", "", "", "", true}; };
  return spec;
}

class PartsWindow final : public ui::Window {
 public:
  explicit PartsWindow(ui::Desktop& desktop)
      : Window("frmParts", "Parts"),
        files(*this, desktop, Spec()),
        folder(*this, desktop, NewFolders::kOffered) {
    SetLayout(ui::Row{ui::Column{files.list, files.cmdAdd, files.cmdRemove}, folder.Area(), File});
  }

  ChosenFiles files;
  FolderChoice folder;
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
  PartsWindow& window_ = desktop_.Show(std::make_unique<PartsWindow>(desktop_));
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

}  // namespace
}  // namespace ormel
