// A disk that is full: as long as a SmallDisk lives, this process can write no file beyond so many
// bytes. Writing further fails as it does on a full disk.
#pragma once

#include <sys/resource.h>

#include <csignal>
#include <cstddef>

namespace ormel::testing {

class SmallDisk {
 public:
  explicit SmallDisk(std::size_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &oldLimit_);
    rlimit limit = oldLimit_;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  ~SmallDisk() {
    setrlimit(RLIMIT_FSIZE, &oldLimit_);
    std::signal(SIGXFSZ, oldHandler_);
  }

 private:
  rlimit oldLimit_{};
  void (*oldHandler_)(int);
};

}  // namespace ormel::testing
