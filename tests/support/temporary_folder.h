// A folder of its own for a test, taken away at the end with all that is in it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace ormel::testing {

// The bytes of a file; fails the test when it cannot be read.
inline std::string ReadText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void WriteText(const std::filesystem::path& path, std::string_view text) {
  std::ofstream file(path, std::ios::binary);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  EXPECT_TRUE(file.flush().good()) << path;
}

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "ormel-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = name;
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }

  // Writes a file in the folder and returns its path.
  std::filesystem::path Write(const std::filesystem::path& name, std::string_view text) const {
    WriteText(path_ / name, text);
    return path_ / name;
  }

  // How many files and folders it holds.
  std::ptrdiff_t Entries() const {
    return std::distance(std::filesystem::directory_iterator(path_), {});
  }

 private:
  std::filesystem::path path_;
};

}  // namespace ormel::testing
