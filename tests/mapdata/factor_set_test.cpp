#include "mapdata/factor_set.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::TemporaryFolder;
using Result = Registration::Result;

class FactorSet : public ::testing::Test {
 protected:
  std::string Map(const std::string& name, const std::string& x, const std::string& cells = "0 1",
                  const std::string& nodata = "") {
    return folder_
        .Write(name, "ncols 2\r\nnrows 1\r\nxllcorner " + x + "\r\nyllcorner 5\r\ncellsize 30\r\n" +
                         nodata + " " + cells + "\r\n")
        .string();
  }
  Registration Check(const std::string& path, CheckMode mode, int row = 0) {
    return CheckAndRegister(path, mode, row, loaded_, reference_, quiet_);
  }

  TemporaryFolder folder_;
  LoadedData loaded_;
  ReferenceHeader reference_;
  NoProgress quiet_;
};

TEST_F(FactorSet, TheFirstFileSetsTheReferenceAndHeadersCompareAsNumbers) {
  folder_.Write("cut.asc", "ncols 2\r\nnrows 1\r\n");
  EXPECT_FALSE(Check(folder_ / "cut.asc", CheckMode::kFactor, 1).Accepted());
  EXPECT_FALSE(reference_.IsSet());
  const std::string first = Map("first.asc", "0");
  EXPECT_TRUE(Check(first, CheckMode::kFactor, 1).Accepted());
  EXPECT_EQ(reference_.texts[2], "0");
  loaded_.factors = {first, ""};
  EXPECT_TRUE(Check(first, CheckMode::kFactor, 1).Accepted());  // once more in its own row
  EXPECT_TRUE(
      Check(Map("b.asc", "0.0", "7 8", "NODATA_value 1\r\n"), CheckMode::kFactor).Accepted());
  const Registration refused = Check(Map("c.asc", "1e-9"), CheckMode::kFactor, 2);
  EXPECT_EQ(refused.result, Result::kRefused);
  EXPECT_EQ(refused.title, "Non-Uniform Data!");
  EXPECT_EQ(refused.message,
            "The following parameters in c were not the same as the rest of the data: X "
            "lower-left corner.");
  EXPECT_EQ(Check(folder_ / "c.asc", CheckMode::kUnlistedSilent).message, "");
  // The row in question is no part of what is loaded.
  EXPECT_TRUE(Check(folder_ / "c.asc", CheckMode::kFactor, 1).Accepted());
  EXPECT_EQ(reference_.texts[2], "1e-9");
}

TEST_F(FactorSet, OddModesAreSilentExceptAboutWhatIsNoMap) {
  const std::string map = Map("map.asc", "0");
  const std::string values = Map("values.asc", "0", "0 2");
  const std::string text = folder_.Write("text.asc", "ncols 2\r\n").string();
  const std::string gone = (folder_ / "gone.asc").string();
  const std::string doubled = folder_.Path().string() + "//map.asc";
  loaded_.factors = {map};
  loaded_.constraints = {map};
  constexpr char kNoMap[] = "The Data Specified is not of a useable type!";
  const std::tuple<std::string, CheckMode, Result, std::string> cases[] = {
      {map, CheckMode::kFactor, Result::kAlreadyEntered, "Factor already loaded!"},
      {doubled, CheckMode::kFactorSilent, Result::kAlreadyEntered, ""},
      {map, CheckMode::kConstraint, Result::kAlreadyEntered, "Constraint Already Loaded!"},
      {doubled, CheckMode::kConstraintSilent, Result::kAlreadyEntered, ""},
      {map, CheckMode::kUnlisted, Result::kAccepted, ""},
      {values, CheckMode::kConstraint, Result::kRefused,
       "Bad Constraint File (has values other than 0, 1, and NODATA or other internal problems)"},
      {values, CheckMode::kConstraintSilent, Result::kRefused, ""},
      {gone, CheckMode::kFactor, Result::kRefused, gone + " Does Not Exist!"},
      {gone, CheckMode::kFactorSilent, Result::kRefused, ""},
      {gone, CheckMode::kConstraint, Result::kRefused, kNoMap},
      {gone, CheckMode::kConstraintSilent, Result::kRefused, kNoMap},
      {text, CheckMode::kFactorSilent, Result::kRefused, kNoMap},
      {text, CheckMode::kUnlistedSilent, Result::kRefused, kNoMap},
      {folder_.Path().string(), CheckMode::kFactorSilent, Result::kRefused, kNoMap},
  };
  for (const auto& [path, mode, result, message] : cases) {
    const Registration registration = Check(path, mode);
    EXPECT_EQ(registration.result, result) << path << static_cast<int>(mode);
    EXPECT_EQ(registration.message, message) << path;
  }
  EXPECT_EQ(Check(doubled, CheckMode::kConstraint).path, map);
  EXPECT_EQ(CountLoadedData({{map, "", map}, {map}}, 3), 2);
}

}  // namespace
}  // namespace ormel
