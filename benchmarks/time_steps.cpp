// Times time-step models as whole processes, `ormel-batch MODEL.tsi -o FOLDER`, in turn with `wc
// -w` on all that they read and write, each file once; and the writing of a movie in turn with `cp`
// of its bitmaps.
//
//   time_steps [SIDE]      maps of SIDE x SIDE cells, 500 unless told otherwise
//
// Prints the medians of five runs each, their ratios, and the peak memory of ormel-batch.

#include "movies/avi_file.h"
#include "movies/bitmap.h"
#include "process_timing.h"

namespace ormel::benchmarks {
namespace {

constexpr int kFactors = 5;
constexpr int kSteps = 24;
constexpr int kFrames = 100;

std::string FactorName(int factor) { return "f" + std::to_string(factor) + ".asc"; }
std::string StepName(int factor, int step) {
  return "f" + std::to_string(factor) + "_" + std::to_string(step) + ".asc";
}

// A linear model whose factors stay, or have another map at each step.
std::string ModelText(bool stays) {
  std::string text =
      "5TS1$2008 January 1 0 0 0 2009 December 1 0 0 0 1 Month 0 #TS2S$FRD$.#FF$*.asc#CRD$.#"
      "CF$*.asc#";
  std::string behaviours;
  std::string graphs;
  for (int factor = 1; factor <= kFactors; ++factor) {
    text += "FAC$" + FactorName(factor) + "#" + std::to_string(factor) + "#True#";
    behaviours += stays ? "CI#0#" : "CI#1#";
    for (int step = 1; !stays && step <= kSteps; ++step) behaviours += StepName(factor, step) + "#";
    graphs +=
        "* 2* 0* 255* 0* 0* 0* 255* 255* 0* .5* 1.5* .5* .2* 0* 255* .5* 0* 0* 255* 10* 0*"
        " 1.5* .5* 3* 1* 1*#";
  }
  return text + "CST$NULLTSNS$" + behaviours + "TS3$" + std::to_string(kFactors) + "#" + graphs +
         "TS4$.#m#Default#0#1#0#1#False#";
}

void MeasureModel(const char* name, bool stays) {
  std::ofstream("m.tsi") << ModelText(stays);
  std::vector<std::string> count{"wc", "-w"};
  for (int factor = 1; factor <= kFactors; ++factor) {
    if (stays) count.push_back(FactorName(factor));
    for (int step = 1; !stays && step <= kSteps; ++step) count.push_back(StepName(factor, step));
  }
  std::vector<double> seconds;
  std::vector<double> words;
  long peakKib = 0;
  for (int run = 0; run < kRuns; ++run) {
    fs::remove_all("out");  // a file that replaces another waits for the disk
    const Timed timed = RunProcess({Batch().string(), "m.tsi", "-o", "out"});
    seconds.push_back(timed.seconds);
    peakKib = std::max(peakKib, timed.peakKib);
    std::vector<std::string> all = count;
    for (const auto& file : fs::directory_iterator("out")) all.push_back(file.path().string());
    words.push_back(RunProcess(all).seconds);
  }
  std::printf("%-24s %.3f s   %.2f times wc -w (%.3f s)   peak %.1f MiB\n", name, Median(seconds),
              Median(seconds) / Median(words), Median(words),
              static_cast<double>(peakKib) / kKibPerMib);
}

void MeasureMovie(int side) {
  fs::create_directory("frames");
  std::vector<std::string> paths;
  for (int i = 0; i < kFrames; ++i) {
    Canvas canvas(side, side, Rgb(i, 2 * i, 255 - i));
    canvas.Line(0, i, side, side - i, kWhite, 3);
    paths.push_back("frames/" + std::to_string(i) + ".bmp");
    if (!WriteBitmap(canvas, paths.back()).Ok()) throw std::runtime_error("no bitmap");
  }
  std::vector<double> seconds;
  std::vector<double> copies;
  for (int run = 0; run < kRuns; ++run) {
    fs::remove("movie.avi");
    fs::remove_all("copies");
    NoProgress quiet;
    const auto start = std::chrono::steady_clock::now();
    if (!WriteAviFile({"movie.avi", FramesOfFiles(paths), 25}, quiet).Ok()) {
      throw std::runtime_error("no movie");
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    seconds.push_back(took.count());
    copies.push_back(RunProcess({"cp", "-r", "frames", "copies"}).seconds);
  }
  std::printf("%-24s %.3f s   %.2f times cp (%.3f s)   %.0f MB\n", "movie of 100 frames",
              Median(seconds), Median(seconds) / Median(copies), Median(copies),
              static_cast<double>(fs::file_size("movie.avi")) / 1e6);
}

void MeasureAll(int side, const fs::path& folder) {
  fs::current_path(folder);
  setenv("ORMEL_HOME", (folder / "home").c_str(), 1);
  for (int factor = 1; factor <= kFactors; ++factor) {
    WriteMap(FactorName(factor), side, side, static_cast<unsigned>(factor));
    for (int step = 1; step <= kSteps; ++step) {
      WriteMap(StepName(factor, step), side, side, static_cast<unsigned>(factor * 100 + step));
    }
  }
  std::printf("%d x %d cells, %d factors, %d steps, medians of %d runs\n", side, side, kFactors,
              kSteps, kRuns);
  MeasureModel("maps that stay", true);
  MeasureModel("maps for every step", false);
  MeasureMovie(side);
}

}  // namespace
}  // namespace ormel::benchmarks

int main(int argc, char** argv) {
  using namespace ormel::benchmarks;
  const int side = Argument(argc, argv, 1, 500);
  return InScratchFolder([=](const fs::path& folder) { MeasureAll(side, folder); });
}
