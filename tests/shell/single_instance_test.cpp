// Hand-overs between real processes.

#include "shell/single_instance.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <set>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::TemporaryFolder;

// Runs `work` in a process of its own, which ends with its result.
pid_t Start(const std::function<int()>& work) {
  const pid_t child = fork();
  if (child == 0) _exit(work());
  return child;
}

int EndOf(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class Instances : public ::testing::Test {
 protected:
  void SetUp() override { setenv("XDG_RUNTIME_DIR", folder_.Path().c_str(), 1); }

  static auto Try(const std::string& file, int milliseconds = 5000) {
    return SingleInstance::ClaimOrHandOver("/nowhere", file,
                                           std::chrono::milliseconds(milliseconds));
  }
  static std::unique_ptr<SingleInstance> Claim(const std::string& file = "") {
    auto claimed = Try(file);
    return claimed.Ok() ? std::move(claimed.Value()) : nullptr;
  }
  // 0: handed over, 1: became the instance, 2: failed.
  static int SecondStart(const std::string& file, int milliseconds = 5000) {
    const auto claimed = Try(file, milliseconds);
    return !claimed.Ok() ? 2 : claimed.Value() == nullptr ? 0 : 1;
  }
  static std::multiset<std::string> ReceiveFor(SingleInstance& instance, std::size_t count) {
    std::multiset<std::string> arrived;
    pollfd wanted{instance.Descriptor(), POLLIN, 0};
    while (arrived.size() < count && poll(&wanted, 1, 5000) > 0) {
      for (std::string& text : instance.Receive()) arrived.insert(std::move(text));
    }
    return arrived;
  }
  // A second start hands its file over to `first`, if there is one.
  static void ExpectHandOver(const std::unique_ptr<SingleInstance>& first,
                             const std::string& file) {
    ASSERT_NE(first, nullptr);
    const pid_t second = Start([&] { return SecondStart(file); });
    EXPECT_EQ(ReceiveFor(*first, 1), (std::multiset<std::string>{file + "?"}));
    EXPECT_EQ(EndOf(second), 0);
  }
  int Connect() const {
    const int connection = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = (folder_ / "ormel/ormel.socket").string();
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    return connection;
  }

  TemporaryFolder folder_;
};

TEST_F(Instances, ASecondStartHandsItsFileOver) {
  const auto first = Claim();
  ExpectHandOver(first, "/maps/north ridge, \"2024\"? " + std::string(5000, 'x') + ".asc");
  EXPECT_EQ(EndOf(Start([] { return SecondStart(""); })), 0) << "without a file it only looks";
  EXPECT_EQ(Try("/a.asc", 50).Text(), "ORMEL Not Available") << "nobody answers";
}

TEST_F(Instances, ADeadOnesSocketDoesNotBlockAStart) {
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t dead = Start([&] {
    const auto instance = Claim();
    (void)!write(ready[1], "x", 1);
    pause();
    return instance == nullptr ? 1 : 0;
  });
  char byte = 0;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  EXPECT_EQ(SecondStart("", 0), 0) << "it runs";
  kill(dead, SIGKILL);
  EndOf(dead);
  ASSERT_TRUE(std::filesystem::exists(folder_ / "ormel/ormel.socket"));
  ExpectHandOver(Claim("a.asc"), "/b.asc");
}

TEST_F(Instances, OfManyStartsAtOnceOneRunsAndGetsAllFiles) {
  constexpr int kStarts = 8;
  for (int round = 0; round < 5; ++round) {
    int go[2];
    ASSERT_EQ(pipe(go), 0);
    pid_t children[kStarts];
    for (int i = 0; i < kStarts; ++i) {
      children[i] = Start([&go, i] {
        close(go[1]);
        char byte = 0;
        (void)!read(go[0], &byte, 1);  // returns for all of them when the other end closes
        const auto instance = Claim("/map" + std::to_string(i));
        if (instance == nullptr) return 0;
        const auto arrived = ReceiveFor(*instance, kStarts - 1);
        const std::set<std::string> different(arrived.begin(), arrived.end());
        return different.size() == kStarts - 1 && !different.count("/map" + std::to_string(i) + "?")
                   ? 1
                   : 3;
      });
    }
    close(go[0]);
    close(go[1]);
    int instances = 0;
    for (const pid_t child : children) {
      const int result = EndOf(child);
      EXPECT_TRUE(result == 0 || result == 1) << result;
      instances += result;
    }
    EXPECT_EQ(instances, 1);
  }
}

TEST_F(Instances, WhoSendsNonsenseOrNothingKeepsNobodyElseFromIt) {
  const auto first = Claim();
  ASSERT_NE(first, nullptr);
  const int silent = Connect();
  const int half = Connect();
  ASSERT_EQ(send(half, "\x12/a.a", 5, 0), 5);
  close(half);
  const int loud = Connect();
  const std::string junk(60000, 'j');
  (void)send(loud, junk.data(), junk.size(), MSG_DONTWAIT);
  ExpectHandOver(first, "/good.asc");
  (void)send(loud, junk.data(), junk.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
  EXPECT_TRUE(first->Receive().empty());
  close(silent);
  close(loud);
}

TEST_F(Instances, OtherPeopleCannotTalkToIt) {
  const auto first = Claim();
  ASSERT_NE(first, nullptr);
  const auto permissions = std::filesystem::status(folder_ / "ormel").permissions();
  EXPECT_EQ(permissions, std::filesystem::perms::owner_all);
  if (geteuid() != 0) GTEST_SKIP() << "only root can become another person";
  const int mine = Connect();
  // Even one who gets as far as a connection is not listened to.
  std::filesystem::permissions(folder_.Path(), std::filesystem::perms::all);
  std::filesystem::permissions(folder_ / "ormel", std::filesystem::perms::all);
  std::filesystem::permissions(folder_ / "ormel/ormel.socket", std::filesystem::perms::all);
  const pid_t stranger = Start([this] {
    if (setuid(65534) != 0) return 3;
    const int connection = Connect();
    (void)send(connection, "\x12/a.asc?", 8, 0);
    shutdown(connection, SHUT_WR);
    char answer = 0;
    return recv(connection, &answer, 1, 0) == 1 ? 1 : 0;
  });
  pollfd wanted{first->Descriptor(), POLLIN, 0};
  while (waitpid(stranger, nullptr, WNOHANG) == 0) {
    if (poll(&wanted, 1, 100) > 0) {
      EXPECT_TRUE(first->Receive().empty());
    }
  }
  close(mine);
}

TEST_F(Instances, ADeepFolderHasASocketToo) {
  const auto deep = folder_ / std::string(120, 'd');
  std::filesystem::create_directories(deep);
  setenv("XDG_RUNTIME_DIR", deep.c_str(), 1);
  ExpectHandOver(Claim(), "/a.asc");
}

TEST_F(Instances, WithoutARuntimeFolderTheProgramsOwnIsUsed) {
  unsetenv("XDG_RUNTIME_DIR");
  const std::string home = (folder_ / "home").string();
  EXPECT_TRUE(SingleInstance::ClaimOrHandOver(home, "").Ok());
  EXPECT_TRUE(std::filesystem::exists(folder_ / "home/run/ormel.lock"));
  folder_.Write("file", "");
  EXPECT_TRUE(SingleInstance::ClaimOrHandOver((folder_ / "file").string(), "").Failed());
}

}  // namespace
}  // namespace ormel
