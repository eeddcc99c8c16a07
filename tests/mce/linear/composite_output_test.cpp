#include "mce/composite_output.h"

#include <gtest/gtest.h>

#include "support/model_folder.h"
#include "support/small_disk.h"

namespace ormel {
namespace {

using testing::ModelFolder;
using testing::ReadText;

TEST(CompositeOutput, HeaderHasFiveLinesAndNothingFollowsTheLastRow) {
  ModelFolder folder;
  folder.AddFactorText("a 2\r\nb 1\r\nc 100.50\r\nd 1e3\r\ne 30.70\r\nf -9999\r\n 0 1\r\n", 1);
  folder.Rows();
  EXPECT_EQ(ReadText(folder.Path("out.asc")),
            "ncols         2\r\nnrows         1\r\nxllcorner     100.5\r\n"
            "yllcorner     1000\r\ncellsize      30.70\r\n 0 255\r\n");
}

TEST(CompositeOutput, InformationFileListsFactorsAndConstraints) {
  LinearModel model;
  model.title = "Gorilla nesting";
  model.factors = {{{"maps/", "soil.asc"}, 5, true}, {{"maps/", "végétation.asc"}, -3, false}};
  model.constraints = {"maps/roads.asc"};
  std::tm when{};
  strptime("2026-11-02 12:05", "%Y-%m-%d %H:%M", &when);
  EXPECT_EQ(InfoFileText(model, when),
            "Gorilla nesting\r\nCreated on 11/2/2026 at 12:05:00 PM\r\n\r\n"
            "Factor:               Weight:\r\n"
            "     soil.asc            5  (High Values Good)\r\n"
            "     végétation.asc      -3  (Low Values Good)\r\n\r\n"
            "Constraints:\r\n    maps/roads.asc\r\n");
  when.tm_hour = 0;
  EXPECT_EQ(InfoFileText(LinearModel(), when),
            "\r\nCreated on 11/2/2026 at 12:05:00 AM\r\n\r\n"
            "No Factors Used\r\n\r\nNo Constraints Used\r\n");
  EXPECT_EQ(InfoFilePath("b"), "inf");
}

TEST(CompositeOutput, AFullDiskOrAStopKeepsTheOldMap) {
  class Stop final : public ProgressSink {
    bool Report(double) override { return false; }
  } stop;
  ModelFolder folder;
  folder.AddFactor(testing::Cells(200, std::vector<double>(200, 1)), 1);
  folder.Folder().Write("out.asc", "old");
  const CompositeMap map = folder.Accumulate();
  const auto written = [&](ProgressSink& progress) {
    return WriteComposite(map, folder.model, folder.Path("out.asc"), 2, progress, {});
  };
  {
    NoProgress quiet;
    const testing::SmallDisk disk(10000);
    EXPECT_NE(written(quiet).Text().find("out.asc"), std::string::npos);
  }
  EXPECT_TRUE(written(stop).WasCancelled());
  EXPECT_EQ(ReadText(folder.Path("out.asc")), "old");
  EXPECT_EQ(folder.Folder().Entries(), 2);  // the factor and the old map
}

}  // namespace
}  // namespace ormel
