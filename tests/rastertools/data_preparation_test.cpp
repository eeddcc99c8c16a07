// Scaling and trimming of maps, and the list of what is written where.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <sstream>

#include "rastertools/data_prep_list.h"
#include "rastertools/map_scaling.h"
#include "rastertools/map_trim.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::ReadText;
using testing::TemporaryFolder;
using Texts = std::vector<std::string>;

struct StopAtOnce final : ProgressSink {
  bool Report(double) override { return false; }
};

class DataPreparation : public ::testing::Test {
 protected:
  // A map of cells of 10 with its lower left corner at (x, y).
  std::string Map(const std::string& name, double x, double y, const Texts& rows,
                  const std::string& nodata = "NODATA_value  -9\r\n") {
    std::ostringstream text;
    const auto ncols = std::count(rows[0].begin(), rows[0].end(), ' ');
    text << "ncols  " << ncols << "\r\nnrows  " << rows.size() << "\r\nxllcorner  " << x
         << "\r\nyllcorner  " << y << "\r\ncellsize  10.0\r\n"
         << nodata;
    for (const std::string& row : rows) text << row << "\r\n";
    return disk_.Write(name, text.str()).string();
  }

  static std::string Cells(const std::string& path) {
    const std::string text = ReadText(path);
    const std::size_t nodata = text.find("\r\nNO");
    const std::size_t lastLine = nodata == std::string::npos ? text.find("cellsize") : nodata + 2;
    return text.substr(text.find("\r\n", lastLine) + 2);
  }

  std::string Out(const char* name = "out.asc") const { return (disk_ / name).string(); }
  std::string Working() const { return (disk_ / "temp999").string(); }

  // The scaled cells, or why there are none.
  std::string Scaled(const std::string& map, std::optional<ScalingRange> set = std::nullopt) {
    const ScalingRange range = set ? *set : RangeToScale(map, quiet_).Value();
    const Outcome<> done = ScaleMap({map, Out(), range, 2, Working()}, quiet_);
    return done.Ok() ? Cells(Out()) : done.Text();
  }

  std::string Trimmed(const std::string& map, const MapRectangle& rectangle) {
    const Outcome<> done = TrimMap({BoundsOf(map), Out(), rectangle, Working()}, quiet_);
    return done.Ok() ? Cells(Out()) : done.Text();
  }

  NoProgress quiet_;
  TemporaryFolder disk_;
};

TEST_F(DataPreparation, ScalesAMapFromItsOwnRangeAndASetFromThatOfAll) {
  const std::string low = Map("low.asc", 0, 0, {" 10 20 -9", " 13 30 -9.0"});
  const std::string high = Map("high.asc", 0, 0, {" 40 50 110"});
  EXPECT_EQ(Scaled(low), " 0 127.5 -9\r\n 38.25 255 -9\r\n");  // 255 * (13 - 10) / 20
  EXPECT_EQ(Scaled(high), " 0 36.43 255\r\n");
  const ScalingRange set =
      Joined(RangeToScale(low, quiet_).Value(), RangeToScale(high, quiet_).Value());
  EXPECT_EQ(Scaled(low, set), " 0 25.5 -9\r\n 7.65 51 -9\r\n");
  EXPECT_EQ(Scaled(high, set), " 76.5 102 255\r\n");
}

TEST_F(DataPreparation, CopiesTheHeaderAndKeepsAMapWithoutValues) {
  EXPECT_EQ(Scaled(Map("none.asc", 0, 0, {" -9 -9"})), " -9 -9\r\n");
  // Without NODATA every value counts.
  const std::string five = Map("five.asc", 0, 0, {" -9 0 1"}, "");
  EXPECT_EQ(Scaled(five), " 0 229.5 255\r\n");
  const std::string source = ReadText(five);
  EXPECT_EQ(ReadText(Out()).substr(0, source.find("\r\n ")),
            source.substr(0, source.find("\r\n ")));
  // In a set such a map counts as 0 to 1.
  EXPECT_EQ(RangeToScale(Out("none.asc"), quiet_).Value().max, 1);
}

TEST_F(DataPreparation, AMapMayBeItsOwnOutputAndStaysWhenItCannotBeScaled) {
  const struct {
    Texts rows;
    const char* fault;  // behind the path; null: none
  } cases[] = {{{" 5 5 -9"}, ": has a single value, 5, and cannot be stretched"},
               {{" 1 2 -9", " 3 4 5"}, nullptr},
               {{" 1 2 3", " 4"}, ": ends in row 2 of 2"},
               {{" -1.7E308 1.7E308"}, ": its values are too far apart"}};
  for (const auto& [rows, fault] : cases) {
    const std::string map = Map("map.asc", 0, 0, rows);
    const std::string before = ReadText(map);
    const ScalingRange range = RangeToScale(map, quiet_).Value();
    EXPECT_TRUE(RangeToScale(map, quiet_).Ok());
    StopAtOnce stop;
    EXPECT_FALSE(ScaleMap({map, map, range, 2, Working()}, stop).Ok());
    EXPECT_EQ(ReadText(map), before);
    const Outcome<> done = ScaleMap({map, map, range, 2, Working()}, quiet_);
    EXPECT_EQ(done.Text(), fault == nullptr ? "" : map + fault);
    EXPECT_EQ(ReadText(map) == before, fault != nullptr);
    EXPECT_EQ(disk_.Entries(), 1) << "a working file is left";
  }
}

// Two maps that overlap by halves, in both directions.
TEST_F(DataPreparation, TrimsToWhatAllMapsOrAnyOrOneCover) {
  const std::string a = Map("a.asc", 0, 0, {" 1 2 3", " 4 5 6"});
  const std::string b = Map("b.asc", 10, -10, {" 11 12 13", " 14 15 16"}, "");
  const std::vector<MapBounds> maps{BoundsOf(a), BoundsOf(b)};
  EXPECT_EQ(Trimmed(a, Intersection(maps)), " 5 6\r\n");
  EXPECT_EQ(Trimmed(b, Intersection(maps)), " 11 12\r\n");
  EXPECT_EQ(ReadText(Out()),
            "ncols         2\r\nnrows         1\r\nxllcorner     10\r\nyllcorner     0\r\n"
            "cellsize      10.0\r\nNO_DATA value  0\r\n 11 12\r\n");
  EXPECT_EQ(Trimmed(a, Union(maps)), " 1 2 3 -9\r\n 4 5 6 -9\r\n -9 -9 -9 -9\r\n");
  EXPECT_EQ(Trimmed(b, Union(maps)), " 0 0 0 0\r\n 0 11 12 13\r\n 0 14 15 16\r\n");
  EXPECT_EQ(Trimmed(b, maps[0].rectangle), " 0 0 0\r\n 0 11 12\r\n");
  EXPECT_EQ(Trimmed(a, maps[0].rectangle), " 1 2 3\r\n 4 5 6\r\n");
  EXPECT_NE(ReadText(Out()).find("\r\nNO_DATA value  -9\r\n"), std::string::npos);
}

TEST_F(DataPreparation, MapsThatTouchHaveNoCellsInCommonAndOthersDoNotMeet) {
  const MapBounds a = BoundsOf(Map("a.asc", 0, 0, {" 1 2", " 3 4"}));
  const MapBounds east = BoundsOf(Map("east.asc", 20, 0, {" 5", " 6"}));
  const MapBounds south = BoundsOf(Map("south.asc", 0, -10, {" 7 8"}));
  const MapBounds far = BoundsOf(Map("far.asc", 21, 0, {" 5"}));
  const auto common = [&](const MapBounds& other) {
    const std::vector<MapBounds> both{a, other};
    return Intersection(both);
  };
  EXPECT_EQ(Trimmed(a.path, common(east)), "\r\n\r\n");  // rows without columns
  EXPECT_EQ(Trimmed(a.path, common(south)), "");
  EXPECT_TRUE(common(far).IsEmpty());
  EXPECT_FALSE(common(south).IsEmpty());
  // Beside the rectangle of another map altogether.
  EXPECT_EQ(Trimmed(a.path, far.rectangle), " -9\r\n");
}

TEST_F(DataPreparation, RoundsEdgesToTheNearestCellAndRefusesWhatIsNoMap) {
  const std::string a = Map("a.asc", 0, 0, {" 1 2 3", " 4 5 6"});
  EXPECT_EQ(Trimmed(a, {4, 4, 26, 16}), " 1 2\r\n");          // 0.4 and 2.2 cells, 0.4 and 1.2
  EXPECT_EQ(Trimmed(a, {5, 0, 30, 20}), " 1 2\r\n 4 5\r\n");  // 0.5 and 2.5: to the even number
  EXPECT_EQ(Trimmed(a, {0, 0, 400000, 10}),
            Out() + ": would have 40000 columns; a map has at most 32767");
  const MapBounds missing = BoundsOf(Out("no.asc"));
  EXPECT_EQ(missing.rectangle.east, 0);
  EXPECT_EQ(Trimmed(missing.path, {0, 0, 10, 10}), missing.path + ": is not there");
  const std::string cut = Map("cut.asc", 0, 0, {" 1 2", " 3", ""});
  EXPECT_EQ(Trimmed(cut, {0, 20, 20, 30}), " 1 2\r\n");  // the missing row is not wanted
  EXPECT_EQ(Trimmed(cut, {0, 0, 20, 30}), cut + ": ends in row 2 of 3");
}

TEST_F(DataPreparation, OutputsAreNamedTogetherOrOneByOne) {
  DataPrepList list;
  list.SetOutputFolder("out");
  for (const char* input : {"in.d/dem.v2.asc", "in.d/slope", "water.asc"}) list.Add(input);
  const auto outputs = [&list] {
    Texts texts;
    for (int row = 1; row <= list.Count(); ++row) texts.push_back(list.At(row).output);
    return texts;
  };
  EXPECT_EQ(outputs(), (Texts{"out/dem.v2.asc", "out/slope", "out/water.asc"}));
  list.SetOutput(3, "my.d/w");
  list.AddPrefix("a_");
  list.AddSuffix(".b");
  EXPECT_EQ(outputs(), (Texts{"out/a_dem.v2.b.asc", "out/a_slope.b", "my.d/a_w.b"}));
  list.SetOutputFolder("new");
  list.MoveOutputs();
  EXPECT_EQ(outputs(), (Texts{"new/a_dem.v2.b.asc", "new/a_slope.b", "new/a_w.b"}));
  list.ResetOutputs();
  list.Remove(std::vector<int>{2});
  EXPECT_EQ(outputs(), (Texts{"new/dem.v2.asc", "new/water.asc"}));
}

TEST_F(DataPreparation, AsksForOriginalsAndOtherFilesThatAreThere) {
  const std::string here = disk_.Write("here.asc", "").string();
  const std::string other = disk_.Write("other.asc", "").string();
  const DataPrepList::Row fresh{here, Out()};
  const DataPrepList::Row original{here, here};
  const DataPrepList::Row replaced{here, other};
  EXPECT_EQ(OverwriteQuestion(std::vector{fresh}), "");
  EXPECT_EQ(OverwriteQuestion(std::vector{fresh, original}),
            "This will modify one or more original files! Continue anyway?");
  EXPECT_EQ(OverwriteQuestion(std::vector{replaced}),
            "This will overwrite existing files! Continue anyway?");
  EXPECT_EQ(OverwriteQuestion(std::vector{replaced, original}),
            "This will modify one or more original files and overwrite other existing files! "
            "Continue anyway?");
}

}  // namespace
}  // namespace ormel
