#include "base/file_writer.h"

#include <cerrno>
#include <cstring>
#include <random>
#include <system_error>
#include <utility>

namespace ormel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBufferBytes = 256 * 1024;

// Where the bytes of `path` really go: writing through a link must not replace the link.
fs::path ResolveLink(const fs::path& path) {
  std::error_code error;
  if (!fs::is_symlink(path, error)) return path;
  const fs::path resolved = fs::weakly_canonical(path, error);
  return error ? path : resolved;
}

fs::path TemporaryBeside(const fs::path& target) {
  fs::path temporary = target;
  temporary += ".part" + std::to_string(std::random_device{}());
  return temporary;
}

}  // namespace

FileWriter::FileWriter(fs::path target, fs::path temporary, std::FILE* file)
    : target_(std::move(target)), temporary_(std::move(temporary)), file_(file) {
  std::setvbuf(file, nullptr, _IONBF, 0);
  buffer_.reserve(kBufferBytes);
}

Outcome<FileWriter> FileWriter::Open(const fs::path& path) {
  const fs::path target = ResolveLink(path);
  std::error_code error;
  const fs::file_status status = fs::status(target, error);
  if (fs::is_directory(status)) {
    return Failure{FailureKind::kDisk, path.string() + ": is a folder"};
  }
  const bool direct = fs::exists(status) && !fs::is_regular_file(status);
  const fs::path temporary = direct ? fs::path() : TemporaryBeside(target);
  std::FILE* file = std::fopen((direct ? target : temporary).c_str(), direct ? "wb" : "wbx");
  if (file == nullptr) {
    return Failure{FailureKind::kDisk,
                   path.string() + ": cannot be written: " + std::strerror(errno)};
  }
  return FileWriter(target, temporary, file);
}

FileWriter::~FileWriter() {
  if (!file_) return;
  file_.reset();
  std::error_code ignored;
  if (!temporary_.empty()) fs::remove(temporary_, ignored);
}

Failure FileWriter::DiskFailure(const std::string& reason) const {
  return {FailureKind::kDisk, target_.string() + ": could not be written: " + reason};
}

void FileWriter::Write(std::string_view bytes) {
  if (buffer_.size() + bytes.size() > kBufferBytes) {
    if (error_.empty() &&
        std::fwrite(buffer_.data(), 1, buffer_.size(), file_.get()) != buffer_.size()) {
      error_ = std::strerror(errno);
    }
    buffer_.clear();
  }
  if (error_.empty()) buffer_ += bytes;
}

Outcome<> FileWriter::Commit() {
  if (error_.empty() &&
      std::fwrite(buffer_.data(), 1, buffer_.size(), file_.get()) != buffer_.size()) {
    error_ = std::strerror(errno);
  }
  if (std::fclose(file_.release()) != 0 && error_.empty()) error_ = std::strerror(errno);
  std::error_code ignored;
  if (error_.empty() && !temporary_.empty()) {
    // A file that is replaced keeps its permissions.
    const fs::file_status old = fs::status(target_, ignored);
    if (fs::exists(old)) fs::permissions(temporary_, old.permissions(), ignored);
    std::error_code moved;
    fs::rename(temporary_, target_, moved);
    if (moved) error_ = moved.message();
  }
  if (error_.empty()) return Done{};
  if (!temporary_.empty()) fs::remove(temporary_, ignored);
  return DiskFailure(error_);
}

Outcome<> WriteFile(const fs::path& path, std::string_view bytes) {
  Outcome<FileWriter> writer = FileWriter::Open(path);
  if (!writer.Ok()) return writer.Stop();
  writer.Value().Write(bytes);
  return writer.Value().Commit();
}

}  // namespace ormel
