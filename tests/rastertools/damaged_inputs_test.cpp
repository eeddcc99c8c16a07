// Every tool on thousands of damaged maps and tables. Nothing may crash or hang; a tool that fails
// leaves the old output as it was, and one that succeeds writes a map that it can read itself.
#include <gtest/gtest.h>

#include <random>

#include "rastertools/class_map.h"
#include "rastertools/map_algebra.h"
#include "rastertools/map_report.h"
#include "rastertools/map_scaling.h"
#include "rastertools/map_trim.h"
#include "rastertools/step_maps.h"
#include "support/temporary_folder.h"
#include "text/csv.h"

namespace ormel {
namespace {

using testing::ReadText;

const std::string kMap =
    "ncols         4\r\nnrows         3\r\nxllcorner     40\r\nyllcorner     -7e2\r\n"
    "cellsize      30\r\nNODATA_value  -9999\r\n"
    " 0 1 1 0\r\n 1 0.5 -9999 1\r\n 1E+02 1 \"0\", 1\r\n";
const std::string kTable = "class, dry, wet\r\n1, 2.5, 3\r\n0,7\r\n100,,-1\r\n";
const std::string kOld = "old";

class DamagedInputs : public ::testing::Test {
 protected:
  void SetUp() override { folder_.Write("whole.asc", kMap); }

  std::string At(const char* name) const { return (folder_ / name).string(); }

  // Holds for the outcome of a tool whose output was `kOld` before.
  void Check(const Outcome<>& done) {
    ASSERT_FALSE(done.WasCancelled());
    if (done.Failed()) {
      EXPECT_EQ(ReadText(At("out.asc")), kOld) << done.Text();
    } else {
      EXPECT_TRUE(RangeToScale(At("out.asc"), quiet_).Ok());
      folder_.Write("out.asc", kOld);
    }
  }

  void UseMap(const std::string& text) {
    const std::string map = folder_.Write("map.asc", text).string();
    const std::string out = At("out.asc");
    const ScalingRange range = RangeToScale(map, quiet_).Value();
    Check(ScaleMap({map, out, range, 2, At("w")}, quiet_));
    const std::vector<MapBounds> bounds{BoundsOf(map), BoundsOf(At("whole.asc"))};
    for (const MapRectangle& rectangle : {Intersection(bounds), bounds[1].rectangle}) {
      if (!rectangle.IsEmpty()) Check(TrimMap({bounds[0], out, rectangle, At("w")}, quiet_));
    }
    Check(OperateOnMaps({map, At("whole.asc"), out}, MapOperator::kPower, quiet_));
    Check(OperateOnMaps({At("whole.asc"), map, out}, MapOperator::kDivide, quiet_));
    EXPECT_TRUE(FiguresOf({map, At("whole.asc")}, quiet_).Ok());
    EXPECT_TRUE(FiguresOf({At("whole.asc"), map}, quiet_).Ok());
    (void)FindClasses(map, quiet_);
    Check(WriteClassMap({map, out, {{"1", "7"}}}, quiet_));
    UseTable(kTable, map);
  }

  void UseTable(const std::string& text, const std::string& map) {
    const std::string path = folder_.Write("table.csv", text).string();
    ClassTable classes;
    classes.TakeCsv(ReadCsvLines(path).Value());
    classes.ScaleOutputs();
    const Outcome<StepTable> table = StepTable::Read(path);
    if (!table.Ok() || table.Value().Rows() == 0) return;
    StepMapsJob job{map, table.Value(), path, {At("out.asc")}};
    Check(WriteStepMaps(job, quiet_));
    job.row = 1;
    Check(WriteStepMaps(job, quiet_));
  }

  static std::string Changed(std::string text, std::mt19937& random) {
    static const std::string kTelling = "0123456789 .,-+eE\"\r\n\t\x1A";
    for (auto changes = 1 + random() % 4; changes > 0; --changes) {
      text[random() % text.size()] =
          random() % 2 == 0 ? kTelling[random() % kTelling.size()] : static_cast<char>(random());
    }
    return text;
  }

  NoProgress quiet_;
  testing::TemporaryFolder folder_;
  const std::string out_ = folder_.Write("out.asc", kOld).string();
};

TEST_F(DamagedInputs, CutAtEveryLength) {
  for (std::size_t length = 0; length <= kMap.size(); ++length) UseMap(kMap.substr(0, length));
  for (std::size_t length = 0; length <= kTable.size(); ++length) {
    UseTable(kTable.substr(0, length), At("whole.asc"));
  }
}

TEST_F(DamagedInputs, WithBytesChanged) {
  std::mt19937 random(1);
  for (int i = 0; i < 200; ++i) {
    UseMap(Changed(kMap, random));
    UseTable(Changed(kTable, random), At("whole.asc"));
  }
}

}  // namespace
}  // namespace ormel
