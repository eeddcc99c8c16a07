// Writes an output file so that the user never loses the old one: everything goes to a temporary
// file in the same folder, and only Commit() moves it into place. A run that fails, is stopped or
// is killed leaves the old file as it was and nothing else behind.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/outcome.h"

namespace ormel {

// The temporary file has no name before it is complete: the system takes it away in whatever way
// the program ends. File systems that have no such files, shared folders of other machines for
// instance, get one with a name, which stays behind when the program is killed.
enum class TemporaryFile { kWithoutName, kNamed };

class FileWriter {
 public:
  // Opens a temporary file beside `path`. Something that is there and is no plain file (a device, a
  // pipe) is written directly. `temporary` is for tests; kWithoutName falls back on the other.
  [[nodiscard]] static Outcome<FileWriter> Open(
      const std::filesystem::path& path, TemporaryFile temporary = TemporaryFile::kWithoutName);

  // The same, but the temporary file has a name that people know: `working`, in whatever folder it
  // says. It is there while the work lasts, and never longer than the writer. A file of that name
  // that is there already stays: the working file then has a number behind its name. Where none can
  // be made, as in a folder that nobody may write to, this is Open().
  [[nodiscard]] static Outcome<FileWriter> OpenThrough(const std::filesystem::path& path,
                                                       const std::filesystem::path& working);

  FileWriter(FileWriter&& other) noexcept;
  FileWriter& operator=(FileWriter&&) = delete;
  ~FileWriter();  // without a Commit(): takes the temporary file away

  // Buffered; the bytes are written as they stand. After a failed write the others are dropped, and
  // Commit() reports the first failure.
  void Write(std::string_view bytes);

  // Writes over bytes that have been written already, for formats that hold sizes in front.
  void WriteAt(std::uint64_t offset, std::string_view bytes);

  // Puts the finished file into place. Once, as the last call. A file that replaces another is on
  // the disk before the old one goes: a power cut leaves one of the two whole.
  [[nodiscard]] Outcome<> Commit();

 private:
  FileWriter(std::filesystem::path target, std::filesystem::path temporary, int descriptor);
  Failure DiskFailure() const;
  void Flush();
  void WriteNow(std::string_view bytes);
  void KeepError();
  void Finish();
  void GiveName();
  bool MoveIntoPlace();
  void Close();

  std::filesystem::path target_;
  std::filesystem::path temporary_;  // empty: it has no name, or the target itself is written
  int descriptor_;                   // -1: closed
  bool direct_ = false;
  std::string buffer_;
  std::string error_;
  bool full_ = false;  // the error is that there is no room
};

// The whole file at once.
[[nodiscard]] Outcome<> WriteFile(const std::filesystem::path& path, std::string_view bytes);

// A file that grows beyond the limit of this process (`ulimit -f`) fails like one on a full disk
// from now on, instead of ending the program. For the start of a program.
void LetFileSizeLimitFail();

}  // namespace ormel
