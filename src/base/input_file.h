// A file that is read, from one place or from several at once.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

#include "base/outcome.h"

namespace ormel {

// Copies share the open file, which is closed with the last of them.
class InputFile {
 public:
  InputFile() = default;  // a closed one

  // Fails with a text that names the path: kNotFound when it is not there, kDisk when it is a
  // folder, a device or a pipe, or cannot be read.
  [[nodiscard]] static Outcome<InputFile> Open(const std::filesystem::path& path);

  bool IsOpen() const { return shared_ != nullptr; }
  std::uint64_t Size() const;  // when it was opened; 0 when it could not be told

  // Fills `bytes` from the byte `offset` on and returns how many there were: fewer than asked for
  // at the end of the file, and when the disk fails, which `error` then tells, naming the path. May
  // be called from several threads at once.
  std::size_t ReadAt(std::uint64_t offset, std::span<char> bytes, std::string& error) const;

 private:
  struct Shared;
  std::shared_ptr<const Shared> shared_;
};

// All bytes of a file, for files that are small by their nature. Fails as InputFile::Open() does,
// and for a file beyond 256 MiB, which is none of them.
[[nodiscard]] Outcome<std::string> ReadWholeFile(const std::filesystem::path& path);

}  // namespace ormel
