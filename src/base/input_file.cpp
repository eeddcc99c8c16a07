#include "base/input_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

namespace ormel {
namespace {

namespace fs = std::filesystem;

}  // namespace

struct InputFile::Shared {
  Shared(int openDescriptor, std::uint64_t bytes, std::string name)
      : descriptor(openDescriptor), size(bytes), path(std::move(name)) {}
  Shared(const Shared&) = delete;
  Shared& operator=(const Shared&) = delete;
  ~Shared() { close(descriptor); }

  const int descriptor;
  const std::uint64_t size;
  const std::string path;
};

Outcome<InputFile> InputFile::Open(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) return Failure{FailureKind::kNotFound, path.string() + ": is not there"};
  if (fs::is_directory(status)) return Failure{FailureKind::kDisk, path.string() + ": is a folder"};
  // Devices and pipes have no end, or cannot be read twice.
  if (!fs::is_regular_file(status)) {
    return Failure{FailureKind::kDisk, path.string() + ": is no plain file"};
  }
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) {
    return Failure{FailureKind::kDisk, path.string() + ": cannot be read: " + std::strerror(errno)};
  }
  const std::uintmax_t size = fs::file_size(path, error);
  InputFile file;
  file.shared_ = std::make_shared<const Shared>(descriptor, error ? 0 : size, path.string());
  return file;
}

std::uint64_t InputFile::Size() const { return IsOpen() ? shared_->size : 0; }

std::size_t InputFile::ReadAt(std::uint64_t offset, std::span<char> bytes,
                              std::string& error) const {
  std::size_t held = 0;
  while (held < bytes.size()) {
    const ssize_t count = pread(shared_->descriptor, bytes.data() + held, bytes.size() - held,
                                static_cast<off_t>(offset + held));
    if (count == 0) break;
    if (count > 0) {
      held += static_cast<std::size_t>(count);
    } else if (errno != EINTR) {
      error = shared_->path + ": cannot be read to its end: " + std::strerror(errno);
      break;
    }
  }
  return held;
}

Outcome<std::string> ReadWholeFile(const std::filesystem::path& path) {
  constexpr std::uint64_t kMostBytes = 256U << 20U;
  const Outcome<InputFile> file = InputFile::Open(path);
  if (!file.Ok()) return file.Stop();
  if (file.Value().Size() > kMostBytes) {
    return Failure{FailureKind::kTooLarge, path.string() + ": is too large for such a file"};
  }
  std::string bytes(static_cast<std::size_t>(file.Value().Size()), '\0');
  std::string error;
  bytes.resize(file.Value().ReadAt(0, bytes, error));
  if (!error.empty()) return Failure{FailureKind::kDisk, error};
  return bytes;
}

}  // namespace ormel
