// Times the opening of a map in the viewer, without a screen, as a whole process, in turn with
// `wc -w` on the same file.
//
//   open_map [SIDE]      4000 x 4000 cells unless told otherwise
//
// Prints the medians of five runs each, their ratio and the peak memory.
#include "process_timing.h"

namespace ormel::benchmarks {
namespace {

void Measure(int side, const fs::path& folder) {
  const std::string map = (folder / "map.asc").string();
  const std::string script = (folder / "open.script").string();
  WriteMap(map, side, side, 1);
  std::ofstream(script)
      << "expect window frmView\nexpect frmView.sbView \"X:\\nY:\\nValue:\\nDone\"\n";
  setenv("ORMEL_HOME", (folder / "home").c_str(), 1);
  std::vector<double> opened;
  std::vector<double> words;
  long peakKib = 0;
  for (int run = 0; run < kRuns; ++run) {
    const Timed timed = RunProcess({Batch().string(), "--script", script, map});
    opened.push_back(timed.seconds);
    peakKib = std::max(peakKib, timed.peakKib);
    words.push_back(RunProcess({"wc", "-w", map}).seconds);
  }
  std::printf("%d x %d cells\n", side, side);
  std::printf("open         %.3f s   (medians of %d runs)\n", Median(opened), kRuns);
  std::printf("wc -w        %.3f s   (ratio %.2f)\n", Median(words),
              Median(opened) / Median(words));
  std::printf("peak memory  %.1f MiB   (%.1f bytes a cell)\n",
              static_cast<double>(peakKib) / kKibPerMib,
              static_cast<double>(peakKib) * kKibPerMib / side / side);
}

}  // namespace
}  // namespace ormel::benchmarks

int main(int argc, char** argv) {
  using namespace ormel::benchmarks;
  const int side = Argument(argc, argv, 1, 4000);
  return InScratchFolder([&](const fs::path& folder) { Measure(side, folder); });
}
