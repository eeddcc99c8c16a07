#include "shell/single_instance.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <thread>
#include <utility>

namespace ormel {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr char kWakeKey = '\x12';  // stands for F12, which shows the receive box
constexpr char kEnd = '?';
constexpr char kTaken = '+';
constexpr std::size_t kLongestText = 64 * 1024;
constexpr std::size_t kMostClients = 64;
constexpr std::chrono::milliseconds kRetry{20};

// A file descriptor that closes itself.
class Handle {
 public:
  explicit Handle(int descriptor) : descriptor_(descriptor) {}
  ~Handle() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  Handle(Handle&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Handle& operator=(Handle&&) = delete;

  int Get() const { return descriptor_; }
  bool Ok() const { return descriptor_ >= 0; }
  int Release() { return std::exchange(descriptor_, -1); }

 private:
  int descriptor_;
};

Failure DiskFailure(const fs::path& path) {
  return {FailureKind::kDisk, path.string() + ": " + std::strerror(errno)};
}

bool IsOwn(const fs::path& folder) {
  struct stat status {};
  return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == geteuid();
}

// The folder of lock and socket, open to this person alone.
Outcome<fs::path> OwnFolder(const std::string& programFolder) {
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  const bool hasRuntime = runtime != nullptr && *runtime != '\0' && IsOwn(runtime);
  const fs::path folder =
      hasRuntime ? fs::path(runtime) / "ormel" : fs::path(programFolder) / "run";
  std::error_code error;
  fs::create_directories(folder, error);
  if (!IsOwn(folder) || chmod(folder.c_str(), S_IRWXU) != 0) return DiskFailure(folder);
  return folder;
}

// The socket's address by way of its open folder: an address has room for 107 bytes only, and
// folders may be deeper than that.
sockaddr_un AddressIn(const Handle& folder) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = "/proc/self/fd/" + std::to_string(folder.Get()) + "/ormel.socket";
  std::copy(path.begin(), path.end(), address.sun_path);
  return address;
}

Handle OpenFolder(const fs::path& folder) {
  return Handle(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

bool IsSamePerson(int connection) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
         peer.uid == geteuid();
}

// Waits for one event on the connection; false when the time is over.
bool WaitFor(int connection, short event, Clock::time_point end) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
  pollfd wanted{connection, event, 0};
  return left.count() > 0 && poll(&wanted, 1, static_cast<int>(left.count())) > 0;
}

bool SendAll(int connection, std::string_view text, Clock::time_point end) {
  while (!text.empty()) {
    if (!WaitFor(connection, POLLOUT, end)) return false;
    const ssize_t sent = send(connection, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

// Whether the instance that listens in the folder has taken the text.
bool HandOver(const fs::path& folder, const std::string& file, Clock::time_point end) {
  const Handle place = OpenFolder(folder);
  const Handle connection(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!place.Ok() || !connection.Ok()) return false;
  const sockaddr_un address = AddressIn(place);
  const auto* target = reinterpret_cast<const sockaddr*>(&address);
  if (connect(connection.Get(), target, sizeof address) != 0 || !IsSamePerson(connection.Get())) {
    return false;
  }
  if (!SendAll(connection.Get(), kWakeKey + file + kEnd, end)) return false;
  shutdown(connection.Get(), SHUT_WR);
  char answer = 0;
  return WaitFor(connection.Get(), POLLIN, end) && recv(connection.Get(), &answer, 1, 0) == 1 &&
         answer == kTaken;
}

// The lock of the one instance; not open when another process holds it.
Handle TakeLock(const fs::path& file) {
  Handle lock(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR));
  if (lock.Ok() && flock(lock.Get(), LOCK_EX | LOCK_NB) == 0) return lock;
  return Handle(-1);
}

// Whoever holds the lock may remove the socket that an earlier holder left behind.
Handle Listen(const fs::path& folder) {
  const Handle place = OpenFolder(folder);
  Handle listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!place.Ok() || !listener.Ok()) return Handle(-1);
  const sockaddr_un address = AddressIn(place);
  unlink(address.sun_path);
  const bool bound =
      bind(listener.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
      chmod(address.sun_path, S_IRUSR | S_IWUSR) == 0 && listen(listener.Get(), SOMAXCONN) == 0;
  return bound ? std::move(listener) : Handle(-1);
}

bool WatchFor(int events, int descriptor) {
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.fd = descriptor;
  return epoll_ctl(events, EPOLL_CTL_ADD, descriptor, &event) == 0;
}

}  // namespace

Outcome<std::unique_ptr<SingleInstance>> SingleInstance::ClaimOrHandOver(
    const std::string& programFolder, const std::string& file, std::chrono::milliseconds patience) {
  const Outcome<fs::path> folder = OwnFolder(programFolder);
  if (!folder.Ok()) return folder.Stop();
  const Clock::time_point end = Clock::now() + patience;
  do {
    Handle lock = TakeLock(folder.Value() / "ormel.lock");
    if (lock.Ok()) {
      Handle listener = Listen(folder.Value());
      Handle events(epoll_create1(EPOLL_CLOEXEC));
      if (!listener.Ok() || !events.Ok() || !WatchFor(events.Get(), listener.Get())) {
        return DiskFailure(folder.Value());
      }
      return std::unique_ptr<SingleInstance>(
          new SingleInstance(lock.Release(), listener.Release(), events.Release()));
    }
    if (file.empty() || HandOver(folder.Value(), file, end)) {
      return std::unique_ptr<SingleInstance>();
    }
    std::this_thread::sleep_for(kRetry);  // it is not listening yet, or not alive any more
  } while (Clock::now() < end);
  return Failure{FailureKind::kNotFound, "ORMEL Not Available"};
}

SingleInstance::SingleInstance(int lock, int listener, int events)
    : lock_(lock), listener_(listener), events_(events) {}

SingleInstance::~SingleInstance() {
  for (const Client& client : clients_) close(client.descriptor);
  close(events_);
  close(listener_);
  close(lock_);  // the socket's file stays, and is of no use to anybody
}

void SingleInstance::Accept() {
  while (true) {
    const int accepted = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (accepted < 0) return;
    Handle connection(accepted);
    if (!IsSamePerson(accepted) || !WatchFor(events_, accepted)) continue;
    if (clients_.size() == kMostClients) {  // the oldest has had its time
      close(clients_.front().descriptor);
      clients_.erase(clients_.begin());
    }
    clients_.push_back({connection.Release(), {}});
  }
}

bool SingleInstance::ReadFrom(Client& client, std::vector<std::string>& arrived) {
  std::array<char, 4096> bytes{};
  while (true) {
    const ssize_t count = recv(client.descriptor, bytes.data(), bytes.size(), 0);
    if (count < 0) return errno == EAGAIN || errno == EINTR;
    if (count == 0) break;
    client.text.append(bytes.data(), static_cast<std::size_t>(count));
    if (client.text.size() > kLongestText) return false;
  }
  const std::string& text = client.text;
  if (text.size() > 2 && text.front() == kWakeKey && text.back() == kEnd) {
    arrived.push_back(text.substr(1));
    (void)send(client.descriptor, &kTaken, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
  }
  return false;
}

std::vector<std::string> SingleInstance::Receive() {
  std::vector<std::string> arrived;
  Accept();
  for (Client& client : clients_) {
    if (ReadFrom(client, arrived)) continue;
    close(client.descriptor);
    client.descriptor = -1;
  }
  std::erase_if(clients_, [](const Client& client) { return client.descriptor < 0; });
  return arrived;
}

}  // namespace ormel
