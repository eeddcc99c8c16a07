// Writes an output file so that the user never loses the old one: everything goes to a temporary
// file in the same folder, and only Commit() moves it into place. A run that fails or is stopped
// leaves the old file as it was and nothing else behind.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "base/outcome.h"

namespace ormel {

class FileWriter {
 public:
  // Opens a temporary file beside `path`. Something that is there and is no plain file (a device, a
  // pipe) is written directly.
  [[nodiscard]] static Outcome<FileWriter> Open(const std::filesystem::path& path);

  FileWriter(FileWriter&&) noexcept = default;
  FileWriter& operator=(FileWriter&&) = delete;
  ~FileWriter();  // without a Commit(): takes the temporary file away

  // Buffered; the bytes are written as they stand. After a failed write the others are dropped, and
  // Commit() reports the first failure.
  void Write(std::string_view bytes);

  // Puts the finished file into place. Once, as the last call.
  [[nodiscard]] Outcome<> Commit();

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  FileWriter(std::filesystem::path target, std::filesystem::path temporary, std::FILE* file);
  Failure DiskFailure(const std::string& reason) const;

  std::filesystem::path target_;
  std::filesystem::path temporary_;  // empty: the target itself is written
  std::unique_ptr<std::FILE, Closer> file_;
  std::string buffer_;
  std::string error_;
};

// The whole file at once.
[[nodiscard]] Outcome<> WriteFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace ormel
