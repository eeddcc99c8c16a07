#include "base/file_writer.h"

#include <gtest/gtest.h>

#include "support/small_disk.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;
using testing::ReadText;
using testing::SmallDisk;
using testing::TemporaryFolder;

TEST(FileWriter, ReplacesTheOldFileOnlyWhenCommitted) {
  TemporaryFolder folder;
  const fs::path path = folder.Write("map.asc", "old");
  Outcome<FileWriter> writer = FileWriter::Open(path);
  ASSERT_TRUE(writer.Ok());
  writer.Value().Write("ne");
  writer.Value().Write("w");
  EXPECT_EQ(ReadText(path), "old");
  ASSERT_TRUE(writer.Value().Commit().Ok());
  EXPECT_EQ(ReadText(path), "new");
  EXPECT_EQ(folder.Entries(), 1);
}

TEST(FileWriter, AStoppedRunLeavesTheOldFileAndNothingElse) {
  TemporaryFolder folder;
  const fs::path path = folder.Write("map.asc", "old");
  {
    Outcome<FileWriter> writer = FileWriter::Open(path);
    ASSERT_TRUE(writer.Ok());
    writer.Value().Write(std::string(1'000'000, 'x'));
  }
  EXPECT_EQ(ReadText(path), "old");
  EXPECT_EQ(folder.Entries(), 1);
}

// The disk fills up in the first bytes, within the buffer, and after several buffers.
TEST(FileWriter, AFullDiskLeavesTheOldFileAndNothingElse) {
  for (const std::size_t room : {std::size_t{0}, std::size_t{100}, std::size_t{700'000}}) {
    TemporaryFolder folder;
    const fs::path path = folder.Write("map.asc", "old");
    Outcome<> outcome = Done{};
    {
      SmallDisk disk(room);
      Outcome<FileWriter> writer = FileWriter::Open(path);
      ASSERT_TRUE(writer.Ok());
      for (int row = 0; row < 1000; ++row) writer.Value().Write(std::string(1000, 'x'));
      outcome = writer.Value().Commit();
    }
    ASSERT_TRUE(outcome.Failed());
    EXPECT_EQ(outcome.Why().kind, FailureKind::kDisk);
    EXPECT_NE(outcome.Text().find("map.asc"), std::string::npos);
    EXPECT_EQ(ReadText(path), "old") << room;
    EXPECT_EQ(folder.Entries(), 1) << room;
  }
}

TEST(FileWriter, WritesMoreThanItsBufferInOrder) {
  TemporaryFolder folder;
  std::string expected;
  Outcome<FileWriter> writer = FileWriter::Open(folder / "big");
  ASSERT_TRUE(writer.Ok());
  for (int row = 0; row < 100'000; ++row) {
    const std::string text = std::to_string(row) + "\r\n";
    writer.Value().Write(text);
    expected += text;
  }
  const std::string whole(600'000, 'y');  // larger than the buffer at once
  writer.Value().Write(whole);
  ASSERT_TRUE(writer.Value().Commit().Ok());
  EXPECT_EQ(ReadText(folder / "big"), expected + whole);
}

TEST(FileWriter, WritesThroughALinkAndKeepsPermissions) {
  TemporaryFolder folder;
  const fs::path real = folder.Write("real", "old");
  fs::permissions(real, fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("real", folder / "link");
  ASSERT_TRUE(WriteFile(folder / "link", "new").Ok());
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(ReadText(real), "new");
  EXPECT_EQ(fs::status(real).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(FileWriter, RefusesWhatCannotBeWritten) {
  TemporaryFolder folder;
  for (const fs::path& path : {folder.Path(), folder / "missing" / "map.asc"}) {
    const Outcome<FileWriter> writer = FileWriter::Open(path);
    ASSERT_TRUE(writer.Failed());
    EXPECT_EQ(writer.Text().rfind(path.string() + ": ", 0), 0U) << writer.Text();
  }
}

}  // namespace
}  // namespace ormel
