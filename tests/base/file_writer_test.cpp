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

// Each begins with a folder that holds an old map and nothing else.
class FileWriting : public ::testing::Test {
 protected:
  // Writes `text` so many times, and puts it into place unless the run is `stopped`.
  Outcome<> Write(const std::string& text, int times, bool stopped = false) {
    Outcome<FileWriter> writer = FileWriter::Open(path_);
    if (!writer.Ok()) return writer.Stop();
    for (int i = 0; i < times; ++i) writer.Value().Write(text);
    EXPECT_EQ(ReadText(path_), "old");
    return stopped ? Outcome<>(Cancelled{}) : writer.Value().Commit();
  }

  TemporaryFolder folder_;
  const fs::path path_ = folder_.Write("map.asc", "old");
};

TEST_F(FileWriting, ReplacesTheOldFileOnlyWhenCommitted) {
  EXPECT_TRUE(Write(std::string(1000, 'x'), 1000, true).WasCancelled());
  EXPECT_EQ(ReadText(path_), "old");
  EXPECT_EQ(folder_.Entries(), 1);
  EXPECT_TRUE(Write("ne", 2).Ok());
  EXPECT_EQ(ReadText(path_), "nene");
  EXPECT_EQ(folder_.Entries(), 1);
}

// The disk fills up in the first bytes, within the buffer, and after several buffers.
TEST_F(FileWriting, AFullDiskLeavesTheOldFileAndNothingElse) {
  for (const std::size_t room : {std::size_t{0}, std::size_t{100}, std::size_t{700'000}}) {
    Outcome<> outcome = Done{};
    {
      SmallDisk disk(room);
      outcome = Write(std::string(1000, 'x'), 1000);
    }
    ASSERT_TRUE(outcome.Failed());
    EXPECT_EQ(outcome.Why().kind, FailureKind::kDisk);
    EXPECT_NE(outcome.Text().find("map.asc: could not be written"), std::string::npos);
    EXPECT_EQ(ReadText(path_), "old") << room;
    EXPECT_EQ(folder_.Entries(), 1) << room;
  }
}

TEST_F(FileWriting, WritesMoreThanItsBufferInOrder) {
  std::string expected;
  Outcome<FileWriter> writer = FileWriter::Open(folder_ / "big");
  ASSERT_TRUE(writer.Ok());
  for (int row = 0; row < 100'000; ++row) {
    const std::string text = std::to_string(row) + "\r\n";
    writer.Value().Write(text);
    expected += text;
  }
  const std::string whole(600'000, 'y');  // larger than the buffer at once
  writer.Value().Write(whole);
  ASSERT_TRUE(writer.Value().Commit().Ok());
  EXPECT_EQ(ReadText(folder_ / "big"), expected + whole);
}

TEST_F(FileWriting, GoesThroughALinkAndKeepsPermissions) {
  fs::permissions(path_, fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("map.asc", folder_ / "link");
  ASSERT_TRUE(WriteFile(folder_ / "link", "new").Ok());
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_EQ(ReadText(path_), "new");
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(FileWriting, RefusesWhatCannotBeWritten) {
  for (const fs::path& path : {folder_.Path(), folder_ / "missing" / "map.asc"}) {
    const Outcome<FileWriter> writer = FileWriter::Open(path);
    ASSERT_TRUE(writer.Failed());
    EXPECT_EQ(writer.Text().rfind(path.string() + ": ", 0), 0U) << writer.Text();
  }
}

}  // namespace
}  // namespace ormel
