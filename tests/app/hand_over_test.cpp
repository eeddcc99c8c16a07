// ormel as a process that others hand their files to, with nobody before it who could press a
// button.

#ifdef ORMEL_PROGRAM

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

using namespace std::chrono_literals;
using testing::ReadText;
using testing::TemporaryFolder;

class HandOver : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("ORMEL_HOME", (folder_ / "home").c_str(), 1);
    setenv("XDG_RUNTIME_DIR", folder_.Path().c_str(), 1);
  }

  static pid_t Start(std::string file = "") {
    std::string program = ORMEL_PROGRAM;
    char* arguments[] = {program.data(), file.empty() ? nullptr : file.data(), nullptr};
    pid_t process = 0;
    EXPECT_EQ(posix_spawn(&process, ORMEL_PROGRAM, nullptr, nullptr, arguments, environ), 0);
    return process;
  }
  static int EndOf(pid_t process) {
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  // What the program has opened, as it remembers it, waiting for `count` of them.
  std::string Opened(int count) const {
    std::string text;
    for (const auto end = std::chrono::steady_clock::now() + 60s;
         std::chrono::steady_clock::now() < end; std::this_thread::sleep_for(20ms)) {
      text = std::filesystem::exists(folder_ / "home/Desktop.inf")
                 ? ReadText(folder_ / "home/Desktop.inf")
                 : "";
      if (std::count(text.begin(), text.end(), '\n') == count) break;
    }
    return text;
  }

  TemporaryFolder folder_;
};

TEST_F(HandOver, FilesOfOtherStartsOpenAtOnce) {
  const std::string maps = ORMEL_SOURCE_DIR "/examples/kagwene/";
  const pid_t first = Start(maps + "slope255.asc");
  const std::string opened = "file," + maps + "slope255.asc\r\n";
  EXPECT_EQ(Opened(1), opened);
  EXPECT_EQ(EndOf(Start(maps + "elevation255.asc")), 0);
  EXPECT_EQ(Opened(2), "file," + maps + "elevation255.asc\r\n" + opened);
  EXPECT_EQ(EndOf(Start(maps + "waterdist255.asc")), 0);
  EXPECT_EQ(Opened(3),
            "file," + maps + "waterdist255.asc\r\nfile," + maps + "elevation255.asc\r\n" + opened);
  kill(first, SIGTERM);
  EndOf(first);
}

}  // namespace
}  // namespace ormel

#endif
