// What the benchmarks of whole processes share: random maps, and the time and memory of a process.
#pragma once

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace ormel::benchmarks {

namespace fs = std::filesystem;

constexpr int kRuns = 5;
constexpr double kKibPerMib = 1024.0;

struct Timed {
  double seconds = 0;
  long peakKib = 0;
};

// A map of two-decimal cells between 0 and 255, as this program writes them.
inline void WriteMap(const fs::path& path, int columns, int rows, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> hundredths(0, 25500);
  std::string text = "ncols         " + std::to_string(columns) + "\r\nnrows         " +
                     std::to_string(rows) +
                     "\r\nxllcorner     0\r\nyllcorner     0\r\ncellsize      30\r\n";
  std::ofstream file(path, std::ios::binary);
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      char cell[16];
      const int value = hundredths(random);
      int length = std::snprintf(cell, sizeof cell, " %d.%02d", value / 100, value % 100);
      while (cell[length - 1] == '0') --length;
      if (cell[length - 1] == '.') --length;
      text.append(cell, static_cast<std::size_t>(length));
    }
    text += "\r\n";
    file << text;
    text.clear();
  }
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

inline Timed RunProcess(const std::vector<std::string>& words) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    setenv("LC_ALL", "C", 1);
    execvp(arguments[0], arguments.data());
    _exit(127);
  }
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  if (status != 0) throw std::runtime_error(words[0] + " failed");
  return {took.count(), usage.ru_maxrss};
}

inline double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

inline int Argument(int argc, char** argv, int index, int otherwise) {
  return argc > index ? std::max(std::atoi(argv[index]), 1) : otherwise;
}

// Runs `measure` in a scratch folder, which goes afterwards. Returns the exit status of the
// program.
inline int InScratchFolder(const std::function<void(const fs::path& folder)>& measure) {
  const fs::path folder = fs::temp_directory_path() / ("ormel-" + std::to_string(getpid()));
  int status = 0;
  try {
    fs::create_directories(folder);
    measure(folder);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    status = 1;
  }
  std::error_code ignored;
  fs::remove_all(folder, ignored);
  return status;
}

// The program that is measured: beside this one.
inline fs::path Batch() { return fs::read_symlink("/proc/self/exe").parent_path() / "ormel-batch"; }

}  // namespace ormel::benchmarks
