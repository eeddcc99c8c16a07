#include "shell/settings_file.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::ReadText;
using testing::TemporaryFolder;

class SettingsFile : public ::testing::Test {
 protected:
  std::string Home() const { return folder_.Path().string() + "/"; }
  SettingsRead Load(const std::string& text) {
    folder_.Write("Settings.inf", text);
    return LoadSettings(Home());
  }
  TemporaryFolder folder_;
};

TEST_F(SettingsFile, AFirstStartWritesTheDefaultsAndAFolderWithACommaIsReadBackWhole) {
  EXPECT_FALSE(ReadSettings(Home()).created);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "Settings.inf"));
  const SettingsRead read = LoadSettings(Home());
  EXPECT_TRUE(read.created);
  EXPECT_EQ(read.settings.workingDirectory, Home());
  EXPECT_EQ(ReadText(folder_ / "Settings.inf"),
            Home() + "\r\n2\r\n" + read.settings.defaultPalette + "\r\n0\r\n23\r\n");
  EXPECT_FALSE(LoadSettings(Home()).created);
  Settings settings = read.settings;
  settings.workingDirectory = "/maps/north, 2024/";
  ASSERT_TRUE(SaveSettings(settings).Ok());
  EXPECT_EQ(LoadSettings(Home()).settings.workingDirectory, settings.workingDirectory);
}

TEST_F(SettingsFile, NumbersAreClampedCutAndRounded) {
  const std::tuple<std::string, std::string, std::string, int, Colour, int> cases[] = {
      {"12", "255", "1", 9, 255, 1},     {"-1", "65535.5", "0", 0, 65536, 23},
      {"2.7", "seven", "24", 2, 0, 23},  {" 3 ", " 16711680 ", " 7 ", 3, 16711680, 7},
      {"two", "0", "Airy", 0, 0, 23},    {"9.99", "1", "5.9", 9, 1, 5},
      {"1e300", "1", "1e300", 9, 1, 23}, {"-1e300", "1", "-3", 0, 1, 23}};
  for (const auto& [decimals, colour, datum, places, constraint, index] : cases) {
    const SettingsRead read =
        Load("maps\r\n" + decimals + "\r\nnone.ptf\r\n" + colour + "\r\n" + datum + "\r\n");
    EXPECT_EQ(read.failure, "") << decimals;
    EXPECT_EQ(read.settings.workingDirectory, "maps/");
    EXPECT_EQ(read.settings.decimalPlaces, places) << decimals;
    EXPECT_EQ(read.settings.constraintColor, constraint) << colour;
    EXPECT_EQ(read.settings.datum, index) << datum;
  }
}

TEST_F(SettingsFile, WhatIsMissingHasItsDefaultFromThatLineOn) {
  const std::string palette = folder_.Write("own.ptf", "0").string();
  const std::string lines[] = {"maps/\r\n", "5\r\n", palette + "\r\n", "255\r\n", "7\r\n"};
  std::string text;
  for (int held = 0; held <= 5; ++held) {
    const SettingsRead read = Load(text);
    EXPECT_EQ(read.failure.empty(), held == 5) << held;
    EXPECT_EQ(read.settings.workingDirectory, held > 0 ? "maps/" : Home());
    EXPECT_EQ(read.settings.decimalPlaces, held > 1 ? 5 : 2);
    EXPECT_EQ(read.settings.defaultPalette == palette, held > 2);
    EXPECT_EQ(read.settings.constraintColor, held > 3 ? 255U : 0U);
    EXPECT_EQ(read.settings.datum, held > 4 ? 7 : 23);
    if (held < 5) text += lines[held];
  }
  const SettingsRead beyond = Load("maps/\r\n5\r\nnone.ptf\r\n1e10\r\n7\r\n");
  EXPECT_NE(beyond.failure.find("constraint colour"), std::string::npos);
  EXPECT_EQ(beyond.settings.datum, 23);
}

}  // namespace
}  // namespace ormel
