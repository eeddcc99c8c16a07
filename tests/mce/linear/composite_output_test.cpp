#include "mce/composite_output.h"

#include <gtest/gtest.h>

#include "support/model_folder.h"
#include "support/small_disk.h"

namespace ormel {
namespace {

using testing::ModelFolder;
using testing::ReadText;

// Stops the work at its first report.
class Stopper final : public ProgressSink {
 public:
  bool Report(double /*percent*/) override { return false; }
};

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
  model.factors = {{"maps/", "soil.asc", 5, true}, {"maps/", "végétation.asc", -3, false}};
  model.constraints = {"maps/roads.asc"};
  std::tm when{};
  when.tm_year = 126;
  when.tm_mon = 10;
  when.tm_mday = 2;
  when.tm_hour = 12;
  when.tm_min = 5;
  EXPECT_EQ(InfoFileText(model, when),
            "Gorilla nesting\r\n"
            "Created on 11/2/2026 at 12:05:00 PM\r\n"
            "\r\n"
            "Factor:               Weight:\r\n"
            "     soil.asc            5  (High Values Good)\r\n"
            "     végétation.asc      -3  (Low Values Good)\r\n"
            "\r\n"
            "Constraints:\r\n"
            "    maps/roads.asc\r\n");
  when.tm_hour = 0;
  EXPECT_EQ(InfoFileText(LinearModel(), when),
            "\r\nCreated on 11/2/2026 at 12:05:00 AM\r\n\r\n"
            "No Factors Used\r\n\r\nNo Constraints Used\r\n");
}

TEST(CompositeOutput, InformationFileStandsBesideTheMap) {
  EXPECT_EQ(InfoFilePath("maps/out.asc"), "maps/out.inf");
  EXPECT_EQ(InfoFilePath("b"), "inf");
  ModelFolder folder;
  folder.AddFactor({{0, 1}}, 1);
  NoProgress quiet;
  const Outcome<> written =
      WriteComposite(folder.Accumulate(), folder.model, folder.Path("out.inf"), 2, quiet, {});
  EXPECT_TRUE(written.Failed());
  EXPECT_FALSE(std::filesystem::exists(folder.Path("out.inf")));
}

TEST(CompositeOutput, AFullDiskOrAStopKeepsTheOldMap) {
  ModelFolder folder;
  folder.AddFactor(testing::Cells(200, std::vector<double>(200, 1)), 1);
  folder.Folder().Write("out.asc", "old");
  const CompositeMap map = folder.Accumulate();
  NoProgress quiet;
  {
    const testing::SmallDisk disk(10000);
    const Outcome<> full = WriteComposite(map, folder.model, folder.Path("out.asc"), 2, quiet, {});
    EXPECT_TRUE(full.Failed());
    EXPECT_NE(full.Text().find("out.asc"), std::string::npos);
  }
  Stopper stop;
  EXPECT_TRUE(
      WriteComposite(map, folder.model, folder.Path("out.asc"), 2, stop, {}).WasCancelled());
  EXPECT_EQ(ReadText(folder.Path("out.asc")), "old");
  EXPECT_EQ(folder.Folder().Entries(), 2);  // the factor and the old map
}

}  // namespace
}  // namespace ormel
