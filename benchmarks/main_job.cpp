// Times the main job as a whole process: `ormel-batch` on a model of random factors, in turn with
// `wc -w`, which does no more than look at every byte of the same files, and on a non-linear model
// of the same factors.
//
//   main_job [FACTORS [COLUMNS [ROWS]]]      5 factors of 2000 x 2000 cells unless told otherwise
//
// Prints the medians of five runs each, their ratios, and the peak memory of ormel-batch beside
// what the grid and the mask take.

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
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int kRuns = 5;
constexpr double kKibPerMib = 1024.0;

struct Sizes {
  int factors = 5;
  int columns = 2000;
  int rows = 2000;
};

struct Timed {
  double seconds = 0;
  long peakKib = 0;
};

// A map of two-decimal cells between 0 and 255, as this program writes them.
void WriteFactor(const fs::path& path, const Sizes& sizes, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> hundredths(0, 25500);
  std::string text = "ncols         " + std::to_string(sizes.columns) + "\r\nnrows         " +
                     std::to_string(sizes.rows) +
                     "\r\nxllcorner     0\r\nyllcorner     0\r\ncellsize      30\r\n";
  std::ofstream file(path, std::ios::binary);
  for (int row = 0; row < sizes.rows; ++row) {
    for (int column = 0; column < sizes.columns; ++column) {
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

Timed RunProcess(const std::vector<std::string>& words) {
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

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// A bell curve, as model files hold weight graphs.
constexpr char kBell[] =
    "* 2* 0* 255* 0* 0* 0* 255* 255* 0* 0* 255* .5* .2* 0* 255* .5* 0* 0* 255* 10* 0* 255* 0* 3* "
    "0* "
    "0*";

void Measure(const Sizes& sizes, const fs::path& program, const fs::path& folder) {
  std::string linear = "\"FRD$" + folder.string() + "#FF$*.asc#";
  std::string nonlinear = linear;
  std::vector<std::string> count{"wc", "-w"};
  for (int i = 1; i <= sizes.factors; ++i) {
    const fs::path path = folder / ("factor" + std::to_string(i) + ".asc");
    WriteFactor(path, sizes, static_cast<unsigned>(i));
    count.push_back(path.string());
    linear += "FAC$" + path.string() + "#" + std::to_string(i) + (i % 2 ? "#True#" : "#False#");
    nonlinear += "FAC$" + path.string() + "#255#" + kBell + "#";
  }
  const std::string end = "CST$NULLTITLE$Benchmark#\"\r\n";
  std::ofstream(folder / "model.mif", std::ios::binary) << linear << end;
  std::ofstream(folder / "model.cmf", std::ios::binary) << nonlinear << end;

  std::vector<double> jobs[2];
  std::vector<double> words;
  long peakKib = 0;
  for (int run = 0; run < kRuns; ++run) {
    for (const int kind : {0, 1}) {
      const char* model = kind == 0 ? "model.mif" : "model.cmf";
      const fs::path output = folder / "out.asc";
      fs::remove(output);  // a map that replaces another waits for the disk
      const Timed timed =
          RunProcess({program.string(), (folder / model).string(), "-o", output.string()});
      jobs[kind].push_back(timed.seconds);
      peakKib = std::max(peakKib, timed.peakKib);
    }
    words.push_back(RunProcess(count).seconds);
  }
  const double cells = static_cast<double>(sizes.columns) * sizes.rows;
  std::printf("%d factors of %d x %d cells\n", sizes.factors, sizes.columns, sizes.rows);
  std::printf("linear       %.3f s   (medians of %d runs)\n", Median(jobs[0]), kRuns);
  std::printf("wc -w        %.3f s   (ratio %.2f)\n", Median(words),
              Median(jobs[0]) / Median(words));
  std::printf("non-linear   %.3f s   (ratio to the linear model %.2f)\n", Median(jobs[1]),
              Median(jobs[1]) / Median(jobs[0]));
  std::printf("peak memory  %.1f MiB   (5 bytes a cell: %.1f MiB)\n",
              static_cast<double>(peakKib) / kKibPerMib, 5 * cells / kKibPerMib / kKibPerMib);
}

int Argument(int argc, char** argv, int index, int otherwise) {
  return argc > index ? std::max(std::atoi(argv[index]), 1) : otherwise;
}

}  // namespace

int main(int argc, char** argv) {
  const Sizes otherwise;
  const Sizes sizes{Argument(argc, argv, 1, otherwise.factors),
                    Argument(argc, argv, 2, otherwise.columns),
                    Argument(argc, argv, 3, otherwise.rows)};
  const fs::path folder =
      fs::temp_directory_path() / ("ormel-main-job-" + std::to_string(getpid()));
  int status = 0;
  try {
    fs::create_directories(folder);
    Measure(sizes, fs::canonical("/proc/self/exe").parent_path() / "ormel-batch", folder);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "main_job: %s\n", error.what());
    status = 1;
  }
  std::error_code ignored;
  fs::remove_all(folder, ignored);
  return status;
}
