// The linear evaluation: what a cell costs to accumulate, and to scale and write.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "base/file_writer.h"
#include "mce/composite_map.h"
#include "mce/composite_output.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;

constexpr int kSide = 1000;

// A model of one factor of kSide x kSide two-decimal cells, in a folder that goes with it.
class SampleModel {
 public:
  SampleModel() {
    fs::create_directories(folder_);
    std::string text = "ncols 1000\r\nnrows 1000\r\nx 0\r\ny 0\r\ns 30\r\n";
    for (int cell = 0; cell < kSide * kSide; ++cell) {
      const int hundredths = static_cast<int>(cell * 7919LL % 25501);
      text += " " + std::to_string(hundredths / 100) + "." + std::to_string(hundredths % 100);
      if (cell % kSide == kSide - 1) text += "\r\n";
    }
    if (!WriteFile(folder_ / "factor.asc", text).Ok()) std::abort();
    model_.factors.push_back({(folder_ / "").string(), "factor.asc", 3, true});
  }
  SampleModel(const SampleModel&) = delete;
  SampleModel& operator=(const SampleModel&) = delete;
  ~SampleModel() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  const LinearModel& Model() const { return model_; }
  std::string Output() const { return (folder_ / "out.asc").string(); }
  CompositeMap Begin() const { return std::move(CompositeMap::Begin(model_).Value()); }

 private:
  const fs::path folder_ =
      fs::temp_directory_path() / ("ormel-mce-benchmark-" + std::to_string(getpid()));
  LinearModel model_;
};

void AccumulateFactor(benchmark::State& state) {
  const SampleModel sample;
  CompositeMap map = sample.Begin();
  NoProgress quiet;
  while (state.KeepRunning()) {
    if (!map.AccumulateFactor(sample.Model(), 1, {}, quiet).Ok()) state.SkipWithError("failed");
  }
  state.SetItemsProcessed(state.iterations() * kSide * kSide);
}
BENCHMARK(AccumulateFactor)->Unit(benchmark::kMillisecond);

void ScaleAndWrite(benchmark::State& state) {
  const SampleModel sample;
  CompositeMap map = sample.Begin();
  NoProgress quiet;
  if (!map.AccumulateFactor(sample.Model(), 1, {}, quiet).Ok()) state.SkipWithError("failed");
  while (state.KeepRunning()) {
    if (!WriteComposite(map, sample.Model(), sample.Output(), 2, quiet, {}).Ok()) {
      state.SkipWithError("failed");
    }
  }
  state.SetItemsProcessed(state.iterations() * kSide * kSide);
}
BENCHMARK(ScaleAndWrite)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace ormel

BENCHMARK_MAIN();
