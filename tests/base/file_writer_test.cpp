#include "base/file_writer.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "support/small_disk.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;
using testing::ReadText;
using testing::SmallDisk;
using testing::TemporaryFolder;

// Each begins with a folder that holds an old map and nothing else, and holds for temporary files
// of both kinds.
class FileWriting : public ::testing::TestWithParam<TemporaryFile> {
 protected:
  // Writes `text` so many times, and puts it into place unless the run is `stopped`.
  Outcome<> Write(const std::string& text, int times, bool stopped = false) {
    Outcome<FileWriter> writer = FileWriter::Open(path_, GetParam());
    if (!writer.Ok()) return writer.Stop();
    for (int i = 0; i < times; ++i) writer.Value().Write(text);
    EXPECT_EQ(ReadText(path_), "old");
    return stopped ? Outcome<>(Cancelled{}) : writer.Value().Commit();
  }

  TemporaryFolder folder_;
  const fs::path path_ = folder_.Write("map.asc", "old");
};

TEST_P(FileWriting, ReplacesTheOldFileOnlyWhenCommitted) {
  EXPECT_TRUE(Write(std::string(1000, 'x'), 1000, true).WasCancelled());
  EXPECT_EQ(ReadText(path_), "old");
  EXPECT_EQ(folder_.Entries(), 1);
  EXPECT_TRUE(Write("ne", 2).Ok());
  EXPECT_EQ(ReadText(path_), "nene");
  EXPECT_EQ(folder_.Entries(), 1);
}

// The disk fills up in the first bytes, within the buffer, and after several buffers.
TEST_P(FileWriting, AFullDiskLeavesTheOldFileAndNothingElse) {
  for (const std::size_t room : {std::size_t{0}, std::size_t{100}, std::size_t{700'000}}) {
    Outcome<> outcome = Done{};
    {
      SmallDisk disk(room);
      outcome = Write(std::string(1000, 'x'), 1000);
    }
    ASSERT_TRUE(outcome.Failed());
    EXPECT_EQ(outcome.Why().kind, FailureKind::kDiskFull);
    EXPECT_NE(outcome.Text().find("map.asc: could not be written"), std::string::npos);
    EXPECT_EQ(ReadText(path_), "old") << room;
    EXPECT_EQ(folder_.Entries(), 1) << room;
  }
}

TEST_P(FileWriting, WritesMoreThanItsBufferInOrder) {
  std::string expected;
  Outcome<FileWriter> writer = FileWriter::Open(folder_ / "big", GetParam());
  ASSERT_TRUE(writer.Ok());
  for (int row = 0; row < 100'000; ++row) {
    const std::string text = std::to_string(row) + "\r\n";
    writer.Value().Write(text);
    expected += text;
  }
  // Larger than the buffer at once, and nearly as large, with a little in front.
  for (const std::size_t size : {600'000UL, 200'000UL}) {
    for (const std::string& text : {std::string("x"), std::string(size, 'y')}) {
      writer.Value().Write(text);
      expected += text;
    }
  }
  ASSERT_TRUE(writer.Value().Commit().Ok());
  EXPECT_TRUE(ReadText(folder_ / "big") == expected);
}

// The program is killed before, in the middle of and behind the writing. What it wrote stays only
// where temporary files have names.
TEST_P(FileWriting, AKilledProgramLeavesTheOldFile) {
  const int nameless = open(folder_.Path().c_str(), O_TMPFILE | O_WRONLY, 0600);
  const bool leavesNothing = GetParam() == TemporaryFile::kWithoutName && nameless >= 0;
  close(nameless);
  for (const int times : {0, 1, 1000}) {
    const pid_t child = fork();
    if (child == 0) {
      Outcome<FileWriter> writer = FileWriter::Open(path_, GetParam());
      for (int i = 0; i < times; ++i) writer.Value().Write(std::string(1000, 'x'));
      kill(getpid(), SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(ReadText(path_), "old");
  }
  EXPECT_EQ(folder_.Entries(), leavesNothing ? 1 : 4);
}

TEST_P(FileWriting, GoesThroughALinkAndKeepsPermissions) {
  fs::permissions(path_, fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("map.asc", folder_ / "link");
  ASSERT_TRUE(WriteFile(folder_ / "link", "new").Ok());
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_EQ(ReadText(path_), "new");
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_P(FileWriting, RefusesWhatCannotBeWritten) {
  for (const fs::path& path : {folder_.Path(), folder_ / "missing" / "map.asc"}) {
    const Outcome<FileWriter> writer = FileWriter::Open(path);
    ASSERT_TRUE(writer.Failed());
    EXPECT_EQ(writer.Text().rfind(path.string() + ": ", 0), 0U) << writer.Text();
  }
}

INSTANTIATE_TEST_SUITE_P(, FileWriting,
                         ::testing::Values(TemporaryFile::kWithoutName, TemporaryFile::kNamed));

// ---- Through a working file ---------------------------------------------------------------------

TEST(WorkingFile, IsThereForTheLengthOfTheWorkAndNeverOverAnother) {
  const TemporaryFolder folder;
  const TemporaryFolder workshop;
  const fs::path path = folder.Write("map.asc", "old");
  workshop.Write("temp999", "mine");
  for (const bool stopped : {true, false}) {
    Outcome<FileWriter> writer = FileWriter::OpenThrough(path, workshop / "temp999");
    ASSERT_TRUE(writer.Ok());
    writer.Value().Write("new");
    EXPECT_TRUE(fs::exists(workshop / "temp9992"));
    EXPECT_EQ(ReadText(path), "old");
    const Outcome<> ended = stopped ? Outcome<>(Cancelled{}) : writer.Value().Commit();
    EXPECT_EQ(ended.Ok(), !stopped) << ended.Text();
  }
  EXPECT_EQ(ReadText(path), "new");
  EXPECT_EQ(ReadText(workshop / "temp999"), "mine");
  EXPECT_EQ(workshop.Entries(), 1);
  EXPECT_EQ(folder.Entries(), 1);
}

TEST(WorkingFile, MayLieOnAnotherDiskOrHaveNoPlace) {
  const TemporaryFolder folder;
  const fs::path path = folder / "map.asc";
  const fs::path memory = "/dev/shm/ormel-test-" + std::to_string(getpid());
  for (const fs::path& working : {memory, fs::path("/no/such/folder/temp999")}) {
    Outcome<FileWriter> writer = FileWriter::OpenThrough(path, working);
    ASSERT_TRUE(writer.Ok());
    writer.Value().Write(working.string());
    EXPECT_TRUE(writer.Value().Commit().Ok());
    EXPECT_EQ(ReadText(path), working.string());
    EXPECT_FALSE(fs::exists(working));
    EXPECT_EQ(folder.Entries(), 1);
  }
}

}  // namespace
}  // namespace ormel
