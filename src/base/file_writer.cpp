#include "base/file_writer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <random>
#include <system_error>
#include <utility>

namespace ormel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBufferBytes = 256 * 1024;
constexpr mode_t kAnyMode = 0666;  // less what the user's umask takes away

// Where the bytes of `path` really go: writing through a link must not replace the link.
fs::path ResolveLink(const fs::path& path) {
  std::error_code error;
  if (!fs::is_symlink(path, error)) return path;
  const fs::path resolved = fs::weakly_canonical(path, error);
  return error ? path : resolved;
}

fs::path NameBeside(const fs::path& target) {
  fs::path temporary = target;
  temporary += ".part" + std::to_string(std::random_device{}());
  return temporary;
}

// By which a file without a name is reached.
std::string LinkOf(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

// A file without a name in the folder of `target`; -1 when there cannot be one.
int OpenWithoutName(const fs::path& target) {
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  const int descriptor = open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, kAnyMode);
  // Without the links of /proc it could never get a name.
  if (descriptor >= 0 && access(LinkOf(descriptor).c_str(), F_OK) != 0) {
    close(descriptor);
    return -1;
  }
  return descriptor;
}

// A new file of that name, or of the first number behind it that is free; -1 when there is none.
// `path` becomes its name.
int OpenNew(fs::path& path) {
  constexpr int kMostNames = 1000;
  const fs::path wanted = path;
  for (int number = 1; number <= kMostNames; ++number) {
    path = wanted;
    if (number > 1) path += std::to_string(number);
    const int descriptor = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kAnyMode);
    if (descriptor >= 0 || errno != EEXIST) return descriptor;
  }
  return -1;
}

}  // namespace

FileWriter::FileWriter(fs::path target, fs::path temporary, int descriptor)
    : target_(std::move(target)), temporary_(std::move(temporary)), descriptor_(descriptor) {
  buffer_.reserve(kBufferBytes);
}

FileWriter::FileWriter(FileWriter&& other) noexcept
    : target_(std::move(other.target_)),
      temporary_(std::move(other.temporary_)),
      descriptor_(std::exchange(other.descriptor_, -1)),
      direct_(other.direct_),
      buffer_(std::move(other.buffer_)),
      error_(std::move(other.error_)),
      full_(other.full_) {}

Outcome<FileWriter> FileWriter::Open(const fs::path& path, TemporaryFile temporary) {
  const fs::path target = ResolveLink(path);
  std::error_code error;
  const fs::file_status status = fs::status(target, error);
  if (fs::is_directory(status)) {
    return Failure{FailureKind::kDisk, path.string() + ": is a folder"};
  }
  const bool direct = fs::exists(status) && !fs::is_regular_file(status);
  fs::path name;
  int descriptor = -1;
  if (direct) {
    descriptor = open(target.c_str(), O_WRONLY | O_CLOEXEC);
  } else if (temporary == TemporaryFile::kWithoutName) {
    descriptor = OpenWithoutName(target);
  }
  if (descriptor < 0 && !direct) {
    name = NameBeside(target);
    descriptor = open(name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kAnyMode);
  }
  if (descriptor < 0) {
    return Failure{errno == ENOSPC ? FailureKind::kDiskFull : FailureKind::kDisk,
                   path.string() + ": cannot be written: " + std::strerror(errno)};
  }
  FileWriter writer(target, std::move(name), descriptor);
  writer.direct_ = direct;
  return writer;
}

Outcome<FileWriter> FileWriter::OpenThrough(const fs::path& path, const fs::path& working) {
  Outcome<FileWriter> beside = Open(path);
  if (!beside.Ok() || beside.Value().direct_) return beside;
  fs::path name = working;
  const int descriptor = OpenNew(name);
  if (descriptor < 0) return beside;
  return FileWriter(beside.Value().target_, std::move(name), descriptor);
}

FileWriter::~FileWriter() {
  if (descriptor_ < 0) return;
  Close();
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

void FileWriter::KeepError() {
  if (!error_.empty()) return;
  full_ = errno == ENOSPC || errno == EFBIG || errno == EDQUOT;
  error_ = std::strerror(errno);
}

void FileWriter::Close() {
  if (close(std::exchange(descriptor_, -1)) != 0) KeepError();
}

Failure FileWriter::DiskFailure() const {
  return {full_ ? FailureKind::kDiskFull : FailureKind::kDisk,
          target_.string() + ": could not be written: " + error_};
}

void FileWriter::WriteNow(std::string_view bytes) {
  while (!bytes.empty() && error_.empty()) {
    const ssize_t count = write(descriptor_, bytes.data(), bytes.size());
    if (count > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      KeepError();
    }
  }
}

void FileWriter::Flush() {
  WriteNow(buffer_);
  buffer_.clear();
}

void FileWriter::Write(std::string_view bytes) {
  const bool isLarge = bytes.size() > kBufferBytes / 2;
  if (isLarge || buffer_.size() + bytes.size() > kBufferBytes) Flush();
  if (isLarge) return WriteNow(bytes);
  if (error_.empty()) buffer_ += bytes;
}

void FileWriter::WriteAt(std::uint64_t offset, std::string_view bytes) {
  Flush();
  while (!bytes.empty() && error_.empty()) {
    const ssize_t count =
        pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
      offset += static_cast<std::uint64_t>(count);
    } else if (errno != EINTR) {
      KeepError();
    }
  }
}

// A name beside the target, from which the file, whole by now, is moved there at once.
void FileWriter::GiveName() {
  fs::path name = NameBeside(target_);
  if (linkat(AT_FDCWD, LinkOf(descriptor_).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) ==
      0) {
    temporary_ = std::move(name);
  } else {
    KeepError();
  }
}

// Makes the finished file ready to take the target's place.
void FileWriter::Finish() {
  struct stat old {};
  if (stat(target_.c_str(), &old) == 0) {
    // A file that is replaced keeps its permissions, and goes only for one that is on the disk.
    (void)fchmod(descriptor_, old.st_mode & 07777);
    if (fsync(descriptor_) != 0 && errno != EINVAL) KeepError();  // EINVAL: it cannot be synced
  }
  if (error_.empty() && temporary_.empty()) GiveName();
}

// The working file of another disk is copied, first beside the target. False: `errno` says why not.
bool FileWriter::MoveIntoPlace() {
  if (rename(temporary_.c_str(), target_.c_str()) == 0) return true;
  if (errno != EXDEV) return false;
  const fs::path copy = NameBeside(target_);
  std::error_code error;
  fs::copy_file(temporary_, copy, error);
  if (!error) fs::rename(copy, target_, error);
  std::error_code ignored;
  fs::remove(error ? copy : temporary_, ignored);
  errno = error.value();
  return !error;
}

Outcome<> FileWriter::Commit() {
  Flush();
  if (error_.empty() && !direct_) Finish();
  Close();
  if (error_.empty() && !direct_ && !MoveIntoPlace()) KeepError();
  if (error_.empty()) return Done{};
  if (!temporary_.empty()) unlink(temporary_.c_str());
  return DiskFailure();
}

Outcome<> WriteFile(const fs::path& path, std::string_view bytes) {
  Outcome<FileWriter> writer = FileWriter::Open(path);
  if (!writer.Ok()) return writer.Stop();
  writer.Value().Write(bytes);
  return writer.Value().Commit();
}

void LetFileSizeLimitFail() { std::signal(SIGXFSZ, SIG_IGN); }

}  // namespace ormel
