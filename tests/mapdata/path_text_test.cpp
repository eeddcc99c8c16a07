#include "mapdata/path_text.h"

#include <gtest/gtest.h>

namespace ormel {
namespace {

TEST(PathText, RepairsTheFirstDoubledSeparatorOnly) {
  const struct {
    const char* path;
    const char* repaired;
  } cases[] = {
      {"C:\\maps\\\\a\\\\b", "C:\\maps\\a\\\\b"},
      {"/maps//a//b", "/maps/a//b"},
      {"a/\\b", "a/\\b"},
      {"///a", "//a"},
      {"a.asc", "a.asc"},
      {"", ""},
  };
  for (const auto& c : cases) {
    std::string path = c.path;
    RepairPath(path);
    EXPECT_EQ(path, c.repaired);
  }
}

TEST(PathText, TakesPathsApart) {
  const struct {
    const char* path;
    const char* folder;
    const char* name;
    const char* full;
  } cases[] = {
      {"/maps/dem.asc", "/maps/", "dem", "dem.asc"},
      {"C:\\maps\\dem.v2.asc", "C:\\maps\\", "dem.v2", "dem.v2.asc"},
      {"C:\\maps/dem", "C:\\maps/", "dem", "dem"},
      {"/maps.old/dem", "/maps.old/", "dem", "dem"},
      {"dem.asc", "", "dem", "dem.asc"},
      {"/maps/", "/maps/", "", ""},
      {"", "", "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FolderPart(c.path), c.folder);
    EXPECT_EQ(FileNamePart(c.path), c.name);
    EXPECT_EQ(FileNamePart(c.path, true), c.full);
    EXPECT_EQ(JoinPath(FolderPart(c.path), FileNamePart(c.path, true)), c.path);
  }
}

TEST(PathText, ExtensionsBeginAtTheLastPoint) {
  EXPECT_EQ(RemoveExtension("a.b.asc"), "a.b");
  EXPECT_EQ(RemoveExtension("a"), "a");
  EXPECT_EQ(ChangeExtension("a.b.asc", "bmp"), "a.b.bmp");
  EXPECT_EQ(ChangeExtension("a.", "bmp"), "a.bmp");
  EXPECT_EQ(ChangeExtension("a", "bmp"), "a.bmp");
}

TEST(PathText, JoinsWithOneSeparator) {
  EXPECT_EQ(JoinPath("/maps", "a.asc"), "/maps/a.asc");
  EXPECT_EQ(JoinPath("/maps/", "a.asc"), "/maps/a.asc");
  EXPECT_EQ(JoinPath("C:\\maps\\", "a.asc"), "C:\\maps\\a.asc");
  EXPECT_EQ(JoinPath("", "a.asc"), "a.asc");
}

}  // namespace
}  // namespace ormel
