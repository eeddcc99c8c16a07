// ormel-batch as a process: what it writes, what it says, and its exit status.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "support/model_folder.h"

namespace ormel {
namespace {

using testing::ModelFolder;
using testing::ReadText;
using testing::TemporaryFolder;

struct Ran {
  int status = -1;
  std::string output;
  std::string errors;
};

class Batch : public ::testing::Test {
 protected:
  Ran Run(const std::string& arguments, const std::string& from = ORMEL_SOURCE_DIR) const {
    const std::string command = "cd " + from + " && ORMEL_HOME=" + Path("home") +
                                " " ORMEL_BATCH " " + arguments + " >" + Path("output") + " 2>" +
                                Path("errors");
    const int status = std::system(command.c_str());
    return {WEXITSTATUS(status), ReadText(Path("output")), ReadText(Path("errors"))};
  }
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  TemporaryFolder folder_;
};

TEST_F(Batch, RunsTheSampleModel) {
  const Ran ran =
      Run("examples/kagwene/nesting.mif -o " + Path("out.asc") + " --picture " + Path("out.bmp"));
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.output + ran.errors, "");
  EXPECT_EQ(ReadText(Path("out.asc")), ReadText(ORMEL_SOURCE_DIR "/tests/data/nesting.asc"));
  EXPECT_EQ(ReadText(Path("out.bmp")).substr(0, 2), "BM");
  // All of the information file but its second line, which holds the time.
  std::string information = ReadText(Path("out.inf"));
  const std::size_t created = information.find("Created on ");
  EXPECT_EQ(created, std::string("Gorilla nesting\r\n").size());
  information.erase(created, information.find('\n', created) + 1 - created);
  EXPECT_EQ(information,
            "Gorilla nesting\r\n"
            "\r\n"
            "Factor:                  Weight:\r\n"
            "     vegetation255.asc      5  (High Values Good)\r\n"
            "     elevation255.asc       3  (High Values Good)\r\n"
            "     waterdist255.asc       2  (Low Values Good)\r\n"
            "     slope255.asc           1  (High Values Good)\r\n"
            "\r\n"
            "Constraints:\r\n"
            "    examples/kagwene/sanctuary.asc\r\n"
            "    examples/kagwene/walkable.asc\r\n");
}

TEST_F(Batch, RunsTheSampleSeries) {
  const Ran ran = Run("examples/kagwene/seasons.tsi -o " + Path("maps"));
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.output + ran.errors, "");
  int maps = 0;
  int pictures = 0;
  for (const auto& file : std::filesystem::directory_iterator(Path("maps"))) {
    maps += file.path().extension() == ".asc" ? 1 : 0;
    pictures += file.path().extension() == ".bmp" ? 1 : 0;
  }
  EXPECT_EQ(maps, 12);
  EXPECT_EQ(pictures, 12);
  EXPECT_TRUE(ReadText(Path("maps/nestingInformation.inf")).ends_with("\t12: 12/1/2008\r\n"));
  EXPECT_EQ(Run("examples/kagwene/seasons.tsi -o x --picture y.bmp").status, 2);
  folder_.Write("early.tsi", "1TS1$2008 January 1 0 0 0 2008 March 1 0 0 0 1 Month 0 #");
  const Ran early = Run(Path("early.tsi") + " -o " + Path("none"));
  EXPECT_EQ(early.status, 1);
  EXPECT_EQ(early.errors, "ormel-batch: " + Path("early.tsi") +
                              ": The model has not been filled in to its last page.\n");
}

TEST_F(Batch, SaysInOneLineWhatIsWrong) {
  const std::string map = folder_.Write("f.asc", ModelFolder::MapText({{1, 2}})).string();
  folder_.Write("gone.mif", "\"FAC$" + map + "#1#True#FAC$no/such.asc#1#True#\"\r\n");
  folder_.Write("noise.mif", std::string("\0\xFF#FOC$$#\"", 10));
  const std::string good =
      folder_.Write("good.mif", "\"FAC$" + map + "#1#True#CST$NULL\"\r\n").string();
  const std::string to = " -o " + Path("o.asc");
  const std::string help = " (--help tells more)";
  const std::tuple<std::string, int, std::string> cases[] = {
      {"no/such.mif" + to, 1, "no/such.mif: is not there"},
      {Path("gone.mif") + to, 1, "no/such.asc: is not there"},
      {Path("noise.mif") + to, 1, Path("noise.mif") + ": names no factor"},
      {good + " -o /no/o.asc", 1, "/no/o.asc: cannot be written: No such file or directory"},
      {good, 2, "no output given: -o OUT.asc"},
      {"", 2, "no model given" + help},
      {good + " -o", 2, "-o needs a file" + help},
      {good + " --fast", 2, "unknown option --fast" + help},
      {good + " again.mif -o x", 2, "more than one model: " + good + " and again.mif" + help}};
  for (const auto& [arguments, status, errors] : cases) {
    const Ran ran = Run(arguments);
    EXPECT_EQ(ran.status, status) << arguments;
    EXPECT_EQ(ran.errors, "ormel-batch: " + errors + "\n") << arguments;
    EXPECT_FALSE(std::filesystem::exists(Path("o.asc"))) << arguments;
  }
  EXPECT_EQ(Run("--script no/such.script").errors, "no/such.script: cannot be read\n");
}

TEST_F(Batch, WarnsOfWhatItPassesOver) {
  const std::string head = "c 2\r\nr 2\r\nx 100.5\r\ny 200\r\ns 30\r\n";
  const std::string whole = folder_.Write("f.asc", head + " 1 2\r\n 3 4\r\n").string();
  const std::string part = folder_.Write("part.asc", head + " 1 2\r\n 3\r\n").string();
  const std::string mask = folder_.Write("mask.asc", head + " 1 1 1\r\n 1 1\r\n").string();
  folder_.Write("m.mif", "\"FAC$" + whole + "#1#True#FAC$" + part + "#1#True#CST$" + mask + "#\"");
  const Ran ran = Run(Path("m.mif") + " -o " + Path("o.asc"));
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.errors.find("Bad Constraint! " + mask), 0u) << ran.errors;
  EXPECT_NE(ran.errors.find(part + ": ends in row 2 of 2\n"), std::string::npos) << ran.errors;
}

TEST_F(Batch, WritesThePictureThatItsNameAsksFor) {
  EXPECT_EQ(Run("examples/kagwene/nesting.mif -o " + Path("o.asc") + " --picture " + Path("o.png"))
                .status,
            0);
  EXPECT_EQ(ReadText(Path("o.png")).substr(0, 4), "\x89PNG");
}

TEST_F(Batch, AFileSizeLimitIsAFailedWrite) {
  folder_.Write("out.asc", "old");
  const std::string blocks = "100";  // of 512 bytes: a third of the map
  const Ran ran = Run("examples/kagwene/nesting.mif -o " + Path("out.asc"),
                      ORMEL_SOURCE_DIR " && ulimit -f " + blocks);
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.errors,
            "ormel-batch: " + Path("out.asc") + ": could not be written: File too large\n");
  EXPECT_EQ(ReadText(Path("out.asc")), "old");
}

TEST_F(Batch, AModelBuiltByHandGivesTheSameBytes) {
  const std::string here = folder_.Path().string();
  std::filesystem::create_symlink(ORMEL_SOURCE_DIR "/examples", folder_ / "examples");
  EXPECT_EQ(Run("--script " ORMEL_SOURCE_DIR "/tests/scripts/model_by_hand.script", here).errors,
            "");
  EXPECT_EQ(Run("nesting.mif -o batch.asc", here).status, 0);
  EXPECT_EQ(ReadText(Path("batch.asc")), ReadText(Path("by_hand.asc")));
}

TEST_F(Batch, RunsScriptsFromStandardInputToo) {
  folder_.Write("s", "click frmBuild.cmdOk\nprint frmDraw.PList\nclick frmDraw.nothing\n");
  const Ran ran = Run("--script - examples/kagwene/nesting.mif <" + Path("s"));
  EXPECT_EQ(ran.status, 2);
  EXPECT_EQ(ran.output, "vegetation255.asc\nelevation255.asc\nwaterdist255.asc\nslope255.asc\n");
  EXPECT_EQ(ran.errors.find("-:3: "), 0u) << ran.errors;
}

#ifndef __SANITIZE_ADDRESS__
TEST_F(Batch, TakesFiveBytesACellWhateverTheNumberOfFactors) {
  constexpr long kCells = 1000L * 1000L;
  const testing::Cells cells(1000, std::vector<double>(1000, 7));
  const std::string map = folder_.Write("f.asc", ModelFolder::MapText(cells)).string();
  std::string model = "\"";
  for (int factor = 0; factor < 12; ++factor) model += "FAC$" + map + "#1#True#";
  const std::string file = folder_.Write("m.mif", model + "CST$NULL\"").string();
  const std::string output = Path("o.asc");
  const pid_t child = fork();
  if (child == 0) {
    execl(ORMEL_BATCH, "ormel-batch", file.c_str(), "-o", output.c_str(), nullptr);
    _exit(127);
  }
  int status = 0;
  rusage usage{};
  ASSERT_EQ(wait4(child, &status, 0, &usage), child);
  EXPECT_EQ(status, 0);
  EXPECT_LE(usage.ru_maxrss, (5 * kCells + 32 * 1024 * 1024) / 1024);
}
#endif

}  // namespace
}  // namespace ormel
