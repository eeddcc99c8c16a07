#include "rastertools/step_maps.h"

#include <gtest/gtest.h>

#include "support/map_text.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::MapText;
using testing::ReadText;
using Texts = std::vector<std::string>;

class StepMaps : public ::testing::Test {
 protected:
  StepTable Table(const std::string& text) {
    return StepTable::Read(folder_.Write("table.csv", text)).Value();
  }

  Texts Paths(const StepTable& table, StepSuffix suffix, const StepDates& dates = {}) {
    return StepPaths(table, {"out", "", suffix, dates}).Value();
  }

  StepMapsJob Job(const std::string& table, const testing::Rows& rows) {
    StepMapsJob job{folder_.Write("f.asc", MapText(rows, -9)).string(),
                    Table(table),
                    (folder_ / "table.csv").string(),
                    {}};
    job.targets =
        StepPaths(job.table, {folder_.Path().string(), "s", StepSuffix::kVariableLength, {}})
            .Value();
    return job;
  }

  std::string Cells(int step) {
    const std::string text = ReadText(folder_ / ("s" + std::to_string(step) + ".asc"));
    return text.substr(text.find("\r\n ") + 2);
  }

  NoProgress quiet_;
  testing::TemporaryFolder folder_;
};

TEST_F(StepMaps, EachClassBecomesItsValueOfTheStep) {
  const StepMapsJob job = Job("class, a, b, c\r\n 1 , 10,0.50, high\n\n2,20,\n2,1,1,1\nsum,7,7,7\n",
                              {{1, 2, 0}, {-9, 1, 2}});
  ASSERT_TRUE(WriteStepMaps(job, quiet_).Ok());
  EXPECT_EQ(Cells(1), " 10 20 0\r\n -9 10 20\r\n");
  EXPECT_EQ(Cells(2), " 0.50 2 0\r\n -9 0.50 2\r\n");    // no value: the class stays
  EXPECT_EQ(Cells(3), " high -1 0\r\n -9 high -1\r\n");  // the row has no such field
  EXPECT_TRUE(
      ReadText(folder_ / "s1.asc").starts_with("ncols  3\r\nnrows  2\r\nxllcorner  100\r\n"));
}

TEST_F(StepMaps, AChosenRowMultipliesTheMap) {
  StepMapsJob job = Job("rain,1,2,3\nwet,2,0.333,-1\ndry,9\n", {{1, 2.5, -9}});
  job.row = 1;
  ASSERT_TRUE(WriteStepMaps(job, quiet_).Ok());
  EXPECT_EQ(Cells(1) + Cells(2) + Cells(3), " 2 5 -9\r\n 0.33 0.83 -9\r\n -1 -2.5 -9\r\n");
}

TEST_F(StepMaps, NamesEndInNumbersDatesOrHeadings) {
  std::string heading = "c";
  for (int step = 1; step <= 10; ++step) heading += ", h/" + std::to_string(step);
  const StepTable table = Table(heading);
  EXPECT_EQ(Paths(table, StepSuffix::kFixedLength)[8], "out/09.asc");
  EXPECT_EQ(Paths(table, StepSuffix::kVariableLength)[8], "out/9.asc");
  EXPECT_EQ(Paths(table, StepSuffix::kHeading)[8], "out/h_9.asc");
  const double start = *ReadDate("January 31, 2008");
  EXPECT_EQ(Paths(table, StepSuffix::kDate, {start, *DateUnitNamed(" Month ")})[1],
            "out/2-29-2008.asc");
  EXPECT_EQ(Paths(table, StepSuffix::kDate, {start, *DateUnitNamed("hour")})[9],
            "out/1-31-2008 9:00:00 AM.asc");
  EXPECT_FALSE(DateUnitNamed("fortnight"));
  EXPECT_TRUE(
      StepPaths(table, {"", "", StepSuffix::kDate, {*ReadDate("1/1/9995"), DateUnit::kYear}})
          .Failed());
  EXPECT_TRUE(StepTable::Read(folder_.Write("one.csv", "c\n1\n")).Failed());
}

TEST_F(StepMaps, NothingIsWrittenWhenANameIsTakenOrAFileIsBad) {
  const auto refused = [this](StepMapsJob job, const std::string& target) {
    job.targets[1] = target;
    const auto before = folder_.Entries();
    const bool failed = WriteStepMaps(job, quiet_).Failed();
    return failed && folder_.Entries() == before;
  };
  const StepMapsJob job = Job("c,1,2\n1,2,3\n", {{1, 1}, {1, 1}});
  EXPECT_TRUE(refused(job, job.targets[0]));
  EXPECT_TRUE(refused(job, job.factor));
  EXPECT_TRUE(refused(job, job.tablePath));
  EXPECT_TRUE(refused(job, (folder_ / "no" / "such.asc").string()));
  folder_.Write("f.asc", MapText({{1, 1}, {1}}));
  EXPECT_TRUE(refused(job, job.targets[1]));
}

// More files than are open at once.
TEST_F(StepMaps, ALongSeriesIsWrittenInParts) {
  std::string heading = "c";
  std::string values = "\n1";
  for (int step = 1; step <= 450; ++step) {
    heading += "," + std::to_string(step);
    values += "," + std::to_string(1000 + step);
  }
  ASSERT_TRUE(WriteStepMaps(Job(heading + values, {{1}}), quiet_).Ok());
  for (const int step : {1, 200, 201, 450}) {
    EXPECT_EQ(Cells(step), " " + std::to_string(1000 + step) + "\r\n");
  }
}

}  // namespace
}  // namespace ormel
