#include "mce/timestep/frame_store.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace ormel {
namespace {

constexpr int kOwnerOnly = 0600;

std::string SizeText(std::size_t bytes) {
  constexpr std::size_t kMegabyte = 1024 * 1024;
  return std::to_string(bytes / kMegabyte + 1) + " MiB";
}

// A file that nobody else sees, as large as the frames. A negative number: `errno` says why not.
int OpenHiddenFile(const std::string& folder, std::size_t bytes) {
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
  int file = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kOwnerOnly);
  if (file < 0) {  // the file system has no files without names
    std::string name = (std::filesystem::path(folder) / "framesXXXXXX").string();
    file = mkstemp(name.data());
    if (file >= 0) unlink(name.c_str());
  }
  if (file < 0) return file;
  const int fault = posix_fallocate(file, 0, static_cast<off_t>(bytes));
  if (fault == 0) return file;
  close(file);
  errno = fault;
  return -1;
}

Failure NoRoom(const std::string& folder, std::size_t bytes) {
  const bool full = errno == ENOSPC || errno == EFBIG || errno == EDQUOT;
  return {full ? FailureKind::kDiskFull : FailureKind::kDisk,
          folder + ": " + SizeText(bytes) +
              " for the maps of all steps cannot be kept there: " + std::strerror(errno)};
}

}  // namespace

std::uint64_t QuarterOfMemory() {
  const auto pages = static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES));
  return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGE_SIZE)) / 4;
}

Outcome<FrameStore> FrameStore::Make(int columns, int rows, int steps, std::uint64_t memory,
                                     const std::string& folder) {
  FrameStore store;
  store.columns_ = static_cast<std::size_t>(columns);
  store.rows_ = static_cast<std::size_t>(rows);
  const std::size_t bytes =
      store.columns_ * store.rows_ * static_cast<std::size_t>(steps) * sizeof(float);
  const bool inFile = bytes > memory;
  const int file = inFile ? OpenHiddenFile(folder, bytes) : -1;
  if (inFile && file < 0) return NoRoom(folder, bytes);
  void* place = mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                     inFile ? MAP_SHARED : MAP_PRIVATE | MAP_ANONYMOUS, file, 0);
  if (inFile) close(file);
  if (place == MAP_FAILED) {
    return Failure{FailureKind::kTooLarge, SizeText(bytes) + " for the maps of all steps do not " +
                                               "fit into the memory of this machine."};
  }
  store.cells_ = static_cast<float*>(place);
  store.bytes_ = bytes;
  return store;
}

FrameStore::~FrameStore() {
  if (cells_ != nullptr) munmap(cells_, bytes_);
}

}  // namespace ormel
