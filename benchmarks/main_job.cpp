// Times the main job as a whole process: `ormel-batch` on a model of random factors, in turn with
// `wc -w`, which does no more than look at every byte of the same files, and on a non-linear model
// of the same factors.
//
//   main_job [FACTORS [COLUMNS [ROWS]]]      5 factors of 2000 x 2000 cells unless told otherwise
//
// Prints the medians of five runs each, their ratios, and the peak memory of ormel-batch beside
// what the grid and the mask take.

#include "process_timing.h"

namespace ormel::benchmarks {
namespace {

struct Sizes {
  int factors = 5;
  int columns = 2000;
  int rows = 2000;
};

// A bell curve, as model files hold weight graphs.
constexpr char kBell[] =
    "* 2* 0* 255* 0* 0* 0* 255* 255* 0* 0* 255* .5* .2* 0* 255* .5* 0* 0* 255* 10* 0* 255* 0* 3* "
    "0* "
    "0*";

void Measure(const Sizes& sizes, const fs::path& folder) {
  std::string linear = "\"FRD$" + folder.string() + "#FF$*.asc#";
  std::string nonlinear = linear;
  std::vector<std::string> count{"wc", "-w"};
  for (int i = 1; i <= sizes.factors; ++i) {
    const fs::path path = folder / ("factor" + std::to_string(i) + ".asc");
    WriteMap(path, sizes.columns, sizes.rows, static_cast<unsigned>(i));
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
          RunProcess({Batch().string(), (folder / model).string(), "-o", output.string()});
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

}  // namespace
}  // namespace ormel::benchmarks

int main(int argc, char** argv) {
  using namespace ormel::benchmarks;
  const Sizes otherwise;
  const Sizes sizes{Argument(argc, argv, 1, otherwise.factors),
                    Argument(argc, argv, 2, otherwise.columns),
                    Argument(argc, argv, 3, otherwise.rows)};
  return InScratchFolder([&](const fs::path& folder) { Measure(sizes, folder); });
}
