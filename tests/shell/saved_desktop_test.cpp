#include "shell/saved_desktop.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::ReadText;
using testing::TemporaryFolder;
using ui::FileKind;
using ui::WindowSize;
using Paths = std::vector<std::string>;

class SavedDesktopTest : public ::testing::Test {
 protected:
  SavedDesktopTest() {
    settings_.programFolder = folder_.Path().string() + "/";
    settings_.workingDirectory = "/work/";
  }
  std::string Written() const { return ReadText(folder_ / "Desktop.inf"); }

  TemporaryFolder folder_;
  Settings settings_;
};

TEST_F(SavedDesktopTest, ComesBackAsItWasLeft) {
  const std::string maps = folder_.Path().string() + "/maps, north";
  std::filesystem::create_directory(maps);
  {
    SavedDesktop first(settings_);
    EXPECT_EQ(first.FolderOf(FileKind::kMaps), "/work/");
    EXPECT_EQ(first.FolderOf(FileKind::kPalettes), settings_.programFolder + "Palettes/");
    first.NoteChosen(FileKind::kMaps, maps + "/a.asc");
    first.NoteChosen(FileKind::kOther, "/elsewhere/b.asc");
    first.NoteSize("frmView", {800, 600});
    for (int i = 1; i <= 12; ++i) first.NoteFile("/maps/" + std::to_string(i) + ".asc");
    first.NoteFile("/maps/7.asc");
    first.NoteFile("/maps/two\nlines.asc");
  }
  SavedDesktop again(settings_);
  EXPECT_EQ(again.FolderOf(FileKind::kMaps), maps + "/");
  EXPECT_EQ(again.FolderOf(FileKind::kOther), "/work/");
  EXPECT_EQ(again.SizeOf("frmView"), (WindowSize{800, 600}));
  EXPECT_EQ(again.SizeOf("frmOptions"), std::nullopt);
  const Paths files{"/maps/7.asc", "/maps/12.asc", "/maps/11.asc", "/maps/10.asc", "/maps/9.asc",
                    "/maps/8.asc", "/maps/6.asc",  "/maps/5.asc",  "/maps/4.asc",  "/maps/3.asc"};
  EXPECT_EQ(again.Files(), files);
  std::filesystem::remove(maps);
  EXPECT_EQ(again.FolderOf(FileKind::kMaps), "/work/") << "a folder that has gone";
  int told = 0;
  again.onFiles = [&] { ++told; };
  again.NoteFile("/maps/7.asc");
  EXPECT_EQ(told, 0);
  again.ForgetFiles();
  EXPECT_EQ(told, 1);
  EXPECT_EQ(Written(), "folder,maps," + maps + "/\r\nwindow,frmView,800,600\r\n");
}

TEST_F(SavedDesktopTest, LinesThatCannotBeUsedArePassedOver) {
  folder_.Write("Desktop.inf",
                "window,a,10,0\r\nwindow,b,-1,5\nwindow,c,99999999999,5\nwindow,d,5\nwindow\n"
                "window,e,7x,5\nfolder,maps\nfolder,other,/x\nfolder,,/tmp\nfile,\nfile\n\n,,,\n"
                "file,/a,b.asc\nwindow,f,7,5");
  const SavedDesktop saved(settings_);
  for (const char* name : {"a", "b", "c", "d", "e", ""})
    EXPECT_EQ(saved.SizeOf(name), std::nullopt);
  EXPECT_EQ(saved.SizeOf("f"), (WindowSize{7, 5}));
  EXPECT_EQ(saved.Files(), Paths{"/a,b.asc"});
  EXPECT_EQ(saved.FolderOf(FileKind::kMaps), "/work/");
  folder_.Write("Desktop.inf", "file,/a.asc\n" + std::string(70'000, 'x'));
  EXPECT_TRUE(SavedDesktop(settings_).Files().empty()) << "it is no file of this program";
}

TEST_F(SavedDesktopTest, ForgetsInSilenceWhereNothingCanBeWritten) {
  settings_.programFolder = folder_.Path().string() + "/gone/";
  SavedDesktop saved(settings_);
  saved.NoteFile("/a.asc");
  EXPECT_EQ(saved.Files(), Paths{"/a.asc"});
  EXPECT_TRUE(SavedDesktop(settings_).Files().empty());
}

}  // namespace
}  // namespace ormel
