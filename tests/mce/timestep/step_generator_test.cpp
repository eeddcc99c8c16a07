#include "mce/timestep/step_generator.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "mce/timestep/step_output.h"
#include "mce/timestep/step_weights.h"
#include "support/map_text.h"
#include "support/small_disk.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::MapText;
using testing::ReadText;
using testing::Rows;
using testing::SmallDisk;
using testing::TemporaryFolder;

// The rows below the five header lines.
std::string Cells(const std::string& text) {
  std::size_t place = 0;
  for (int line = 0; line < 5; ++line) place = text.find('\n', place) + 1;
  return text.substr(place);
}

class TimeSteps : public ::testing::Test {
 protected:
  TimeSteps() { model_.dates = {"1/1/2000", "2/1/2000", "3/1/2000"}; }

  FactorFile WriteMap(const std::string& name, const Rows& rows,
                      std::optional<double> nodata = std::nullopt) const {
    folder_.Write(name, MapText(rows, nodata));
    return {folder_.Path().string() + "/", name};
  }
  void AddSteps(std::vector<float> weights, FactorBehaviour behaviour = {}) {
    model_.factors.push_back({std::move(behaviour), NewStepGraph(3), std::move(weights)});
  }

  // Runs the model into out/; a failure is the result.
  Outcome<> Run(StepMemory memory = {}) {
    std::filesystem::create_directory(folder_ / "out");
    model_.output.folder = (folder_ / "out").string();
    memory.folder = (folder_ / "temp").string();
    Outcome<StepGenerator> generator = StepGenerator::Begin(model_, memory);
    if (!generator.Ok()) return generator.Stop();
    StepRunSettings settings;
    settings.temporaryFolder = memory.folder;
    Outcome<> run = GenerateSteps(model_, generator.Value(), settings, files_, progress_, {});
    weights_ = generator.Value().EffectiveWeights();
    return run;
  }
  std::string StepCells(int step) const {
    return Cells(
        ReadText(folder_ / ("out/" + model_.output.prefix + std::to_string(step) + ".asc")));
  }

  // Wants to stop after so many reports.
  class Stopper final : public ProgressSink {
   public:
    int left = 1'000'000;
    bool Report(double) override { return left-- > 0; }
  };

  TemporaryFolder folder_;
  TimeStepModel model_;
  WrittenSteps files_;
  Extremes weights_;
  Stopper progress_;
};

// One factor of each behaviour: (1 2 / 3 NODATA) static, its low values good; a row 1, 2, 0.5; and
// a map for each step. The cell in the corner is masked.
class LinearSeries : public TimeSteps {
 protected:
  LinearSeries() {
    LinearModel linear;
    linear.factors.push_back({WriteMap("still.asc", {{1, 2}, {3, -9}}, -9), 2, false});
    linear.factors.push_back({WriteMap("table.asc", {{10, 20}, {300, 40}}), 3, true});
    linear.factors.push_back({WriteMap("own.asc", {{0, 0}, {0, 0}}), -1, true});
    linear.constraints.push_back(WriteMap("mask.asc", {{0, 1}, {1, 1}}).Path());
    model_.kind = LinearSteps(std::move(linear));
    AddSteps({1, 0.5F, 0});
    AddSteps({1, 1, 1}, {StepMethod::kProducts, {}, "t.csv", "row", {1, 2, 0.5F}});
    FactorBehaviour files{StepMethod::kExistingFiles};
    for (const double cell : {1.0, 2.0, 4.0}) {
      files.stepFiles.push_back(
          WriteMap("own" + std::to_string(files.stepFiles.size()) + ".asc", {{cell, 5}, {6, cell}})
              .Path());
    }
    AddSteps({1, 1, 2}, std::move(files));
  }
};

// Worked out by hand. Step 1: cell (2, 1) 2 * 253 + 3 * 20 - 5 = 561, (1, 2) 2 * 252 + 3 * 300 - 6
// = 1398, (2, 2) 0 + 120 - 1 = 119. Step 2: 253 + 120 - 5 = 368, 252 + 1800 - 6 = 2046, 240 - 2 =
// 238. Step 3: 30 - 10 = 20, 450 - 12 = 438, 60 - 8 = 52.
TEST_F(LinearSeries, ScalesEachMapOrAllOfThem) {
  ASSERT_TRUE(Run().Ok());
  EXPECT_EQ(StepCells(1), " 0 88.12\r\n 255 0\r\n");
  EXPECT_EQ(StepCells(2), " 0 18.34\r\n 255 0\r\n");
  EXPECT_EQ(StepCells(3), " 0 0\r\n 255 19.52\r\n");
  EXPECT_EQ(weights_.largest, 6);
  EXPECT_EQ(weights_.smallest, -2);
  model_.output.group = true;
  model_.output.prefix = "g";
  ASSERT_TRUE(Run().Ok());
  EXPECT_EQ(StepCells(1), " 0 68.09\r\n 173.44 12.46\r\n");
  EXPECT_EQ(StepCells(2), " 0 43.8\r\n 255 27.44\r\n");
  EXPECT_EQ(StepCells(3), " 0 0\r\n 52.61 4.03\r\n");
}

TEST_F(LinearSeries, GivesTheSameBytesInAnyMemory) {
  ASSERT_TRUE(Run().Ok());
  std::vector<std::string> kept;
  for (int step = 1; step <= 3; ++step) kept.push_back(StepCells(step));
  const StepMemory scarce[] = {{"", 0, 1U << 20U}, {"", 40, 1U << 20U}, {"", 1U << 20U, 0}};
  for (const StepMemory& memory : scarce) {
    for (const char* threads : {"1", "3"}) {
      setenv("ORMEL_THREADS", threads, 1);
      ASSERT_TRUE(Run(memory).Ok());
      for (int step = 1; step <= 3; ++step) {
        EXPECT_EQ(StepCells(step), kept[static_cast<std::size_t>(step - 1)]);
      }
    }
  }
  unsetenv("ORMEL_THREADS");
  EXPECT_EQ(std::filesystem::is_empty(folder_ / "temp"), true);  // the frames' file has no name
}

TEST_F(LinearSeries, WritesWhatIsAskedFor) {
  model_.output.bitmap = true;
  model_.output.prefix = "nest";
  ASSERT_TRUE(Run().Ok());
  EXPECT_EQ(files_.rasters.size(), 3U);
  EXPECT_EQ(files_.bitmaps.back(), (folder_ / "out/nest3.bmp").string());
  const std::string info = ReadText(folder_ / "out/nestInformation.inf");
  const std::string graph =
      "\r\n\tSingle factor weighting function: \r\n\t    Type: Linear Graph\r\n\t\t    Initial "
      "value:  1\r\n\t\t    Final value:  1";
  const std::string behind = graph + "\r\n\r\n\r\n";
  const std::string own = folder_.Path().string() + "/own";
  EXPECT_EQ(info.substr(info.find("\r\n")),
            "\r\n\r\nFactor: still.asc       Weight: 2\r\nMethod of Change: \tStatic" + behind +
                "Factor: table.asc       Weight: 3\r\nMethod of Change: \tProduct Database: t.csv, "
                "Row: row" +
                behind +
                "Factor: own.asc         Weight: -1\r\nMethod of Change: "
                "\tExisting Files:\r\n" +
                own + "0.asc\r\n" + own + "1.asc\r\n" + own + "2.asc" + behind +
                "Constraints:\r\n    " + folder_.Path().string() +
                "/mask.asc\r\n\r\n\r\nFrame Numbers and Associated Dates:\r\n\t1: 1/1/2000\r\n\t2: "
                "2/1/2000\r\n\t3: 3/1/2000\r\n");
  files_.Delete();
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "out"), {}), 1);
  model_.output = {.raster = false, .info = false};
  ASSERT_TRUE(Run().Ok());
  EXPECT_TRUE(std::filesystem::exists(folder_ / "temp/3.asc"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "out"), {}), 1);
}

TEST_F(LinearSeries, NamesAMapThatCannotBeUsed) {
  const std::string path = (folder_ / "own1.asc").string();
  WriteMap("own1.asc", {{1, 2}});
  EXPECT_EQ(Run().Text(), path + ": has 2 columns and 1 rows, and the first factor has 2 and 2");
  std::string text = MapText({{1, 2}, {3, 4}});
  folder_.Write("own1.asc", text.substr(0, text.size() - 6));
  EXPECT_EQ(Run().Text(), path + ": ends in row 2 of 2");
  std::filesystem::remove(path);
  EXPECT_NE(Run().Text().find(path), std::string::npos);
  EXPECT_TRUE(std::filesystem::exists(folder_ / "out/1.asc"));  // the steps before stay
  EXPECT_FALSE(std::filesystem::exists(folder_ / "out/2.asc"));
}

TEST_F(LinearSeries, LeavesNoHalfWrittenFile) {
  for (int reports = 0; reports < 20; ++reports) {
    std::filesystem::remove_all(folder_ / "out");
    progress_.left = reports;
    const Outcome<> run = Run();
    for (const auto& file : std::filesystem::directory_iterator(folder_ / "out")) {
      EXPECT_GT(file.file_size(), 80U) << file.path();
    }
    if (run.Ok()) return;
    EXPECT_TRUE(run.WasCancelled());
  }
  FAIL() << "it never came to its end";
}

TEST_F(LinearSeries, TellsAFullDiskFromOtherFaults) {
  SmallDisk disk(60);
  const Outcome<> run = Run();
  ASSERT_TRUE(run.Failed());
  EXPECT_EQ(run.Why().kind, FailureKind::kDiskFull);
}

TEST_F(TimeSteps, ANonlinearModelWeighsNodataNothing) {
  NonlinearModel model;
  GraphFactor factor;
  static_cast<FactorFile&>(factor) = WriteMap("f.asc", {{0, 255}, {127.5, 300}, {-9, -1}}, -9);
  ASSERT_TRUE(computeLinear(factor.graph, {"10", "265", "", ""}));  // value + 10
  model.factors = {factor};
  model_.kind = NonlinearSteps(std::move(model));
  AddSteps({1, 2, 0}, {StepMethod::kProducts, {}, "", "", {1, 1, 1}});
  model_.output.group = true;
  ASSERT_TRUE(Run().Ok());  // sums 10, 265, 137.5 and 0, then twice as much, then 0
  EXPECT_EQ(StepCells(1), " 4.81 127.5\r\n 66.16 0\r\n 0 0\r\n");
  EXPECT_EQ(StepCells(2), " 9.62 255\r\n 132.31 0\r\n 0 0\r\n");
  EXPECT_EQ(StepCells(3), " 0 0\r\n 0 0\r\n 0 0\r\n");
  model_.output.group = false;
  ASSERT_TRUE(Run().Ok());
  EXPECT_EQ(StepCells(1), StepCells(2));
  EXPECT_EQ(StepCells(3), " 0 0\r\n 0 0\r\n 0 0\r\n");  // a flat map has no scale
}

TEST_F(TimeSteps, TooLongASeriesIsToldBeforeItBegins) {
  LinearModel linear;
  linear.factors.push_back({WriteMap("f.asc", {{1}}), 1, true});
  model_.kind = LinearSteps(std::move(linear));
  AddSteps({1, 1, 1});
  SmallDisk disk(8);
  const Outcome<> run = Run({"", 0, 0});
  ASSERT_TRUE(run.Failed());
  EXPECT_EQ(run.Why().kind, FailureKind::kDiskFull);
}

}  // namespace
}  // namespace ormel
