#include "rastertools/data_prep_window.h"

#include <gtest/gtest.h>

#include "mce/model_session.h"
#include "support/temporary_folder.h"
#include "support/ui_test_window.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;
using testing::ReadText;

// Large enough that a person can press Stop while it is scaled.
std::string LargeMap() {
  constexpr int kSide = 1500;
  const std::string side = std::to_string(kSide);
  std::string text =
      "ncols " + side + "\r\nnrows " + side + "\r\nxllcorner 0\r\nyllcorner 0\r\ncellsize 1\r\n";
  std::string row;
  for (int column = 0; column < kSide; ++column) row += " " + std::to_string(column * 7 % 997);
  for (int i = 0; i < kSide; ++i) text += row + "\r\n";
  return text;
}

TEST(DataPrepWindow, AStopLeavesFinishedMapsWholeAndTheOthersAsTheyWere) {
  const testing::TemporaryFolder disk;
  const fs::path before = fs::current_path();
  fs::current_path(disk.Path());
  ui::testing::TestDesktop test(true);
  Settings settings;
  ModelSession session;
  AppContext app{test.desktop, settings, session};
  auto& window = test.desktop.Show(std::make_unique<FrmDataPrep>(app));
  const std::string map = LargeMap();
  constexpr int kMaps = 6;
  std::vector<std::string> paths;
  paths.reserve(kMaps);
  for (int i = 0; i < kMaps; ++i) {
    paths.push_back(disk.Write("map" + std::to_string(i) + ".asc", map).string());
  }
  test.desktop.AnswerFiles(paths);
  ASSERT_TRUE(window.cmdAdd.Click().Ok());
  ASSERT_TRUE(window.folder.Dir.GoTo(disk.Path().string()).Ok());
  ASSERT_TRUE(window.cmdSetasOut.Click().Ok());
  EXPECT_EQ(window.lstNote.Item(1), "the original, changed");
  test.screen.onPump = [&] { window.StopRun(); };
  test.desktop.AnswerBoxes(ui::Answer::kYes);
  test.desktop.AnswerBoxes(ui::Answer::kNo);
  ASSERT_TRUE(window.cmdScale.Click().Ok());
  int scaled = 0;
  std::string result;
  for (const std::string& path : paths) {
    const std::string text = ReadText(path);
    if (text == map) continue;
    ++scaled;
    if (result.empty()) result = text;
    EXPECT_TRUE(text == result) << path << " is not whole";
  }
  EXPECT_LT(scaled, kMaps);
  EXPECT_EQ(disk.Entries(), kMaps) << "a working file is left";
  EXPECT_EQ(test.log.str().find("Finished"), std::string::npos);
  fs::current_path(before);
}

}  // namespace
}  // namespace ormel
